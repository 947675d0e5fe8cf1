#include <conversions/StringConversions.h>

#include <QDebug>
#include <QLocale>
#include <QScopeGuard>
#include <QTest>

#include <clocale>
#include <functional>
#include <limits>
#include <type_traits>
#include <utility>

static_assert(std::is_copy_assignable_v<StringConversions> && std::is_move_assignable_v<StringConversions>);
static_assert(std::is_default_constructible_v<StringConversions> && std::is_copy_constructible_v<StringConversions>);

using namespace Qt::StringLiterals;

namespace {

using Own = StringConversions;
using Read = std::function<QString(const QString &)>;
using VersionMap = QMap<QString, QVersionNumber>;

// show(): what was read, as QDebug writes it, without the names of types: "(10,-20)".

template <typename T>
QString show(const T &value)
{
    QString text;
    QDebug(&text).nospace().noquote() << value;
    return text.mid(text.indexOf(u'(')).remove("QVersionNumber"_L1);
}

template <typename... Values>
QString showAll(Values... values)
{
    return QStringList({show(values)...}).join(u';');
}

QString show(const QMatrix4x4 &matrix)
{
    const auto row = [&matrix](int i) { return showAll(matrix(i, 0), matrix(i, 1), matrix(i, 2), matrix(i, 3)); };
    return row(0) + u'/' + row(1) + u'/' + row(2) + u'/' + row(3);
}

QString show(const QTransform &t)
{
    return showAll(t.m11(), t.m12(), t.m13()) + u'/' + showAll(t.m21(), t.m22(), t.m23()) + u'/'
        + showAll(t.m31(), t.m32(), t.m33());
}

template <typename T>
QString show(const utility::Optional<T> &result)
{
    return result.hasValue() ? show(result.getValue()) : QStringLiteral("refused");
}

/** Adds a row for each of @p readings: "<text>=><what is read>; <text>=><what is read>" in UTF-8. */
template <typename ReadValue>
void addReadings(const char *form, ReadValue readValue, const char *readings)
{
    const Read read = [readValue](const QString &text) { return show(readValue(text)); };
    const QStringList rows = QString::fromUtf8(readings).split("; "_L1);
    for (const QString &row : rows) {
        const QStringList sides = row.split("=>"_L1);
        QTest::addRow("%s '%s'", form, qUtf8Printable(sides[0])) << read << sides[0] << sides[1];
    }
}

void addWriting(const char *form, const QString &text, const QByteArray &expected)
{
    QTest::addRow("%s '%s'", form, expected.constData()) << text << QString::fromUtf8(expected);
}

QString logged; // "<type>|<category>|<file>|<line>|<function>|<text>" for each message

void recordLog(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    QDebug(&logged).nospace() << int(type) << '|' << context.category << '|' << context.file << '|' << context.line
                              << '|' << context.function << '|' << qUtf8Printable(text);
}

} // namespace

class StringConversionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_data();
    void writes();
    void tellsNullFromEmpty();
    void reads_data();
    void reads();
    void readsGeneralMatrix();
    void refusalIsLogged_data();
    void refusalIsLogged();
    void ignoresLocale();
};

void StringConversionsTest::writes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    addWriting("bool", Own::boolToString(true), "true");
    addWriting("bool", Own::boolToString(false), "false");
    addWriting("int", Own::intToString(std::numeric_limits<int>::min()), "-2147483648");

    const std::vector<int> values = {1, -2, 3, std::numeric_limits<int>::min()};
    addWriting("list", Own::integerArrayToString(values), "1 -2 3 -2147483648");
    addWriting("part of a list", Own::toString(values.data(), 2), "1 -2");
    addWriting("nothing of a list", Own::toString(nullptr, -1) + Own::toString(nullptr, 0), "");

    const auto pointer = [](quintptr address) { return Own::ptrToString(reinterpret_cast<const void *>(address)); };
    addWriting("null pointer", pointer(0), "0x0000000000000000");
    addWriting("pointer", pointer(0xABCDEF), "0x0000000000abcdef");
    addWriting("unsigned pointer", pointer(~quintptr(0)), "0xffffffffffffffff");
    const QList<QKeySequence> keys = {QKeySequence(Qt::Key_Percent, Qt::Key_1), QKeySequence(Qt::Key_F2)};
    addWriting("shortcut", Own::qkeySequencesToAppendableString(keys), " (%, 1)");

    addWriting("point", Own::qpointToString(QPoint(10, -20)), "10 -20");
    addWriting("pointf 17", Own::qpointfToString(QPointF(0.1, 2.5)), "0.10000000000000001 2.5");
    addWriting("pointf 3", Own::qpointfToString(QPointF(3.14159265, 1234567.0), 3), "3.14 1.23e+06");
    addWriting("pointf shortest", Own::qpointfToString(QPointF(0.1, 1e22), -128), "0.1 1e+22");
    addWriting("pointf ties", Own::qpointfToString(QPointF(2.5, -12.5), 1), "3 -1e+01");
    addWriting("pointf even ties", Own::qpointfToString(QPointF(0.125, 22.5), 2), "0.13 23");
    addWriting("pointf no number", Own::qpointfToString(QPointF(-0.0, qQNaN()), 6), "0 nan");
    addWriting("pointf infinite", Own::qpointfToString(QPointF(-qInf(), qInf()), 6), "-inf inf");
    addWriting("path", Own::qpointfVectorToString({QPointF(1, 2), QPointF(3.5, 4)}, 6), "1 2,3.5 4");
    addWriting("size", Own::qSizeToString(QSize()), "-1 -1");
    addWriting("sizef", Own::qSizeFToString(QSizeF(0.1, 2.5)), "0.10000000000000001 2.5");
    addWriting("rect", Own::rectToString(QRect(-5, -6, 7, 8)), "-5,-6,7,8");
    addWriting("rect", Own::rectToString(QRect()), "0,0,0,0");

    addWriting("2d fixed", Own::vector2DToString(QVector2D(1.5f, 0.1f), 3, true), "1.500 0.100");
    addWriting("2d whole", Own::vector2DToString(QVector2D(0.5f, -2.5f), 0, true), "1 -3");
    addWriting("2d 17", Own::vector2DToString(QVector2D(0.1f, 0.0f), 17, false), "0.10000000149011612 0");
    addWriting("2d default", Own::vector2DToString(QVector2D(1.5f, 0.1f)), "1.5 0.100000001");
    addWriting("2d small", Own::vector2DToString(QVector2D(-1e-20f, -0.0f), 6, true), "-0.000000 0.000000");
    addWriting("3d fixed", Own::vector3DToString(QVector3D(1, 2, 3), 2, true), "1.00 2.00 3.00");
    addWriting("3d", Own::vector3DToString(QVector3D(1234567, 0.5f, -0.25f), 3, false), "1.23e+06 0.5 -0.25");

    QMatrix4x4 matrix;
    matrix.translate(0.1f, 2, 1e-20f);
    const char *const matrixText = "1.00000000000000000,0.00000000000000000,0.00000000000000000,0.10000000149011612,"
                                   "0.00000000000000000,1.00000000000000000,0.00000000000000000,2.00000000000000000,"
                                   "0.00000000000000000,0.00000000000000000,1.00000000000000000,0.00000000000000000,"
                                   "0.00000000000000000,0.00000000000000000,0.00000000000000000,1.00000000000000000";
    addWriting("matrix", Own::matrix4x4ToString(matrix, u','), matrixText);
    addWriting("matrix with blanks", Own::matrix4x4ToString(matrix), QByteArray(matrixText).replace(',', ' '));
    addWriting("transform",
        Own::transformToString(QTransform(1, 2, 3, 4, 5, 6, 7, 8.5, 0.7071067811865476)),
        "1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 7.000000 8.500000 0.707107");

    using TextMap = QMap<QString, QString>;
    const QString longText(2000, u'x');
    addWriting(
        "map", Own::mapToString(TextMap{{u"b"_s, u"x y"_s}, {u"a"_s, u"1"_s}, {u"B"_s, {}}}), "B  | a 1 | b x y");
    addWriting("long map",
        Own::mapToString(TextMap{{u"k"_s, longText}, {u"l"_s, longText}}),
        QByteArrayLiteral("k ") + longText.toUtf8() + " | l " + longText.toUtf8());
    addWriting("versions",
        Own::mapToString(VersionMap{{u"ui"_s, QVersionNumber(2, 0)}, {u"core"_s, QVersionNumber(1, -2, 300)}}),
        "core 1.-2.300 | ui 2.0");
    addWriting("null version", Own::mapToString(VersionMap{{u"core"_s, {}}}), "core ");
}

void StringConversionsTest::writes()
{
    QFETCH(const QString, text);
    QTEST(text, "expected");
}

void StringConversionsTest::tellsNullFromEmpty()
{
    const QString noKeys = Own::qkeySequencesToAppendableString({});
    QVERIFY(noKeys.isEmpty() && !noKeys.isNull());
    QVERIFY(Own::mapToString(QMap<QString, QString>()).isNull());
    QVERIFY(Own::mapToString(VersionMap()).isNull());
}

void StringConversionsTest::reads_data()
{
    QTest::addColumn<Read>("read");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    addReadings("bool",
        &Own::stringToBool,
        "true=>true; tRuE=>true; 1=>true; =>false; 0=>false; 01=>false;  true=>false; true =>false; yes=>false");
    addReadings(
        "int",
        [](const QString &text) { return Own::stringToInt(text, 5); },
        "42=>42; -42=>-42; 0=>0;  7=>7; =>5; 12abc=>5; 0x10=>5; 1.5=>5; 2147483648=>5; -2147483648=>-2147483648");
    addReadings(
        "int or 0", [](const QString &text) { return Own::stringToInt(text); }, "x=>0");
    addReadings(
        "float e",
        [](const QString &text) { return Own::stringToFloat(text); },
        "1.5e3=>1500; 2.5=>2.5; 2.5e=>2.5; e3=>0; =>0; 1e2e3=>100; 1.5E3=>1500; 1e999=>inf; 1E999=>inf; 0e999=>nan");
    addReadings(
        "float D", [](const QString &text) { return Own::stringToFloat(text, 'D'); }, "1.5D+3=>1500; abc=>0");
    addReadings(
        "float \u00e9", [](const QString &text) { return Own::stringToFloat(text, '\xe9'); }, "1.5\u00e93=>1500");
    addReadings("list",
        &Own::stringToIntegerArray,
        "1 -2 3=>(1, -2, 3); =>(0); 1  2=>(1, 0, 2); 1 2 =>(1, 2, 0); 1 x 3=>(1, 0, 3); 1\t2=>(0); \t1 2=>(1, 2); "
        "2147483648 5=>(0, 5)");

    addReadings("point",
        &Own::stringToQPoint,
        "10 -20=>(10,-20); 10 -20 30=>(10,-20); 10=>(0,0); =>(0,0); 10  -20=>(10,0);  5=>(0,5); 1.5 2=>(0,2)");
    addReadings("pointf",
        &Own::stringToQPointF,
        "1.5 2.25=>(1.5,2.25); 1.23e+06 0.5 x=>(1.23e+06,0.5); 1.5=>(0,0); 1e999 -inf=>(inf,-inf); \u22121 "
        "\u00a02=>(-1,2)");
    addReadings("size",
        &Own::stringToQSize,
        "640 480=>(640, 480); 640 x 480=>(640, 480); 640=>(640, 640); =>(0, 0); 640 480 =>(640, 0)");
    addReadings(
        "sizef", &Own::stringToQSizeF, "0.10000000000000001 2.5=>(0.1, 2.5); 2.5=>(2.5, 2.5); =>(0, 0); 1 x=>(1, 0)");
    addReadings("rect",
        &Own::stringToRect,
        "1,2,30,40=>(1,2 30x40); 1,2,30,40,99=>(1,2 30x40); 1,x,30,40=>(1,0 30x40); -5,-6,7,8=>(-5,-6 7x8); "
        "1,2,30=>(0,0 0x0); =>(0,0 0x0); 2147483647,-2147483648,10,-1=>(2147483647,-2147483648 1x1)");

    addReadings("2d",
        &Own::stringToVector2D,
        "1.500 0.100=>(1.5, 0.1); abc 2=>(0, 2); =>(0, 0); 1.5=>(0, 0); 1 2 3=>(0, 0); 1  2=>(0, 0); 1 2 =>(0, 0)");
    addReadings("3d", &Own::stringToVector3D, "1.00 2 3=>(1, 2, 3); =>(0, 0, 0); 1 2=>(0, 0, 0); 1 2 3 4=>(0, 0, 0)");
    const auto readMatrix = [](const QString &text) { return Own::stringToQMatrix4x4Safe(text, u','); };
    const auto readMatrixOrIdentity = [](const QString &text) { return Own::stringToQMatrix4x4(text, u','); };
    addReadings("matrix or refusal",
        readMatrix,
        "1,2,3,4,5,6,7,8,9,x,11,12,13,14,15,0.1=>1;2;3;4/5;6;7;8/9;0;11;12/13;14;15;0.1; =>refused; "
        "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15=>refused; 1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,,16=>refused");
    addReadings("matrix or identity",
        readMatrixOrIdentity,
        "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16=>1;2;3;4/5;6;7;8/9;10;11;12/13;14;15;16; 1 2 3 4 5 6 7 8 9 10 11 12 13 "
        "14 15 16=>1;0;0;0/0;1;0;0/0;0;1;0/0;0;0;1");
    addReadings("transform",
        &Own::stringToQTransform,
        "x 2 3 4 5 6 7 8 0.707107=>0;2;3/4;5;6/7;8;0.707107; =>1;0;0/0;1;0/0;0;1; 1 2 3 4 5 6 7 8=>1;0;0/0;1;0/0;0;1; "
        "1 2 3 4  5 6 7 8 9=>1;0;0/0;1;0/0;0;1");
    addReadings("versions",
        &Own::stringToStringVersionMap,
        "core 1.2.3 | ui 2.0=>((core, (1.2.3))(ui, (2.0))); core 1.2|ui 2=>((core, (1.2))(ui, (2)));   core   1.2   |  "
        "\tui \t2\u00a0 =>((core, (1.2))(ui, (2))); core abc=>((core, ())); core 1.2abc=>((core, (1.2))); b 1 | a 3 | "
        "b 2=>((a, (3))(b, (2))); Core 1|core 2=>((Core, (1))(core, (2)))");
}

void StringConversionsTest::reads()
{
    QFETCH(const Read, read);
    QFETCH(const QString, text);
    QTEST(read(text), "expected");
}

void StringConversionsTest::readsGeneralMatrix()
{
    // Also where the text spells out the identity: the reader never optimises.
    const QString text = Own::matrix4x4ToString(QMatrix4x4());
    QCOMPARE(Own::stringToQMatrix4x4(text).flags(), QMatrix4x4::Flags(QMatrix4x4::General));
    QCOMPARE(Own::stringToQMatrix4x4(QString()).flags(), QMatrix4x4::Flags(QMatrix4x4::Identity));
}

void StringConversionsTest::refusalIsLogged_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("quoted");

    const QString texts = u",core,core ,core 1 2,my app 1.0,core 1.2 | ,| core 1.2,core 1.2 || ui 2,core\u00a01.0"_s;
    const QStringList plainTexts = texts.split(u',');
    for (const QString &text : plainTexts) {
        QTest::addRow("'%s'", qUtf8Printable(text)) << text << u'"' + text + u'"';
    }
    QTest::newRow("escapes") << u"core\t\"1\"\u0001"_s << uR"("core\t\"1\"\u0001")"_s;
}

void StringConversionsTest::refusalIsLogged()
{
    QFETCH(const QString, text);
    QFETCH(const QString, quoted);

    logged.clear();
    const QtMessageHandler previous = qInstallMessageHandler(&recordLog);
    const bool isRead = Own::stringToStringVersionMap(text).hasValue();
    qInstallMessageHandler(previous);
    QVERIFY(!isRead);
    QCOMPARE(logged, u"1|default||0||invalid version format (%1)"_s.arg(quoted));
}

void StringConversionsTest::ignoresLocale()
{
    // A decimal comma in the C library, where a locale with one is installed, and other digits in Qt.
    const auto restore = qScopeGuard([locale = QLocale()] {
        QLocale::setDefault(locale);
        std::setlocale(LC_ALL, "C");
    });
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    QCOMPARE(QLocale().toString(1234.5), u"١٬٢٣٤٫٥"_s);

    QCOMPARE(Own::qpointfToString(QPointF(1234567.5, 2.25), 17), u"1234567.5 2.25"_s);
    QCOMPARE(Own::qpointfToString(QPointF(0.125, 1e300), 2), u"0.13 1e+300"_s);
    QCOMPARE(Own::integerArrayToString({1234567, -1}), u"1234567 -1"_s);
    QCOMPARE(show(Own::stringToQPointF(u"1234.5 1,5"_s)), u"(1234.5,0)"_s);
    QCOMPARE(show(Own::stringToVector2D(u" 1.5 ١"_s)), u"(0, 0)"_s);
    QCOMPARE(show(Own::stringToVector2D(u"\u00a01.5 ١"_s)), u"(1.5, 0)"_s);
}

QTEST_GUILESS_MAIN(StringConversionsTest)
#include "tst_stringconversions.moc"
