#include "../support/LogRecorder.h"

#include <conversions/StringConversions.h>

#include <QLocale>
#include <QTest>
#include <QTranslator>

#include <climits>
#include <clocale>
#include <type_traits>

static_assert(std::is_copy_assignable_v<StringConversions> && std::is_move_assignable_v<StringConversions>);
static_assert(std::is_default_constructible_v<StringConversions> && std::is_copy_constructible_v<StringConversions>);

using namespace Qt::StringLiterals;
using S = StringConversions;
using TextMap = QMap<QString, QString>;
using VersionMap = QMap<QString, QVersionNumber>;

namespace {

template <typename Value>
void add(const char *row, const Value &actual, const Value &expected)
{
    QTest::newRow(row) << QVariant::fromValue(actual) << QVariant::fromValue(expected);
}

// Returns the map that was read, or "refused", and the log lines.
QString readVersions(const QString &text)
{
    const LogRecorder log;
    const auto map = S::stringToStringVersionMap(text);
    return (map.hasValue() ? S::mapToString(map.getValue()) : u"refused: "_s) + log.getLines().join(u'|');
}

class GermanKeys : public QTranslator
{
public:
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return qstrcmp(text, "Ctrl") == 0 ? u"Strg"_s : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class StringConversionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // A decimal comma in the C library, where a locale with one is installed, and other digits in Qt: no value depends
    // on them.
    void initTestCase()
    {
        QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
        std::setlocale(LC_ALL, "de_DE.UTF-8");
        QCOMPARE(QLocale().toString(1234.5), u"١٬٢٣٤٫٥"_s);
    }

    void values_data()
    {
        QTest::addColumn<QVariant>("actual");
        QTest::addColumn<QVariant>("expected");
        add("from true", S::boolToString(true), u"true"_s);
        add("from false", S::boolToString(false), u"false"_s);
        for (const char *text : {"true", "TRUE", "True", "tRuE", "1"}) {
            add(text, S::stringToBool(QString::fromUtf8(text)), true);
        }
        for (const char *text : {"false", "0", "yes", "on", "01", "1.0", " true", "true ", "t"}) {
            add(text, S::stringToBool(QString::fromUtf8(text)), false);
        }
        add("to bool, empty", S::stringToBool(u""_s), false);

        add("least integer", S::intToString(INT_MIN), u"-2147483648"_s);
        add("to integer", S::stringToInt(u"-42"_s, 5), -42);
        add("to integer, least", S::stringToInt(u"-2147483648"_s, 5), INT_MIN);
        add("to integer, too large", S::stringToInt(u"2147483648"_s, 5), 5);
        add("to integer, empty", S::stringToInt(u""_s, 5), 5);
        add("to integer, prefix", S::stringToInt(u"0x10"_s, 5), 5);
        add("to integer, default", S::stringToInt(u"x"_s), 0);

        add("to float", S::stringToFloat(u"1.5D+3"_s, 'D'), 1500.0f);
        add("to float, Latin-1", S::stringToFloat(u"1.5é+3"_s, '\xe9'), 1500.0f);
        add("to float, no separator", S::stringToFloat(u"1.5E3"_s), 1500.0f);
        add("to float, power beyond float", S::stringToFloat(u"1e-30x60"_s, 'x'), 1e30f);

        add("integers", S::integerArrayToString({1, -2, 3}), u"1 -2 3"_s);
        const QStringList sevens(300, u"7"_s); // longer than the writer's buffer
        add("many integers", S::integerArrayToString(std::vector<int>(300, 7)), sevens.join(u' '));
        add("first integer", S::toString(std::vector<int>{1, 2}.data(), 1), u"1"_s);
        add("no integers", S::integerArrayToString({}), QString());
        add("to integers", S::integerArrayToString(S::stringToIntegerArray(u"1  x -2 "_s)), u"1 0 0 -2 0"_s);
        add("to integers, empty", S::integerArrayToString(S::stringToIntegerArray(u""_s)), u"0"_s);

        add("null pointer", S::ptrToString(nullptr), u"0x0000000000000000"_s);
        add("pointer", S::ptrToString(reinterpret_cast<void *>(0xABCDEF)), u"0x0000000000abcdef"_s);
        const QList<QKeySequence> keys = {QKeySequence(Qt::Key_Percent, Qt::Key_1), QKeySequence(Qt::Key_F2)};
        add("key sequences", S::qkeySequencesToAppendableString(keys), u" (%, 1)"_s);
        add("no key sequence", S::qkeySequencesToAppendableString({}), u""_s);

        add("point", S::qpointToString(QPoint(10, -20)), u"10 -20"_s);
        add("to point, three fields", S::stringToQPoint(u"10 -20 30"_s), QPoint(10, -20));
        add("to point, one field", S::stringToQPoint(u"10"_s), QPoint(0, 0));
        add("to point, leading blank", S::stringToQPoint(u" 5"_s), QPoint(0, 5));
        add("to point, no integers", S::stringToQPoint(u"1.5 ~2"_s), QPoint(0, 0));
        add("pointF", S::qpointfToString(QPointF(0.1, -0.0)), u"0.10000000000000001 0"_s);
        add("pointF, 3 digits", S::qpointfToString(QPointF(3.14159265, 1234567), 3), u"3.14 1.23e+06"_s);
        add("ties", S::qpointfToString(QPointF(0.125, 22.5), 2), u"0.13 23"_s);
        add("tie, power of ten", S::qpointfToString(QPointF(10000.5, 2.5), 5), u"10001 2.5"_s);
        add("greatest tie", S::qpointfToString(QPointF(2.5e21, 1.5e22), 1), u"3e+21 2e+22"_s);
        add("least tie", S::qpointfToString(QPointF(0x1p-25, 1)), u"2.9802322387695313e-08 1"_s);
        add("tie of all bits", S::qpointfToString(QPointF(0x1.0000000000001p50, 0)), u"1125899906842624.3 0"_s);
        add("to pointF", S::stringToQPointF(u"1.23e+06 0.5 3"_s), QPointF(1230000, 0.5));
        add("to pointF, no number", S::stringToQPointF(u"1,5 2"_s), QPointF(0, 2));
        add("path", S::qpointfVectorToString({QPointF(1, 2), QPointF(3.14, 4)}, 2), u"1 2,3.1 4"_s);
        add("path, default", S::qpointfVectorToString({QPointF(0.1, 2)}), u"0.10000000000000001 2"_s);
        add("empty path", S::qpointfVectorToString({}), QString());

        add("size", S::qSizeToString(QSize()), u"-1 -1"_s);
        add("to size, three fields", S::stringToQSize(u"640 x 480"_s), QSize(640, 480));
        add("to size, one field", S::stringToQSize(u"640"_s), QSize(640, 640));
        add("to size, empty", S::stringToQSize(u""_s), QSize(0, 0));
        add("to size, trailing blank", S::stringToQSize(u"640 480 "_s), QSize(640, 0));
        add("sizeF", S::qSizeFToString(QSizeF(0.1, 2.5)), u"0.10000000000000001 2.5"_s);
        add("to sizeF, three fields", S::stringToQSizeF(u"1 x 2.5"_s), QSizeF(1, 2.5));
        add("to sizeF, one field", S::stringToQSizeF(u"2.5"_s), QSizeF(2.5, 2.5));

        add("rect", S::rectToString(QRect(1, 2, 30, 40)), u"1,2,30,40"_s);
        add("to rect, five fields", S::stringToRect(u"1,2,30,40,99"_s), QRect(1, 2, 30, 40));
        add("to rect, no numbers", S::stringToRect(u"x,,30,40"_s), QRect(0, 0, 30, 40));
        add("to rect, edge beyond int", S::stringToRect(u"2147483647,2,9,40"_s).right(), 2147483647);
        add("to rect, three fields", S::stringToRect(u"1,2,30"_s), QRect());

        add("2D", S::vector2DToString(QVector2D(1.5f, 0.1f)), u"1.5 0.100000001"_s);
        add("2D, fixed", S::vector2DToString(QVector2D(1.5f, 0.1f), 3, true), u"1.500 0.100"_s);
        add("to 2D", S::stringToVector2D(u"1.500 0.100"_s), QVector2D(1.5f, 0.1f));
        add("to 2D, other blank and digit", S::stringToVector2D(u"\u00a01.5 ١"_s), QVector2D(1.5f, 0));
        add("to 2D, three fields", S::stringToVector2D(u"1 2 "_s), QVector2D());
        add("3D", S::vector3DToString(QVector3D(1234567, 0.1f, -1)), u"1234567 0.100000001 -1"_s);
        add("3D, fixed", S::vector3DToString(QVector3D(1, 2, 3.125f), 2, true), u"1.00 2.00 3.13"_s);
        add("to 3D", S::stringToVector3D(u"1.00 x 0.1"_s), QVector3D(1, 0, 0.1f));
        add("to 3D, two fields", S::stringToVector3D(u"1 2"_s), QVector3D());
        add("to 3D, four fields", S::stringToVector3D(u"1 2 3 4"_s), QVector3D());

        QMatrix4x4 translation;
        translation.translate(0.1f, 2, 1e-20f);
        const QString matrixText = S::matrix4x4ToString(translation, u';');
        const QString zeros = u".00000000000000000"_s;
        add("matrix", QString(matrixText).remove(zeros), u"1;0;0;0.10000000149011612;0;1;0;2;0;0;1;0;0;0;0;1"_s);
        add("matrix, decimals", matrixText.first(20), u"1.00000000000000000;"_s);
        const float elements[] = {1, 2, 3, 0.1f, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 0, 16};
        const QString texts = u"1;2;3;0.1;5;6;7;8;9;10;11;12;13;14;x;16"_s;
        add("to matrix", S::stringToQMatrix4x4(texts, u';'), QMatrix4x4(elements));
        add("to matrix, 15 fields", S::stringToQMatrix4x4(texts.chopped(3), u';'), QMatrix4x4());
        add("to matrix, 17 fields", S::stringToQMatrix4x4(texts + u';', u';'), QMatrix4x4());
        add("to matrix, safely", S::stringToQMatrix4x4Safe(texts, u';').hasValue(), true);
        add("to matrix, other separator", S::stringToQMatrix4x4Safe(texts).hasValue(), false);
        const QTransform transform(0, 2, 3, 4, 5, 6, 7, 8, 9.5);
        const QTransform precise(0.7071067811865476, 2, 3, 4, 5, 6, 7, 8, 9);
        const QString sixDecimals =
            u"0.707107 2.000000 3.000000 4.000000 5.000000 6.000000 7.000000 8.000000 9.000000"_s;
        add("transform", S::transformToString(precise), sixDecimals);
        add("to transform", S::stringToQTransform(u"x 2 3 4 5 6 7 8 9.5"_s), transform);
        add("to transform, eight fields", S::stringToQTransform(u"1 2 3 4 5 6 7 8"_s), QTransform());
        add("to transform, ten fields", S::stringToQTransform(u"1 2 3 4 5 6 7 8 9 10"_s), QTransform());

        add("map", S::mapToString(TextMap{{u"b"_s, u"x y"_s}, {u"a"_s, u"1"_s}, {u"B"_s, {}}}), u"B  | a 1 | b x y"_s);
        add("empty map", S::mapToString(TextMap()), QString());
        const VersionMap versions = {{u"ui"_s, {2, 0}}, {u"core"_s, {1, -2, 3}}, {u"x"_s, {}}};
        add("version map", S::mapToString(versions), u"core 1.-2.3 | ui 2.0 | x "_s);
        add("empty version map", S::mapToString(VersionMap()), QString());
        const QString k(512, u'k'); // as long as the writer's buffer
        add("long keys", S::mapToString(TextMap{{k, u"v"_s}, {k + k, {}}}), QString(k + u" v | "_s + k + k + u' '));
        add("to map, bare bar, other order", readVersions(u"b 3.0|a 1.2"_s), u"a 1.2 | b 3.0"_s);
        add("to map, white space everywhere", readVersions(u"\n a  \t 1.2 \t"_s), u"a 1.2"_s);
        add("to map, last of a key wins", readVersions(u"a 3 | b 2 | a 0"_s), u"a 0 | b 2"_s);
        add("to map, no number", readVersions(u"a abc"_s), u"a "_s);
        const QString refusal = u"refused: 1 default invalid version format (%1)"_s;
        for (const char *row :
            {"", "a", "a ", "\"a\"\n", "a 1 2", "my app 1.0", "a\t1.0", "a 1 |", "| a 1", "a 1 || b 2"}) {
            const QString text = QString::fromUtf8(row);
            add(row, readVersions(text), refusal.arg(QDebug::toString(text)));
        }
    }
    void values()
    {
        QFETCH(QVariant, actual);
        QFETCH(QVariant, expected);
        QCOMPARE(QDebug::toString(actual), QDebug::toString(expected));
        QVERIFY(actual == expected);
        QCOMPARE(actual.toString().isNull(), expected.toString().isNull());
    }

    void marksMatrixAsGeneral()
    {
        const QString identity = S::matrix4x4ToString(QMatrix4x4());
        QCOMPARE(static_cast<int>(S::stringToQMatrix4x4(identity).flags()),
            0x1f); // equal matrices may differ in their flags
        QCOMPARE(static_cast<int>(S::stringToQMatrix4x4(u"1 2"_s).flags()), 0);
    }

    void translatesKeySequence()
    {
        GermanKeys translator; // uninstalls itself
        QVERIFY(QCoreApplication::installTranslator(&translator));
        QCOMPARE(S::qkeySequencesToAppendableString({QKeySequence(Qt::CTRL | Qt::Key_S)}), u" (Strg+S)"_s);
    }
};

QTEST_GUILESS_MAIN(StringConversionsTest)
#include "tst_stringconversions.moc"
