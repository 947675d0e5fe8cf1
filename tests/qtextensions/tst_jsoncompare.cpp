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
    void kindsOfDocument();
    void notANumber();
    void largeNumbers();
    void randomDocuments_data();
    void randomDocuments();
    void deepestDocument();
    void longArrays_data();
    void longArrays();
};

namespace {
QJsonDocument parse(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        qFatal("%s: %s", text.constData(), qPrintable(error.errorString()));
    }
    return document;
}

// The definition taken by its word: every element of the first takes the first equal one left in the second.
bool areEqualByDefinition(const QJsonValue &first, const QJsonValue &second)
{
    if (first.type() != second.type()) {
        return false;
    }
    if (first.isObject()) {
        const QJsonObject left = first.toObject();
        const QJsonObject right = second.toObject();
        const QStringList keys = left.keys();
        return left.size() == right.size() && std::all_of(keys.begin(), keys.end(), [&](const QString &key) {
            return areEqualByDefinition(left.value(key), right.value(key));
        });
    }
    if (!first.isArray()) {
        return first == second;
    }
    const QJsonArray left = first.toArray();
    QJsonArray right = second.toArray();
    return left.size() == right.size() && std::all_of(left.begin(), left.end(), [&](const QJsonValue &value) {
        const auto match = std::find_if(
            right.begin(), right.end(), [&](const QJsonValue &other) { return areEqualByDefinition(value, other); });
        return match != right.end() && (right.erase(match), true);
    });
}

// A text that is the same for documents that differ in the order of arrays only, without numbers beyond 2^53.
QByteArray toCanonicalText(const QJsonValue &value)
{
    QByteArrayList parts;
    if (value.isArray()) {
        for (const QJsonValue element : value.toArray()) {
            parts << toCanonicalText(element);
        }
        std::sort(parts.begin(), parts.end());
        return '[' + parts.join(',') + ']';
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (const QString &key : object.keys()) {
            parts << QJsonDocument(QJsonArray{key}).toJson() + toCanonicalText(object.value(key));
        }
        return '{' + parts.join(',') + '}';
    }
    return QJsonDocument(QJsonArray{value}).toJson();
}

// Random documents of few different values, so that equal elements are frequent, and shuffled copies of them.
class Maker
{
public:
    Maker(const QJsonArray &leaves, unsigned int seed)
        : leaves(leaves)
        , random(seed)
    {
    }

    int draw(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }

    QJsonValue makeValue(int depth)
    {
        const int kind = depth == 0 ? 0 : draw(4);
        if (kind < 2) {
            return leaves.at(draw(int(leaves.size())));
        }
        QJsonArray array;
        QJsonObject object;
        for (int count = draw(5); count > 0; --count) {
            array.append(makeValue(depth - 1));
            object.insert(QChar(u'a' + draw(3)), makeValue(depth - 1));
        }
        return kind == 2 ? QJsonValue(array) : QJsonValue(object);
    }

    // Shuffles all arrays, and once in a while replaces a leaf.
    QJsonValue shuffle(const QJsonValue &value)
    {
        if (value.isArray()) {
            QList<QJsonValue> values;
            for (const QJsonValue element : value.toArray()) {
                values << shuffle(element);
            }
            std::shuffle(values.begin(), values.end(), random);
            QJsonArray array;
            std::copy(values.begin(), values.end(), std::back_inserter(array));
            return array;
        }
        if (value.isObject()) {
            QJsonObject object = value.toObject();
            for (const QString &key : object.keys()) {
                object[key] = shuffle(object.value(key));
            }
            return object;
        }
        return draw(30) == 0 ? leaves.at(draw(int(leaves.size()))) : value;
    }

private:
    const QJsonArray leaves;
    std::mt19937 random;
};
} // namespace

void JsonCompareTest::texts_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<bool>("areEqual");

    const auto row = [](const char *first, const char *second, bool areEqual) {
        QTest::addRow("%s | %s", first, second) << QByteArray(first) << QByteArray(second) << areEqual;
    };
    row("[1, 2, 3]", "[3, 1, 2]", true);
    row("[1, 1, 2]", "[1, 2, 2]", false);
    row("[1, 2]", "[1, 2, 2]", false);
    row("[]", "{}", false);
    row("[[]]", "[{}]", false);
    row("[[1, 2], [3]]", "[[3], [2, 1]]", true);
    row("[[1, 2], [3, 4]]", "[[1, 3], [2, 4]]", false);
    row(R"({"a": [{"b": [1, 2]}, {"c": 3}]})", R"({"a": [{"c": 3}, {"b": [2, 1]}]})", true);
    row(R"([{"a": 1, "b": 2}])", R"([{"a": 2, "b": 1}])", false);
    row(R"({"a": null, "b": 1})", R"({"c": null, "b": 1})", false);
    row(R"({"a": null})", "{}", false);
    row(R"(["1", true, null, "é", 0])", R"([null, "\u00e9", true, "1", -0.0])", true);
    row(R"(["1"])", "[1]", false);
    row("[true, 1]", "[false, 1]", false);
    row(R"(["\ud800", 1])", R"([1, "\ufffd"])", false);
    // Keys that Qt sorts by code point when they are read as UTF-8 and by code unit otherwise.
    row(R"([1, {"😀": 1, "～": 2}])", R"([{"\ud83d\ude00": 1, "\uff5e": 2}, 1])", true);
    // The double 2^63 equals integers that differ: the first match in the order of the second document decides.
    row("[9223372036854775808, 9223372036854775807]", "[9223372036854775806, 9223372036854775807]", true);
    row("[9223372036854775808, 9223372036854775807]", "[9223372036854775807, 9223372036854775806]", false);
    row("[9223372036854775807, 9223372036854775806]", "[9223372036854775806, 9223372036854775808]", true);
    row("[9007199254740993, 1]", "[1, 9007199254740992]", false);
    row("[18446744073709551616, 1e300]", "[1e300, 18446744073709551616]", true);
}

void JsonCompareTest::texts()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);

    QTEST(json::compare(parse(first), parse(second)), "areEqual");
    QVERIFY(json::compare(parse(first), parse(first)));
}

void JsonCompareTest::kindsOfDocument()
{
    const QJsonDocument null;
    const QJsonDocument emptyObject((QJsonObject()));
    const QJsonDocument emptyArray((QJsonArray()));
    QVERIFY(json::compare(null, QJsonDocument()));
    QVERIFY(!json::compare(null, emptyObject));
    QVERIFY(!json::compare(emptyArray, null));
    QVERIFY(!json::compare(emptyObject, emptyArray));
    QVERIFY(json::compare(emptyObject, parse("{}")));
    QVERIFY(json::compare(parse("[]"), emptyArray));
}

void JsonCompareTest::notANumber()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const QJsonDocument shallow(QJsonArray{1, nan});
    const QJsonDocument deep(QJsonObject{{u"a"_s, QJsonArray{u"x"_s, QJsonObject{{u"b"_s, QJsonArray{nan}}}}}});
    QVERIFY(!json::compare(shallow, shallow));
    QVERIFY(!json::compare(shallow, QJsonDocument(QJsonArray{nan, 1})));
    QVERIFY(!json::compare(deep, deep));
    const double infinity = std::numeric_limits<double>::infinity();
    QVERIFY(json::compare(QJsonDocument(QJsonArray{1, infinity}), QJsonDocument(QJsonArray{infinity, 1})));
}

// Numbers between 2^53 and 2^63 can be doubles in a document made in memory, and not only at 2^63.
void JsonCompareTest::largeNumbers()
{
    const qint64 integer = Q_INT64_C(1) << 62;
    const QJsonDocument integers(QJsonArray{1, integer, integer + 1});
    QVERIFY(json::compare(integers, QJsonDocument(QJsonArray{double(integer), double(integer), 1})));
    QVERIFY(json::compare(integers, QJsonDocument(QJsonArray{integer + 1, double(integer), 1})));
    QVERIFY(!json::compare(integers, QJsonDocument(QJsonArray{integer, integer, 1})));
}

void JsonCompareTest::randomDocuments_data()
{
    QTest::addColumn<QJsonArray>("leaves");
    QTest::addColumn<bool>("hasCanonicalText");

    QTest::newRow("plain") << QJsonArray{0, 1, 0.5, u"a"_s, u"1"_s, true, QJsonValue()} << true;
    const qint64 last = std::numeric_limits<qint64>::max();
    QTest::newRow("large integers") << QJsonArray{last, last - 1, last - 2, -last, 1e19} << false;
    QTest::newRow("intransitive") << QJsonArray{last, last - 1, last - 600, double(last), double(last) / 2, last / 2}
                                  << false;
}

void JsonCompareTest::randomDocuments()
{
    QFETCH(QJsonArray, leaves);
    QFETCH(bool, hasCanonicalText);

    Maker maker(leaves, 7);
    int equalCount = 0;
    for (int i = 0; i < 1500; ++i) {
        const QJsonArray first = {maker.makeValue(4), maker.makeValue(3), maker.makeValue(2)};
        const QJsonArray second = maker.shuffle(first).toArray();
        const QJsonDocument firstDocument(first);
        const QJsonDocument secondDocument(second);
        const QByteArray texts = firstDocument.toJson() + secondDocument.toJson();

        const bool areEqual = json::compare(firstDocument, secondDocument);
        equalCount += areEqual ? 1 : 0;
        QVERIFY2(areEqual == areEqualByDefinition(first, second), texts.constData());
        QVERIFY2(
            !hasCanonicalText || areEqual == (toCanonicalText(first) == toCanonicalText(second)), texts.constData());
        QCOMPARE(firstDocument.toJson() + secondDocument.toJson(), texts);
    }
    QVERIFY(equalCount > 150 && equalCount < 1450);
}

// As deep as Qt's parser goes, with an element before the nested array on one side and behind it on the other.
void JsonCompareTest::deepestDocument()
{
    const int depth = 1024;
    QByteArray first = "[9223372036854775807]";
    QByteArray second = first;
    QByteArray other = "[9223372036854775806]";
    for (int i = 1; i < depth; ++i) {
        first = "[0," + first + ']';
        second = '[' + second + ",0]";
        other = '[' + other + ",0]";
    }
    QVERIFY(QJsonDocument::fromJson('[' + first + ']').isNull());
    QVERIFY(json::compare(parse(first), parse(second)));
    QVERIFY(!json::compare(parse(first), parse(other)));

    // The same with the leaves of one hash, as a double that equals them both is about.
    first.replace("[0,", "[9223372036854775808,");
    other.replace(",0]", ",9223372036854775808]");
    QVERIFY(!json::compare(parse(first), parse(other)));
}

// Searching for each element in turn, these would run into the time limit.
void JsonCompareTest::longArrays_data()
{
    QTest::addColumn<QJsonArray>("array");

    QJsonArray numbers;
    QJsonArray pairs;
    QJsonArray equals;
    for (int i = 0; i < 100000; ++i) {
        numbers << i;
        pairs << QJsonArray{(Q_INT64_C(1) << 62) + i % 400, (Q_INT64_C(1) << 62) + i / 400};
        equals << (i % 2 == 0 ? QJsonValue(QJsonArray{1}) : QJsonValue(u"x"_s));
    }
    QTest::newRow("distinct") << numbers;
    QTest::newRow("pairs of integers that share a double") << pairs;
    QTest::newRow("equal") << equals;
}

void JsonCompareTest::longArrays()
{
    QFETCH(QJsonArray, array);

    QJsonArray reversed;
    std::reverse_copy(array.begin(), array.end(), std::back_inserter(reversed));
    QVERIFY(json::compare(QJsonDocument(QJsonObject{{u"a"_s, array}}), QJsonDocument(QJsonObject{{u"a"_s, reversed}})));
    reversed.replace(0, 0.5);
    QVERIFY(!json::compare(QJsonDocument(array), QJsonDocument(reversed)));
}

QTEST_GUILESS_MAIN(JsonCompareTest)
#include "tst_jsoncompare.moc"
