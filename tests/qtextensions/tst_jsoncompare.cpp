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
        QCOMPARE(compare("[18446744073709551616, 1e300]", "[1e300, 18446744073709551616]"), true);
    }

    void documentsMadeInMemory()
    {
        QCOMPARE(json::compare(QJsonDocument(), QJsonDocument()), true);
        QCOMPARE(json::compare(QJsonDocument(), QJsonDocument(QJsonObject())), false);
        QCOMPARE(json::compare(QJsonDocument(QJsonObject()), QJsonDocument::fromJson("{}")), true);
    }

    // As deep as Qt's parser goes, with a double before the nested array on one side and after it on the other.
    void deepestDocument()
    {
        const auto nest = [](const QByteArray &before, const QByteArray &core, const QByteArray &after) {
            return QJsonDocument::fromJson(before.repeated(1023) + core + after.repeated(1023));
        };
        const QJsonDocument first = nest("[9223372036854775808,", "[9223372036854775807]", "]");
        QVERIFY(first.isArray());
        QCOMPARE(json::compare(first, nest("[", "[9223372036854775807]", ",9223372036854775808]")), true);
        QCOMPARE(json::compare(first, nest("[", "[9223372036854775806]", ",9223372036854775808]")), false);
    }

    // A linear search for each element would exceed the time limit of the test.
    void longArrays()
    {
        const qint64 large = Q_INT64_C(1) << 62;
        QJsonArray array;
        for (int i = 0; i < 50000; ++i) {
            array << QJsonArray{large + i % 400, large + i / 400}; // all the same as doubles
            array << (i % 2 == 0 ? QJsonValue(QJsonArray{1}) : QJsonValue(u"x"_s));
            array << i / 50000.0;
        }
        QJsonArray reversed;
        std::reverse_copy(array.begin(), array.end(), std::back_inserter(reversed));
        QVERIFY(json::compare(QJsonDocument(QJsonArray{array}), QJsonDocument(QJsonArray{reversed})));
        reversed.replace(0, 1.5);
        QVERIFY(!json::compare(QJsonDocument(array), QJsonDocument(reversed)));
    }
};

QTEST_GUILESS_MAIN(JsonCompareTest)
#include "tst_jsoncompare.moc"
