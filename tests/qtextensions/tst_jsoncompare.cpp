#include <qtextensions/JsonCompare.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

class JsonCompareTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void documentsMadeInMemory();
    void randomDocuments();
    void randomDocumentsOfLargeNumbers();
    void deepestDocument();
    void longArrays();
};

namespace {
// The definition taken by its word: every element of the first takes the first equal one left in the second.
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

// The same for documents that differ in the order of arrays only. Not for numbers beyond 2^53.
QByteArray toCanonicalText(const QJsonValue &value)
{
    QByteArrayList parts = {QByteArray::number(value.type())};
    for (const QJsonValue element : value.toArray()) {
        parts << toCanonicalText(element);
    }
    std::sort(parts.begin(), parts.end());
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        parts << member.key().toUtf8() << toCanonicalText(member.value());
    }
    return '(' + parts.join(',') + value.toVariant().toString().toUtf8() + ')';
}

// Draws from few different leaves, so that equal elements are frequent.
QJsonValue makeValue(const QJsonArray &leaves, int depth, std::mt19937 &random)
{
    const auto kind = depth == 0 ? 0 : random() % 4;
    QJsonArray array;
    QJsonObject object;
    for (auto count = random() % 5; kind >= 2 && count > 0; --count) {
        array.append(makeValue(leaves, depth - 1, random));
        object.insert(QChar(u'a' + char16_t(random() % 3)), makeValue(leaves, depth - 1, random));
    }
    return kind < 2 ? leaves.at(qsizetype(random()) % leaves.size())
        : kind == 2 ? QJsonValue(array)
                    : QJsonValue(object);
}

// Shuffles all arrays, and once in a while replaces a leaf.
QJsonValue makeVariation(const QJsonValue &value, const QJsonArray &leaves, std::mt19937 &random)
{
    QJsonArray array;
    for (const QJsonValue element : value.toArray()) {
        array.insert(qsizetype(random() % size_t(array.size() + 1)), makeVariation(element, leaves, random));
    }
    QJsonObject object = value.toObject();
    for (const QString &key : object.keys()) {
        object[key] = makeVariation(object.value(key), leaves, random);
    }
    const QJsonValue leaf = random() % 30 == 0 ? leaves.at(qsizetype(random()) % leaves.size()) : value;
    return value.isArray() ? QJsonValue(array) : value.isObject() ? QJsonValue(object) : leaf;
}

void compareRandomDocuments(const QJsonArray &leaves, bool hasCanonicalText)
{
    std::mt19937 random(7);
    int equalCount = 0;
    for (int i = 0; i < 1500; ++i) {
        const QJsonDocument first(QJsonArray{makeValue(leaves, 4, random), makeValue(leaves, 3, random)});
        const QJsonDocument second(makeVariation(first.array(), leaves, random).toArray());
        const QByteArray texts = first.toJson() + second.toJson();
        const bool areEqual = json::compare(first, second);
        equalCount += areEqual ? 1 : 0;
        QVERIFY2(areEqual == areEqualByDefinition(first.array(), second.array()), texts.constData());
        const bool isSameText = toCanonicalText(first.array()) == toCanonicalText(second.array());
        QVERIFY2(!hasCanonicalText || areEqual == isSameText, texts.constData());
        QCOMPARE(first.toJson() + second.toJson(), texts);
    }
    QVERIFY(equalCount > 150 && equalCount < 1450);
}
} // namespace

void JsonCompareTest::texts_data()
{
    QTest::addColumn<bool>("areEqual");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");

    const auto row = [](bool areEqual, const char *first, const char *second) {
        QTest::addRow("%s | %s", first, second) << areEqual << QByteArray(first) << QByteArray(second);
    };
    row(true, "[1, 2, 3]", "[3, 1, 2]");
    row(false, "[1, 1, 2]", "[1, 2, 2]");
    row(false, "[1, 2]", "[1, 2, 2]");
    row(false, "[]", "{}");
    row(false, "[[]]", "[{}]");
    row(false, "[[1, 2], [3, 4]]", "[[1, 3], [2, 4]]");
    row(true, R"({"a": [{"b": [1, 2]}, {"c": 3}]})", R"({"a": [{"c": 3}, {"b": [2, 1]}]})");
    row(false, R"([{"a": 1, "b": 2}])", R"([{"a": 2, "b": 1}])");
    row(false, R"({"a": null, "b": 1})", R"({"c": null, "b": 1})");
    row(true, R"(["1", true, null, "é", 0])", R"([null, "\u00e9", true, "1", -0.0])");
    row(false, R"(["1", 2])", R"([2, 1])");
    // Keys that Qt sorts by code point when they are read as UTF-8 and by code unit otherwise.
    row(true, R"([1, {"😀": 1, "～": 2}])", R"([{"\ud83d\ude00": 1, "\uff5e": 2}, 1])");
    // The double 2^63 equals integers that differ: the first match in the order of the second document decides.
    row(true, "[9223372036854775808, 9223372036854775807]", "[9223372036854775806, 9223372036854775807]");
    row(false, "[9223372036854775808, 9223372036854775807]", "[9223372036854775807, 9223372036854775806]");
    row(false, "[9007199254740993, 1]", "[1, 9007199254740992]");
    row(true, "[18446744073709551616, 1e300]", "[1e300, 18446744073709551616]");
}

void JsonCompareTest::texts()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);

    QTEST(json::compare(QJsonDocument::fromJson(first), QJsonDocument::fromJson(second)), "areEqual");
}

void JsonCompareTest::documentsMadeInMemory()
{
    QVERIFY(json::compare(QJsonDocument(), QJsonDocument()));
    QVERIFY(!json::compare(QJsonDocument(), QJsonDocument(QJsonObject())));
    QVERIFY(json::compare(QJsonDocument(QJsonObject()), QJsonDocument::fromJson("{}")));

    const double nan = std::numeric_limits<double>::quiet_NaN();
    const QJsonDocument deepNaN(QJsonObject{{u"a"_s, QJsonArray{u"x"_s, QJsonObject{{u"b"_s, QJsonArray{nan}}}}}});
    QVERIFY(!json::compare(deepNaN, deepNaN));
    QVERIFY(!json::compare(QJsonDocument(QJsonArray{1, nan}), QJsonDocument(QJsonArray{nan, 1})));

    // Here doubles can equal several integers below 2^63, too.
    const qint64 integer = Q_INT64_C(1) << 62;
    const QJsonDocument integers(QJsonArray{1, integer, integer + 1});
    QVERIFY(json::compare(integers, QJsonDocument(QJsonArray{integer + 1, double(integer), 1})));
    QVERIFY(!json::compare(integers, QJsonDocument(QJsonArray{integer, integer, 1})));
}

void JsonCompareTest::randomDocuments()
{
    compareRandomDocuments({0, 1, 0.5, u"a"_s, u"1"_s, true, QJsonValue()}, true);
}

void JsonCompareTest::randomDocumentsOfLargeNumbers()
{
    const qint64 last = std::numeric_limits<qint64>::max();
    compareRandomDocuments({last, last - 1, -last, 1e19}, false);
    compareRandomDocuments({last, last - 1, last - 600, double(last), double(last / 2), last / 2}, false);
}

// As deep as Qt's parser goes, with a double before the nested array on one side and behind it on the other.
void JsonCompareTest::deepestDocument()
{
    const auto nest = [](const QByteArray &before, const QByteArray &core, const QByteArray &behind) {
        return QJsonDocument::fromJson(before.repeated(1023) + core + behind.repeated(1023));
    };
    const QJsonDocument first = nest("[9223372036854775808,", "[9223372036854775807]", "]");
    QVERIFY(json::compare(first, nest("[", "[9223372036854775807]", ",9223372036854775808]")));
    QVERIFY(!json::compare(first, nest("[", "[9223372036854775806]", ",9223372036854775808]")));
    QVERIFY(first.isArray());
}

// Searching for each element in turn, these would run into the time limit.
void JsonCompareTest::longArrays()
{
    const qint64 large = Q_INT64_C(1) << 62;
    QJsonArray pairs;
    QJsonArray equals;
    for (int i = 0; i < 100000; ++i) {
        pairs << QJsonArray{large + i % 400, large + i / 400}; // all the same as doubles
        equals << (i % 2 == 0 ? QJsonValue(QJsonArray{1}) : QJsonValue(u"x"_s));
    }
    for (const QJsonArray &array : {pairs, equals}) {
        QJsonArray reversed;
        std::reverse_copy(array.begin(), array.end(), std::back_inserter(reversed));
        QVERIFY(json::compare(QJsonDocument(QJsonArray{array}), QJsonDocument(QJsonArray{reversed})));
        reversed.replace(0, 0.5);
        QVERIFY(!json::compare(QJsonDocument(array), QJsonDocument(reversed)));
    }
}

QTEST_GUILESS_MAIN(JsonCompareTest)
#include "tst_jsoncompare.moc"
