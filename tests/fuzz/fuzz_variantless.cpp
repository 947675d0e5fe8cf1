// Aims at: src/qtextensions/QVariantLess.cpp
#include "Fuzz.h"

#include <qtextensions/QVariantLess.h>

#include <QStringListModel>
#include <QUrl>
#include <QUuid>

#include <map>

// The order of any two variants against the meta-types' own, and of one type as keys of a map.

using namespace Qt::StringLiterals;

namespace {

/** Makes indexes of any row, column and internal id. */
class Model : public QStringListModel
{
public:
    using QStringListModel::createIndex;
};

const QList<int> ordered = {1, 2, 3, 4, 5, 6, 7, 10, 11, 12, 14, 15, 16, 17, 30, 42, 50};
const QList<int> types = ordered + QList{0, 8, 9, 13, 38}; // and maps, lists, bits and floats

/** Returns a value of the type; where there is no other way to one, the default. */
QVariant makeValue(Input &input, int type)
{
    static const QStringList pieces =
        u"0|1|-1|true|false|9007199254740993|-9007199254740993|18446744073709551615|0.5|1e300|nan|-inf|a|A|\u00e9|a/"
        u"|\u0001|"
        "\U0001f600|\uff5e|2024-02-29|-0001-01-01|23:59:59.999|00:00|2024-02-29T23:59:59+02:00|2024-02-29T22:00:00Z|"
        "2024-02-29T22:00:00|http://a/|file:///|{00000001-0000-4000-8000-000000000000}|{80000001-0000-1000-8000-000000000000}"_s
            .split(u'|');
    static const Model models[2];
    if (type == QMetaType::QModelIndex || type == QMetaType::QPersistentModelIndex) {
        const Model &model = models[input.below(2)];
        const auto index = model.createIndex(input.below(3), input.below(3), quintptr(input.below(3)) << 62);
        return type == QMetaType::QModelIndex ? QVariant(index) : QVariant(QPersistentModelIndex(index));
    }
    QVariant value = input.oneIn(2) ? input.oneOf(pieces) : input.text(pieces, 3);
    if (input.oneIn(4)) {
        value = input.integer<qint64>() >> input.below(64);
    }
    value.convert(QMetaType(type));
    return value;
}

/** Takes the type of the left operand and lets it compare, if it is one that has an order. */
bool isLessByType(const QVariant &lhs, const QVariant &rhs)
{
    const QMetaType type = lhs.metaType();
    QVariant converted(type);
    QMetaType::convert(rhs.metaType(), rhs.constData(), type, converted.data());
    return ordered.contains(type.id())
        && type.compare(lhs.constData(), converted.constData()) == QPartialOrdering::Less;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const qtextensions::QVariantLess isLess;
    Input input(data, size);
    const int type = input.oneOf(types);
    std::map<QVariant, int, qtextensions::QVariantLess> map;
    QVariantList keys;
    while (!input.isAtEnd() && keys.size() < 8) {
        const QVariant key = makeValue(input, type);
        const QVariant other = makeValue(input, input.oneOf(types));
        check(isLess(key, other), isLessByType(key, other), QVariantList{key, other});
        check(isLess(other, key), isLessByType(other, key), QVariantList{other, key});
        if (key == key) { // not-a-number has no place in a map
            keys << key;
            ++map[key];
        }
    }
    for (const QVariant &a : keys) {
        int equivalents = 0;
        for (const QVariant &b : keys) {
            check(isLess(a, b), isLessByType(a, b), keys);
            equivalents += isLess(a, b) || isLess(b, a) ? 0 : 1;
            for (const QVariant &c : keys) { // what is less than another is so on one side of any third
                check(isLess(a, b) && (isLess(b, a) || !(isLess(a, c) || isLess(c, b))), false, keys);
            }
        }
        check(map[a], equivalents, keys);
    }
    return 0;
}
