#include "../support/LogRecorder.h"

#include <conversions/StringConversions.h>

#include <QLocale>
#include <QScopeGuard>
#include <QTest>
#include <QTranslator>

#include <climits>
#include <clocale>
#include <type_traits>

static_assert(std::is_copy_assignable_v<StringConversions> && std::is_move_assignable_v<StringConversions>);
static_assert(std::is_default_constructible_v<StringConversions> && std::is_copy_constructible_v<StringConversions>);

using namespace Qt::StringLiterals;
using S = StringConversions;
using Integers = std::vector<int>;
using TextMap = QMap<QString, QString>;
using VersionMap = QMap<QString, QVersionNumber>;

namespace {

template <typename Value>
void addReading(const char *row, const Value &actual, const Value &expected)
{
    QTest::newRow(row) << QVariant::fromValue(actual) << QVariant::fromValue(expected);
}

/** As std::vector cannot be shown. */
QList<int> readIntegers(const QString &text)
{
    const Integers values = S::stringToIntegerArray(text);
    return QList<int>(values.begin(), values.end());
}

/** Shows the map in @p text and what was logged. */
QString readVersions(const QString &text)
{
    const LogRecorder log;
    const auto map = S::stringToStringVersionMap(text);
    return (map.hasValue() ? S::mapToString(map.getValue()) : u"refused: "_s) + log.getLines().join(u'|');
}

/** Writes @p matrix with blanks and without the decimals of whole numbers. */
QString toShortText(const QMatrix4x4 &matrix)
{
    return S::matrix4x4ToString(matrix, u' ').remove(".00000000000000000"_L1);
}

class GermanKeys : public QTranslator
{
public:
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return qstrcmp(context, "QShortcut") == 0 && qstrcmp(text, "Ctrl") == 0 ? u"Strg"_s : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class StringConversionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data()
    {
        QTest::addColumn<QVariant>("actual");
        QTest::addColumn<QVariant>("expected");
        for (const char *text : {"true", "TRUE", "True", "tRuE", "1"}) {
            addReading(text, S::stringToBool(QString::fromUtf8(text)), true);
        }
        for (const char *text : {"false", "0", "yes", "on", "01", "1.0", " true", "true ", "t"}) {
            addReading(text, S::stringToBool(QString::fromUtf8(text)), false);
        }
        addReading("bool, empty", S::stringToBool(QString()), false);

        addReading("integer", S::stringToInt(u"-42"_s, 5), -42);
        addReading("integer, least", S::stringToInt(u"-2147483648"_s, 5), INT_MIN);
        addReading("integer, too large", S::stringToInt(u"2147483648"_s, 5), 5);
        addReading("integer, empty", S::stringToInt(u""_s, 5), 5);
        addReading("integer, letters behind", S::stringToInt(u"12abc"_s, 5), 5);
        addReading("integer, prefix", S::stringToInt(u"0x10"_s, 5), 5);
        addReading("integer, default", S::stringToInt(u"x"_s), 0);

        addReading("float", S::stringToFloat(u"1.5D+3"_s, 'D'), 1500.0f);
        addReading("float, Latin-1", S::stringToFloat(u"1.5é+3"_s, '\xe9'), 1500.0f);
        addReading("float, third field", S::stringToFloat(u"1e2e3"_s), 100.0f);
        addReading("float, empty exponent", S::stringToFloat(u"2.5e"_s), 2.5f);
        addReading("float, exponent with fraction", S::stringToFloat(u"2.5e1.5"_s), 2.5f);
        addReading("float, empty mantissa", S::stringToFloat(u"e3"_s), 0.0f);
        addReading("float, no number", S::stringToFloat(u"abc"_s, 'x'), 0.0f);
        addReading("float, read whole", S::stringToFloat(u"1.5E3"_s), 1500.0f);
        addReading("float, power beyond float", S::stringToFloat(u"1e-30x60"_s, 'x'), 1e30f);

        addReading("integers", readIntegers(u"1 -2 3"_s), {1, -2, 3});
        addReading("integers, empty", readIntegers(u""_s), {0});
        addReading("integers, two blanks", readIntegers(u"1  2"_s), {1, 0, 2});
        addReading("integers, last blank", readIntegers(u"1 2 "_s), {1, 2, 0});
        addReading("integers, no numbers", readIntegers(u"1 x 3 4.5"_s), {1, 0, 3, 0});
        addReading("integers, out of range", readIntegers(u"2147483648 -2147483648"_s), {0, INT_MIN});
        addReading("integers, tab", readIntegers(u"1\t2"_s), {0});

        addReading("point", S::stringToQPoint(u"10 -20"_s), QPoint(10, -20));
        addReading("point, three fields", S::stringToQPoint(u"10 -20 30"_s), QPoint(10, -20));
        addReading("point, one field", S::stringToQPoint(u"10"_s), QPoint(0, 0));
        addReading("point, two blanks", S::stringToQPoint(u"10  -20"_s), QPoint(10, 0));
        addReading("point, first blank", S::stringToQPoint(u" 5"_s), QPoint(0, 5));
        addReading("point, no integers", S::stringToQPoint(u"1.5 ~2"_s), QPoint(0, 0));
        addReading("pointF", S::stringToQPointF(u"1.23e+06 0.5"_s), QPointF(1230000, 0.5));
        addReading("pointF, three fields", S::stringToQPointF(u"1.5 2.25 3"_s), QPointF(1.5, 2.25));
        addReading("pointF, no number", S::stringToQPointF(u"1,5 2"_s), QPointF(0, 2));

        addReading("size", S::stringToQSize(u"640 480"_s), QSize(640, 480));
        addReading("size, three fields", S::stringToQSize(u"640 x 480"_s), QSize(640, 480));
        addReading("size, one field", S::stringToQSize(u"640"_s), QSize(640, 640));
        addReading("size, empty", S::stringToQSize(u""_s), QSize(0, 0));
        addReading("size, last blank", S::stringToQSize(u"640 480 "_s), QSize(640, 0));
        addReading("sizeF", S::stringToQSizeF(u"0.10000000000000001 2.5"_s), QSizeF(0.1, 2.5));
        addReading("sizeF, three fields", S::stringToQSizeF(u"1 x 2.5"_s), QSizeF(1, 2.5));
        addReading("sizeF, one field", S::stringToQSizeF(u"2.5"_s), QSizeF(2.5, 2.5));

        addReading("rect", S::stringToRect(u"1,2,30,40"_s), QRect(1, 2, 30, 40));
        addReading("rect, five fields", S::stringToRect(u"1,2,30,40,99"_s), QRect(1, 2, 30, 40));
        addReading("rect, no number", S::stringToRect(u"1,x,30,40"_s), QRect(1, 0, 30, 40));
        addReading("rect, empty fields", S::stringToRect(u",,30,40"_s), QRect(0, 0, 30, 40));
        addReading("rect, edge beyond int", S::stringToRect(u"2147483647,2,9,40"_s).top(), 2);
        addReading("rect, three fields", S::stringToRect(u"1,2,30"_s), QRect());

        addReading("2D", S::stringToVector2D(u"1.500 0.100"_s), QVector2D(1.5f, 0.1f));
        addReading("2D, no number", S::stringToVector2D(u"abc 2"_s), QVector2D(0, 2));
        addReading("2D, one field", S::stringToVector2D(u"1.5"_s), QVector2D());
        addReading("2D, three fields", S::stringToVector2D(u"1 2 3"_s), QVector2D());
        addReading("2D, two blanks", S::stringToVector2D(u"1  2"_s), QVector2D());
        addReading("3D", S::stringToVector3D(u"1.00 -2 0.1"_s), QVector3D(1, -2, 0.1f));
        addReading("3D, no number", S::stringToVector3D(u"1 x 3"_s), QVector3D(1, 0, 3));
        addReading("3D, two fields", S::stringToVector3D(u"1 2"_s), QVector3D());
        addReading("3D, four fields", S::stringToVector3D(u"1 2 3 4"_s), QVector3D());

        const float elements[] = {1, 2, 3, 0.1f, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 0, 16};
        const QString texts = u"1;2;3;0.1;5;6;7;8;9;10;11;12;13;14;x;16"_s;
        addReading("matrix", S::stringToQMatrix4x4(texts, u';'), QMatrix4x4(elements));
        addReading("matrix, 15 fields", S::stringToQMatrix4x4(texts.chopped(3), u';'), QMatrix4x4());
        addReading("matrix, 17 fields", S::stringToQMatrix4x4(texts + u';', u';'), QMatrix4x4());
        addReading("safely", S::stringToQMatrix4x4Safe(texts, u';').hasValue(), true);
        addReading("safely, other separator", S::stringToQMatrix4x4Safe(texts).hasValue(), false);
        const QTransform transform(0, 2, 3, 4, 5, 6, 7, 8, 9.5);
        addReading("transform", S::stringToQTransform(u"x 2 3 4 5 6 7 8 9.5"_s), transform);
        addReading("transform, eight fields", S::stringToQTransform(u"1 2 3 4 5 6 7 8"_s), QTransform());
        addReading("transform, ten fields", S::stringToQTransform(u"1 2 3 4 5 6 7 8 9 10"_s), QTransform());

        addReading("map, two", readVersions(u"a 1.2 | b 3.0"_s), u"a 1.2 | b 3.0"_s);
        addReading("map, bare bar, other order", readVersions(u"b 3.0|a 1.2"_s), u"a 1.2 | b 3.0"_s);
        addReading("map, much white space", readVersions(u"\n a  \t 1.2 \t"_s), u"a 1.2"_s);
        addReading("map, last of a key wins", readVersions(u"a 3 | b 2 | a 0"_s), u"a 0 | b 2"_s);
        addReading("map, keys by case", readVersions(u"a 1 | A 2"_s), u"A 2 | a 1"_s);
        addReading("map, no number", readVersions(u"a abc"_s), u"a "_s);
        addReading("map, more behind the number", readVersions(u"a 1.2abc"_s), u"a 1.2"_s);
        const QString refusal = u"refused: 1 default invalid version format (%1)"_s;
        for (const char *row :
            {"", "a", "a ", "\"a\"\n", "a 1 2", "my app 1.0", "a\t1.0", "a 1 |", "| a 1", "a 1 || b 2"}) {
            const QString text = QString::fromUtf8(row);
            addReading(row, readVersions(text), refusal.arg(QDebug::toString(text)));
        }
    }
    void reads()
    {
        QFETCH(QVariant, actual);
        QFETCH(QVariant, expected);
        QCOMPARE(QDebug::toString(actual), QDebug::toString(expected));
        QVERIFY(actual == expected);
    }

    void writes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("true") << S::boolToString(true) << u"true"_s;
        QTest::newRow("false") << S::boolToString(false) << u"false"_s;
        QTest::newRow("least integer") << S::intToString(INT_MIN) << u"-2147483648"_s;
        const Integers integers = {1, -2, 3};
        QTest::newRow("array") << S::integerArrayToString(integers) << u"1 -2 3"_s;
        QTest::newRow("part of an array") << S::toString(integers.data(), 2) << u"1 -2"_s;
        QTest::newRow("empty array") << S::integerArrayToString({}) << QString();
        QTest::newRow("null pointer") << S::ptrToString(nullptr) << u"0x0000000000000000"_s;
        QTest::newRow("pointer") << S::ptrToString(reinterpret_cast<void *>(0xABCDEF)) << u"0x0000000000abcdef"_s;
        const QList<QKeySequence> keys = {QKeySequence(Qt::Key_Percent, Qt::Key_1), QKeySequence(Qt::Key_F2)};
        QTest::newRow("key sequences") << S::qkeySequencesToAppendableString(keys) << u" (%, 1)"_s;
        QTest::newRow("no key sequence") << S::qkeySequencesToAppendableString({}) << u""_s;

        QTest::newRow("point") << S::qpointToString(QPoint(10, -20)) << u"10 -20"_s;
        QTest::newRow("pointF") << S::qpointfToString(QPointF(0.1, -0.0)) << u"0.10000000000000001 0"_s;
        QTest::newRow("3 digits") << S::qpointfToString(QPointF(3.14159265, 1234567), 3) << u"3.14 1.23e+06"_s;
        QTest::newRow("shortest") << S::qpointfToString(QPointF(0.1, -qInf()), -128) << u"0.1 -inf"_s;
        QTest::newRow("ties") << S::qpointfToString(QPointF(0.125, 22.5), 2) << u"0.13 23"_s;
        QTest::newRow("tie, power of ten") << S::qpointfToString(QPointF(10000.5, 2.5), 5) << u"10001 2.5"_s;
        QTest::newRow("greatest tie") << S::qpointfToString(QPointF(2.5e21, 1.5e22), 1) << u"3e+21 2e+22"_s;
        QTest::newRow("least tie") << S::qpointfToString(QPointF(0x1p-25, 1)) << u"2.9802322387695313e-08 1"_s;
        const QPointF allBits(0x1.0000000000001p50, 0);
        QTest::newRow("tie of all bits") << S::qpointfToString(allBits) << u"1125899906842624.3 0"_s;
        QTest::newRow("path") << S::qpointfVectorToString({QPointF(1, 2), QPointF(3.14, 4)}, 2) << u"1 2,3.1 4"_s;
        QTest::newRow("path, default") << S::qpointfVectorToString({QPointF(0.1, 2)}) << u"0.10000000000000001 2"_s;
        QTest::newRow("empty path") << S::qpointfVectorToString({}) << QString();
        QTest::newRow("size") << S::qSizeToString(QSize()) << u"-1 -1"_s;
        QTest::newRow("sizeF") << S::qSizeFToString(QSizeF(0.1, 2.5)) << u"0.10000000000000001 2.5"_s;
        QTest::newRow("rect") << S::rectToString(QRect(1, 2, 30, 40)) << u"1,2,30,40"_s;

        QTest::newRow("2D") << S::vector2DToString(QVector2D(1.5f, 0.1f)) << u"1.5 0.100000001"_s;
        QTest::newRow("2D, 3 digits") << S::vector2DToString(QVector2D(1.5f, 0.1f), 3) << u"1.5 0.1"_s;
        QTest::newRow("2D, fixed") << S::vector2DToString(QVector2D(1.5f, 0.1f), 3, true) << u"1.500 0.100"_s;
        QTest::newRow("2D, whole") << S::vector2DToString(QVector2D(0.5f, -1e-20f), 0, true) << u"1 -0"_s;
        QTest::newRow("2D, widened") << S::vector2DToString(QVector2D(0.1f, 0), 17) << u"0.10000000149011612 0"_s;
        QTest::newRow("3D") << S::vector3DToString(QVector3D(1234567, 0.1f, -1)) << u"1234567 0.100000001 -1"_s;
        QTest::newRow("3D, fixed") << S::vector3DToString(QVector3D(1, 2, 3.125f), 2, true) << u"1.00 2.00 3.13"_s;
        QMatrix4x4 translation;
        translation.translate(0.1f, 2, 1e-20f);
        QTest::newRow("matrix") << toShortText(translation) << u"1 0 0 0.10000000149011612 0 1 0 2 0 0 1 0 0 0 0 1"_s;
        const QString blanks = S::matrix4x4ToString(translation, u' ');
        QTest::newRow("matrix, decimals") << blanks.first(20) << u"1.00000000000000000 "_s;
        const QTransform transform(0.7071067811865476, 2, 3, 4, 5, 6, 7, 8.5, 9);
        QTest::newRow("transform") << S::transformToString(transform).remove(u"00000"_s)
                                   << u"0.707107 2.0 3.0 4.0 5.0 6.0 7.0 8.5 9.0"_s;

        const TextMap texts = {{u"b"_s, u"x y"_s}, {u"a"_s, u"1"_s}, {u"B"_s, {}}};
        QTest::newRow("map") << S::mapToString(texts) << u"B  | a 1 | b x y"_s;
        QTest::newRow("empty map") << S::mapToString(TextMap()) << QString();
        const VersionMap versions = {{u"ui"_s, {2, 0}}, {u"core"_s, {1, -2, 3}}, {u"x"_s, {}}};
        QTest::newRow("version map") << S::mapToString(versions) << u"core 1.-2.3 | ui 2.0 | x "_s;
        QTest::newRow("empty version map") << S::mapToString(VersionMap()) << QString();
        const QString k(512, u'k'); // as long as the writer's buffer
        QTest::newRow("long keys") << S::mapToString(TextMap{{k, u"v"_s}, {k + k, {}}})
                                   << k + u" v | "_s + k + k + u' ';
    }
    void writes()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, expected);
        QCOMPARE(text, expected);
        QCOMPARE(text.isNull(), expected.isNull());
    }

    void marksMatrixAsGeneral()
    {
        const QString identity = S::matrix4x4ToString(QMatrix4x4());
        QCOMPARE(int(S::stringToQMatrix4x4(identity).flags()), 0x1f); // equal matrices may differ in their flags
        QCOMPARE(int(S::stringToQMatrix4x4(u"1 2"_s).flags()), 0);
    }

    void translatesKeySequence()
    {
        GermanKeys translator; // uninstalls itself
        QVERIFY(QCoreApplication::installTranslator(&translator));
        QCOMPARE(S::qkeySequencesToAppendableString({QKeySequence(Qt::CTRL | Qt::Key_S)}), u" (Strg+S)"_s);
    }

    void ignoresLocale()
    {
        // A decimal comma in the C library, where a locale with one is installed, and other digits in Qt.
        const auto restore = qScopeGuard([locale = QLocale()] {
            QLocale::setDefault(locale);
            std::setlocale(LC_ALL, "C");
        });
        QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
        std::setlocale(LC_ALL, "de_DE.UTF-8");
        QCOMPARE(QLocale().toString(1234.5), u"١٬٢٣٤٫٥"_s);

        QCOMPARE(S::qpointfToString(QPointF(1234567.5, 0.125), 2), u"1.2e+06 0.13"_s);
        QCOMPARE(S::integerArrayToString({1234567, -1}), u"1234567 -1"_s);
        QCOMPARE(S::qpointfToString(S::stringToQPointF(u"1234.5 1,5"_s)), u"1234.5 0"_s);
        QCOMPARE(S::vector2DToString(S::stringToVector2D(u"\u00a01.5 ١"_s)), u"1.5 0"_s);
    }
};

QTEST_GUILESS_MAIN(StringConversionsTest)
#include "tst_stringconversions.moc"
