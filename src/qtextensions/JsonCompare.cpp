#include "JsonCompare.h"

#include <QCborArray>
#include <QCborMap>
#include <QHashFunctions>
#include <QJsonArray>
#include <QJsonObject>
#include <QVarLengthArray>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

namespace {
constexpr double FIRST_INEXACT = 9007199254740992.0; // 2^53: from here on an integer shares its double with others
constexpr double INTEGER_LIMIT = 9223372036854775808.0; // 2^63: beyond it no integer equals a double

// Qt's CBOR types share the data of its JSON types and hand out nested containers at about half the cost.
bool holdsNaN(const QCborValue &value)
{
    if (value.isArray()) {
        for (qint64 i = 0;; ++i) {
            const QCborValue element = value[i];
            if (element.isUndefined()) { // behind the last one: JSON data has no undefined elements
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

// How integers are hashed that share their double with others.
enum class LargeIntegers {
    Exactly,
    AsDoubles ///< so that they meet the doubles that they equal
};

/*
 * The root of a document and all within it, with everything in a container behind it and close together, so that each
 * pass is a plain loop over near memory. Equal values get equal hashes. The hash of a container does not depend on the
 * order of its elements, and these are sorted by hash. The seed of the process is in every hash, so that no text can be
 * made beforehand whose many different elements share one.
 */
class Tree
{
public:
    static constexpr size_t NO_CONTAINER = std::numeric_limits<size_t>::max();

    // An element of an array or a member of an object.
    struct Element
    {
        quint64 hash; // of key and value
        size_t position; // in the array or object
        size_t container; // index of the container that it is, or NO_CONTAINER

        bool operator<(const Element &other) const
        {
            return std::tie(hash, position) < std::tie(other.hash, other.position);
        }
    };

    struct Container
    {
        std::variant<QJsonArray, QJsonObject> data;
        size_t self; // the element that it is
        size_t firstElement = 0;
        size_t count = 0;

        const QJsonArray *getArray() const { return std::get_if<QJsonArray>(&data); }

        const QJsonObject *getObject() const { return std::get_if<QJsonObject>(&data); }

        QString getKey(const Element &element) const { return (getObject()->begin() + toOffset(element)).key(); }

        QJsonValue getValue(const Element &element) const
        {
            const QJsonArray *const array = getArray();
            return array ? array->at(toOffset(element)) : (getObject()->begin() + toOffset(element)).value();
        }

        static qsizetype toOffset(const Element &element) { return qsizetype(element.position); }
    };

    Tree(const QJsonDocument &document, LargeIntegers largeIntegers);

    // Whether a double stands in the document that equals integers of which no two are equal.
    bool holdsBlurringDouble() const { return hasBlurringDouble; }

    const Container &getContainer(size_t container) const { return containers[container]; }

    const Element *getElements(const Container &container) const { return elements.data() + container.firstElement; }

    quint64 getHash() const { return elements.front().hash; }

private:
    void addElements(Container &container);
    void addElement(QJsonValueConstRef value, quint64 keyHash, size_t position);
    quint64 hashLeaf(QJsonValueConstRef value);
    quint64 hashNumber(QJsonValueConstRef value);
    void sortAndHash(const Container &container);

    const LargeIntegers largeIntegers;
    const size_t seed = QHashSeed::globalSeed();
    bool hasBlurringDouble = false;
    std::deque<Container> containers; // each one behind the one that it is in; no reference goes stale
    std::vector<Element> elements; // the root, then the elements of each container side by side
    std::vector<size_t> unfilled; // containers without their elements yet; the last one is next
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
        const size_t container = unfilled.back();
        unfilled.pop_back();
        addElements(containers[container]);
    }
    for (size_t i = containers.size(); i-- > 0;) {
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

void Tree::addElement(QJsonValueConstRef value, quint64 keyHash, size_t position)
{
    const bool isArray = value.isArray();
    if (!isArray && !value.isObject()) {
        elements.push_back({mix(keyHash + hashLeaf(value)), position, NO_CONTAINER});
        return;
    }
    const size_t self = elements.size();
    elements.push_back({keyHash, position, containers.size()}); // the rest of the hash comes with its elements
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
    const quint64 hash = mix(qHash(number, seed) + 5); // qHash() is the same for both zeros
    const double magnitude = std::abs(number);
    if (!(magnitude >= FIRST_INEXACT && magnitude <= INTEGER_LIMIT)) {
        return hash;
    }
    hasBlurringDouble = hasBlurringDouble || value.toVariant().typeId() == QMetaType::Double;
    return largeIntegers == LargeIntegers::AsDoubles ? hash : mix(hash + quint64(value.toInteger()));
}

void Tree::sortAndHash(const Container &container)
{
    const auto begin = elements.begin() + std::ptrdiff_t(container.firstElement);
    const auto end = begin + std::ptrdiff_t(container.count);
    std::sort(begin, end);
    quint64 hash = mix(seed + (container.getObject() ? 6 : 7)) + mix(container.count);
    std::for_each(begin, end, [&hash](const Element &element) { hash += mix(element.hash); });
    elements[container.self].hash = mix(elements[container.self].hash + mix(hash));
}

/*
 * Decides whether two trees are equal. Only what has the same hash is compared: elements that alone have theirs with
 * each other, those that share one in the order of their positions.
 */
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
    // Pairs of containers, of the first and the second tree, that are still to be compared.
    using Pairs = QVarLengthArray<std::pair<size_t, size_t>, 4>;

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
        size_t count) const;

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

// Containers that alone have their hash join the pending pairs. Only where several share one does the comparison
// recurse, each time into less than half of the values: even the deepest document takes little stack.
bool Comparison::matchElements(const Container &left, const Container &right, Pairs &pending) const
{
    if (left.data.index() != right.data.index() || left.count != right.count) {
        return false; // GCOVR_EXCL_LINE: only where hashes collide
    }
    const Element *const begin = first.getElements(left);
    const Element *const end = begin + left.count;
    const Element *partner = second.getElements(right);
    const auto hasSameHash = [](const Element &a, const Element &b) { return a.hash == b.hash; };
    if (!std::equal(begin, end, partner, hasSameHash)) {
        return false; // GCOVR_EXCL_LINE: only where hashes collide
    }
    for (const Element *run = begin; run != end;) {
        const auto isBehindRun = [run](const Element &element) { return element.hash != run->hash; };
        const auto count = std::find_if(run + 1, end, isBehindRun) - run;
        const bool isMatch = count == 1 ? matchElement(left, *run, right, *partner, pending)
                                        : matchRun(left, run, right, partner, size_t(count));
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
        return false; // GCOVR_EXCL_LINE: only where hashes collide
    }
    const bool isLeftLeaf = leftElement.container == Tree::NO_CONTAINER;
    const bool isRightLeaf = rightElement.container == Tree::NO_CONTAINER;
    if (isLeftLeaf || isRightLeaf) {
        return isLeftLeaf == isRightLeaf && left.getValue(leftElement) == right.getValue(rightElement);
    }
    pending.append({leftElement.container, rightElement.container});
    return true;
}

// Gives each element on the left the first equal one on the right that is still free.
bool Comparison::matchRun(
    const Container &left, const Element *leftRun, const Container &right, const Element *rightRun, size_t count) const
{
    // The free ones as a linked list, element i as entry i + 1: what is taken is unlinked, so n equal ones cost n.
    std::vector<size_t> next(count + 1);
    std::iota(next.begin(), next.end(), size_t(1));
    return std::all_of(leftRun, leftRun + count, [&](const Element &element) {
        for (size_t previous = 0; next[previous] <= count; previous = next[previous]) {
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
        // What is equal element by element is equal in any order, but for NaN: Qt finds the same bits equal.
        return areSame && !(areContainers && holdsNaN(toCbor(first)));
    }
    const Tree left(first, LargeIntegers::Exactly);
    const Tree right(second, LargeIntegers::Exactly);
    if (!left.holdsBlurringDouble() && !right.holdsBlurringDouble()) {
        return Comparison(left, right).isEqual();
    }
    return Comparison(Tree(first, LargeIntegers::AsDoubles), Tree(second, LargeIntegers::AsDoubles)).isEqual();
}
