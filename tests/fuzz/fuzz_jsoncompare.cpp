// Aims at: src/qtextensions/JsonCompare.cpp
#include "Fuzz.h"

#include <qtextensions/JsonCompare.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <limits>

// Documents and variations of them, against the definition as documented.

using namespace Qt::StringLiterals;

namespace {

// Every element of the first takes the first equal one left in the second.
bool areEqualByDefinition(const QJsonValue &first, const QJsonValue &second)
{
    if (first.type() != second.type() || (!first.isArray() && !first.isObject())) {
        return first == second;
    }
    const QJsonObject object = first.toObject();
    const QStringList keys = object.keys();
    const QJsonArray array = first.toArray();
    QJsonArray rest = second.toArray();
    return object.size() == second.toObject().size() && array.size() == rest.size()
        && std::all_of(keys.begin(),
            keys.end(),
            [&](const QString &key) { return areEqualByDefinition(object.value(key), second[key]); })
        && std::all_of(array.begin(), array.end(), [&](const QJsonValue &value) {
               const auto isEqual = [&](const QJsonValue &other) { return areEqualByDefinition(value, other); };
               const auto match = std::find_if(rest.begin(), rest.end(), isEqual);
               return match != rest.end() && (rest.erase(match), true);
           });
}

// Draws from few different leaves, so that equal elements are frequent.
QJsonValue makeValue(Input &input, const QJsonArray &leaves, int depth)
{
    static const QStringList keys = {u"a"_s, u"b"_s, u"\U0001f600"_s, u"\uff5e"_s};
    const int kind = depth == 0 || input.isAtEnd() ? 0 : input.below(4);
    QJsonArray array;
    QJsonObject object;
    for (int count = kind < 2 ? 0 : input.below(6); count > 0; --count) {
        const QJsonValue value = makeValue(input, leaves, depth - 1);
        array.append(value);
        object.insert(input.oneOf(keys), value);
    }
    return kind < 2 ? input.oneOf(leaves) : kind == 2 ? QJsonValue(array) : QJsonValue(object);
}

// Shuffles all arrays, and once in a while replaces a leaf.
QJsonValue makeVariation(Input &input, const QJsonArray &leaves, const QJsonValue &value)
{
    QJsonArray array;
    for (const QJsonValue element : value.toArray()) {
        array.insert(input.below(static_cast<int>(array.size()) + 1), makeVariation(input, leaves, element));
    }
    QJsonObject object = value.toObject();
    for (const QString &key : object.keys()) {
        object[key] = makeVariation(input, leaves, object.value(key));
    }
    const QJsonValue leaf = input.oneIn(30) ? input.oneOf(leaves) : value;
    return value.isArray() ? QJsonValue(array) : value.isObject() ? QJsonValue(object) : leaf;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr qint64 last = std::numeric_limits<qint64>::max();
    static const QJsonArray leaves[] = {{0, 1, 0.5, -0.0, u"a"_s, u"1"_s, true, QJsonValue()},
        {last, last - 1, -last, 1e19},
        {last, last - 1, last - 600, static_cast<double>(last), static_cast<double>(last / 2), last / 2, qQNaN()}};
    Input input(data, size);
    const int kind = input.below(3);
    const QJsonArray array = {makeValue(input, leaves[kind], 4), makeValue(input, leaves[kind], 4)};
    const QJsonDocument first(array);
    QJsonDocument second(makeVariation(input, leaves[kind], array).toArray());
    if (input.oneIn(2)) { // Qt sorts keys in another way when it reads them
        second = QJsonDocument::fromJson(second.toJson());
    }
    const QByteArray texts = first.toJson() + second.toJson();
    check("json::compare", json::compare(first, second), areEqualByDefinition(first.array(), second.array()), texts);
    return 0;
}
