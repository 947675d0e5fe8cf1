#include "JsonCompare.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QHashFunctions>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QMetaType>
#include <QString>
#include <QVarLengthArray>
#include <QVariant>
#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <deque>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

// Equality of numbers is not transitive. QJsonValue compares two integers exactly, but an integer and a double as
// doubles:
//   9223372036854775806 != 9223372036854775807        both are integers
//   9223372036854775806 == 9223372036854775808.0      the integer is rounded to this double
//   9223372036854775807 == 9223372036854775808.0      so is this one
// Such a double is called ambiguous here. Equal values need equal hashes, so if a document contains an ambiguous
// double, large integers are hashed as doubles. Unequal integers may then share a hash, and matching them may take
// O(n^2).

namespace {

constexpr double firstInexact = 9007199254740992.0; // 2^53: from here on, several integers round to the same double
constexpr double integerLimit = 9223372036854775808.0; // 2^63: no integer is rounded to a double beyond it

// Uses Qt's CBOR types, which share the data of its JSON types: access to nested containers costs about half as much.
bool holdsNaN(const QCborValue &value)
{
    if (value.isArray()) {
        for (qint64 i = 0;; ++i) {
            const QCborValue element = value[i];
            if (element.isUndefined()) { // past the end: JSON arrays contain no undefined values
                return false;
            }
            if (holdsNaN(element)) {
                return true;
            }
        }
    }
    if (value.isMap()) {
        const QCborMap map = value.toMap();
        return std::any_of(map.begin(), map.end(), [](const auto &member) {
            const QCborValueConstRef element = member.second;
            return (element.isDouble() || element.isContainer()) && holdsNaN(element);
        });
    }
    return value.isDouble() && std::isnan(value.toDouble());
}

// The finaliser of SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014).
quint64 mix(quint64 hash)
{
    hash = (hash ^ (hash >> 30)) * Q_UINT64_C(0xBF58476D1CE4E5B9);
    hash = (hash ^ (hash >> 27)) * Q_UINT64_C(0x94D049BB133111EB);
    return hash ^ (hash >> 31);
}

// How to hash integers that round to the same double as others.
enum class LargeIntegers {
    Exactly,
    AsDoubles // the same hash as that of the equal double
};

// A document as flat vectors, so that each pass is a loop over adjacent memory. A container comes before its elements.
//
// Equal values have equal hashes. The hash of a container does not depend on the order of its elements, which are
// sorted by hash. Hashes are seeded per process, so that nobody can prepare a document with many colliding elements.
class Tree
{
public:
    static constexpr std::size_t noContainer = std::numeric_limits<std::size_t>::max();

    // An element of an array or a member of an object.
    struct Element
    {
        quint64 hash; // of the key, if any, and the value
        std::size_t position; // index in the array or object
        std::size_t container; // index in Tree::containers if the value is a container, otherwise noContainer

        bool operator<(const Element &other) const
        {
            return std::tie(hash, position) < std::tie(other.hash, other.position);
        }
    };

    struct Container
    {
        std::variant<QJsonArray, QJsonObject> data;
        std::size_t self; // index in Tree::elements
        std::size_t firstElement = 0;
        std::size_t count = 0;

        const QJsonArray *getArray() const { return std::get_if<QJsonArray>(&data); }

        const QJsonObject *getObject() const { return std::get_if<QJsonObject>(&data); }

        QString getKey(const Element &element) const { return (getObject()->begin() + toOffset(element)).key(); }

        QJsonValue getValue(const Element &element) const
        {
            const QJsonArray *const array = getArray();
            return array ? array->at(toOffset(element)) : (getObject()->begin() + toOffset(element)).value();
        }

        static qsizetype toOffset(const Element &element) { return static_cast<qsizetype>(element.position); }
    };

    Tree(const QJsonDocument &document, LargeIntegers largeIntegers);

    // Returns whether the document contains a double that equals several unequal integers.
    bool holdsAmbiguousDouble() const { return hasAmbiguousDouble; }

    const Container &getContainer(std::size_t container) const { return containers[container]; }

    const Element *getElements(const Container &container) const { return elements.data() + container.firstElement; }

    quint64 getHash() const { return elements.front().hash; }

private:
    void addElements(Container &container);
    void addElement(QJsonValueConstRef value, quint64 keyHash, std::size_t position);
    quint64 hashLeaf(QJsonValueConstRef value);
    quint64 hashNumber(QJsonValueConstRef value);
    void sortAndHash(const Container &container);

    const LargeIntegers largeIntegers;
    const std::size_t seed = QHashSeed::globalSeed();
    bool hasAmbiguousDouble = false;
    std::deque<Container> containers; // each after its parent; a deque keeps references valid
    std::vector<Element> elements; // the root, followed by the elements of each container as one block
    std::vector<std::size_t> unfilled; // stack of the containers whose elements are not added yet
};

Tree::Tree(const QJsonDocument &document, LargeIntegers largeIntegers)
    : largeIntegers(largeIntegers)
{
    elements.push_back({0, 0, 0});
    if (document.isArray()) {
        containers.push_back({document.array(), 0});
    } else {
        containers.push_back({document.object(), 0});
    }
    for (unfilled = {0}; !unfilled.empty();) {
        const std::size_t container = unfilled.back();
        unfilled.pop_back();
        addElements(containers[container]);
    }
    for (std::size_t i = containers.size(); i-- > 0;) {
        sortAndHash(containers[i]);
    }
}

void Tree::addElements(Container &container)
{
    container.firstElement = elements.size();
    if (const QJsonArray *const array = container.getArray()) {
        for (const QJsonValueConstRef value : *array) {
            addElement(value, 0, container.count++);
        }
        return;
    }
    const QJsonObject &object = *container.getObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        addElement(member.value(), qHash(member.key(), seed), container.count++);
    }
}

void Tree::addElement(QJsonValueConstRef value, quint64 keyHash, std::size_t position)
{
    const bool isArray = value.isArray();
    if (!isArray && !value.isObject()) {
        elements.push_back({mix(keyHash + hashLeaf(value)), position, noContainer});
        return;
    }
    const std::size_t self = elements.size();
    elements.push_back({keyHash, position, containers.size()}); // sortAndHash() adds the hash of the elements
    unfilled.push_back(containers.size());
    if (isArray) {
        containers.push_back({value.toArray(), self});
    } else {
        containers.push_back({value.toObject(), self});
    }
}

quint64 Tree::hashLeaf(QJsonValueConstRef value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return mix(seed + (value.toBool() ? 1 : 2));
    case QJsonValue::Double:
        return hashNumber(value);
    case QJsonValue::String:
        return mix(qHash(value.toString(), seed) + 3);
    default:
        return mix(seed + 4);
    }
}

quint64 Tree::hashNumber(QJsonValueConstRef value)
{
    const double number = value.toDouble();
    const quint64 hash = mix(qHash(number, seed) + 5); // qHash() is equal for both zeros
    const double magnitude = std::abs(number);
    if (!(magnitude >= firstInexact && magnitude <= integerLimit)) {
        return hash;
    }
    hasAmbiguousDouble = hasAmbiguousDouble || value.toVariant().typeId() == QMetaType::Double;
    return largeIntegers == LargeIntegers::AsDoubles ? hash : mix(hash + static_cast<quint64>(value.toInteger()));
}

void Tree::sortAndHash(const Container &container)
{
    const auto begin = elements.begin() + static_cast<std::ptrdiff_t>(container.firstElement);
    const auto end = begin + static_cast<std::ptrdiff_t>(container.count);
    std::sort(begin, end);
    quint64 hash = mix(seed + (container.getObject() ? 6 : 7)) + mix(container.count);
    std::for_each(begin, end, [&hash](const Element &element) { hash += mix(element.hash); });
    elements[container.self].hash = mix(elements[container.self].hash + mix(hash));
}

// Compares two trees. Only elements with the same hash are compared. Several elements with the same hash are tried in
// the order of their positions.
class Comparison
{
public:
    Comparison(const Tree &first, const Tree &second)
        : first(first)
        , second(second)
    {
    }

    bool isEqual() const { return first.getHash() == second.getHash() && areEqual({{0, 0}}); }

private:
    using Container = Tree::Container;
    using Element = Tree::Element;
    // Containers of the first and the second tree that are still to be compared.
    using Pairs = QVarLengthArray<std::pair<std::size_t, std::size_t>, 4>;

    bool areEqual(Pairs pending) const;
    bool matchElements(const Container &left, const Container &right, Pairs &pending) const;
    bool matchElement(const Container &left,
        const Element &leftElement,
        const Container &right,
        const Element &rightElement,
        Pairs &pending) const;
    bool matchRun(const Container &left,
        const Element *leftRun,
        const Container &right,
        const Element *rightRun,
        std::size_t count) const;

    const Tree &first;
    const Tree &second;
};

bool Comparison::areEqual(Pairs pending) const
{
    while (!pending.isEmpty()) {
        const auto [left, right] = pending.last();
        pending.removeLast();
        if (!matchElements(first.getContainer(left), second.getContainer(right), pending)) {
            return false;
        }
    }
    return true;
}

// A container with a unique hash is pushed onto the stack of pending pairs. The comparison recurses only into
// containers that share a hash. There are at least two of them, so each has less than half of the values, and the depth
// of the recursion is at most logarithmic.
bool Comparison::matchElements(const Container &left, const Container &right, Pairs &pending) const
{
    if (left.data.index() != right.data.index() || left.count != right.count) {
        return false; // GCOVR_EXCL_LINE: requires a hash collision
    }
    const Element *const begin = first.getElements(left);
    const Element *const end = begin + left.count;
    const Element *partner = second.getElements(right);
    const auto hasSameHash = [](const Element &a, const Element &b) { return a.hash == b.hash; };
    if (!std::equal(begin, end, partner, hasSameHash)) {
        return false; // GCOVR_EXCL_LINE: requires a hash collision
    }
    for (const Element *run = begin; run != end;) {
        const auto isAfterRun = [run](const Element &element) { return element.hash != run->hash; };
        const auto count = std::find_if(run + 1, end, isAfterRun) - run;
        const bool isMatch = count == 1 ? matchElement(left, *run, right, *partner, pending)
                                        : matchRun(left, run, right, partner, static_cast<std::size_t>(count));
        if (!isMatch) {
            return false;
        }
        run += count;
        partner += count;
    }
    return true;
}

bool Comparison::matchElement(const Container &left,
    const Element &leftElement,
    const Container &right,
    const Element &rightElement,
    Pairs &pending) const
{
    if (left.getObject() && left.getKey(leftElement) != right.getKey(rightElement)) {
        return false; // GCOVR_EXCL_LINE: requires a hash collision
    }
    const bool isLeftLeaf = leftElement.container == Tree::noContainer;
    const bool isRightLeaf = rightElement.container == Tree::noContainer;
    if (isLeftLeaf || isRightLeaf) {
        return isLeftLeaf == isRightLeaf && left.getValue(leftElement) == right.getValue(rightElement);
    }
    pending.append({leftElement.container, rightElement.container});
    return true;
}

// Matches each element on the left with the first equal element on the right that is not matched yet.
bool Comparison::matchRun(const Container &left,
    const Element *leftRun,
    const Container &right,
    const Element *rightRun,
    std::size_t count) const
{
    // A linked list of the unmatched elements: entry i + 1 is element i. Matched elements are unlinked, so n equal
    // elements take O(n).
    std::vector<std::size_t> next(count + 1);
    std::iota(next.begin(), next.end(), static_cast<std::size_t>(1));
    return std::all_of(leftRun, leftRun + count, [&](const Element &element) {
        for (std::size_t previous = 0; next[previous] <= count; previous = next[previous]) {
            Pairs pending;
            if (matchElement(left, element, right, rightRun[next[previous] - 1], pending) && areEqual(pending)) {
                next[previous] = next[next[previous]];
                return true;
            }
        }
        return false;
    });
}

QCborValue toCbor(const QJsonDocument &document)
{
    return document.isArray() ? QCborValue(QCborArray::fromJsonArray(document.array()))
                              : QCborValue(QCborMap::fromJsonObject(document.object()));
}

} // namespace

bool json::compare(const QJsonDocument &first, const QJsonDocument &second)
{
    const bool areContainers = (first.isArray() && second.isArray()) || (first.isObject() && second.isObject());
    const bool areSame = first == second;
    if (areSame || !areContainers) {
        // Documents that are equal in this order are equal in any order. NaN is the exception: Qt compares its bits.
        return areSame && !(areContainers && holdsNaN(toCbor(first)));
    }
    const Tree left(first, LargeIntegers::Exactly);
    const Tree right(second, LargeIntegers::Exactly);
    if (!left.holdsAmbiguousDouble() && !right.holdsAmbiguousDouble()) {
        return Comparison(left, right).isEqual();
    }
    return Comparison(Tree(first, LargeIntegers::AsDoubles), Tree(second, LargeIntegers::AsDoubles)).isEqual();
}
