#include <qtextensions/JsonCompare.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

class JsonCompareTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts()
    {
        const auto compare = [](const char *first, const char *second) {
            return json::compare(QJsonDocument::fromJson(first), QJsonDocument::fromJson(second));
        };
        QCOMPARE(compare("[1, 1, 2]", "[1, 2, 2]"), false);
        QCOMPARE(compare("{}", R"({"a": 1})"), false);
        QCOMPARE(compare("{}", "[]"), false);
        QCOMPARE(compare("[{}]", "[[]]"), false);
        QCOMPARE(compare(R"({"a": null})", R"({"b": null})"), false);
        QCOMPARE(compare(R"({"a": 1})", R"({"A": 1})"), false);
        QCOMPARE(compare(R"({"a": [{"b": [1, 2]}, {"c": 3}]})", R"({"a": [{"c": 3}, {"b": [2, 1]}]})"), true);
        QCOMPARE(compare("[[1, 2], [3, 4]]", "[[1, 3], [2, 4]]"), false);
        QCOMPARE(compare(R"(["1", true, null, "é", 0])", R"([null, "\u00e9", true, "1", -0.0])"), true);
        QCOMPARE(compare("[1]", R"(["1"])"), false);
        // Qt sorts the keys by code point when they are read as UTF-8 and by code unit otherwise.
        QCOMPARE(compare(R"([1, {"😀": 1, "～": 2}])", R"([{"\ud83d\ude00": 1, "\uff5e": 2}, 1])"), true);
        // The double 2^63 equals integers that differ: the first match in the order of the second document decides.
        const char *const numbers = "[9223372036854775808, 9223372036854775807]";
        QCOMPARE(compare(numbers, "[9223372036854775806, 9223372036854775807]"), true);
        QCOMPARE(compare(numbers, "[9223372036854775807, 9223372036854775806]"), false);
        QCOMPARE(compare("[18446744073709551616, 1e300]", "[1e300, 18446744073709551616]"), true);
    }

    void documentsMadeInMemory()
    {
        QVERIFY(json::compare(QJsonDocument(), QJsonDocument()));
        QVERIFY(!json::compare(QJsonDocument(), QJsonDocument(QJsonObject())));
        QVERIFY(json::compare(QJsonDocument(QJsonObject()), QJsonDocument::fromJson("{}")));

        const double nan = qQNaN();
        const QJsonDocument deepNaN(QJsonObject{{u"a"_s, QJsonArray{u"x"_s, QJsonObject{{u"b"_s, QJsonArray{nan}}}}}});
        QVERIFY(!json::compare(deepNaN, deepNaN));
        QVERIFY(!json::compare(QJsonDocument(QJsonArray{1, nan}), QJsonDocument(QJsonArray{nan, 1})));

        // Here doubles can equal several integers below 2^63, too.
        const qint64 integer = Q_INT64_C(1) << 62;
        const QJsonDocument integers(QJsonArray{1, integer, integer + 1});
        QVERIFY(json::compare(integers, QJsonDocument(QJsonArray{integer + 1, double(integer), 1})));
        QVERIFY(!json::compare(integers, QJsonDocument(QJsonArray{integer, integer, 1})));
    }

    // As deep as Qt's parser goes, with a double before the nested array on one side and behind it on the other.
    void deepestDocument()
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
    void longArrays()
    {
        const qint64 large = Q_INT64_C(1) << 62;
        QJsonArray pairs = {0.5};
        QJsonArray equals;
        QJsonArray fractions;
        for (int i = 0; i < 50000; ++i) {
            pairs << QJsonArray{large + i % 400, large + i / 400}; // all the same as doubles
            equals << (i % 2 == 0 ? QJsonValue(QJsonArray{1}) : QJsonValue(u"x"_s));
            fractions << i / 50000.0;
        }
        for (const QJsonArray &array : {pairs, equals, fractions}) {
            QJsonArray reversed;
            std::reverse_copy(array.begin(), array.end(), std::back_inserter(reversed));
            QVERIFY(json::compare(QJsonDocument(QJsonArray{array}), QJsonDocument(QJsonArray{reversed})));
            reversed.replace(0, 1.5);
            QVERIFY(!json::compare(QJsonDocument(array), QJsonDocument(reversed)));
        }
    }
};

QTEST_GUILESS_MAIN(JsonCompareTest)
#include "tst_jsoncompare.moc"
