#include "../LogRecorder.h"

#include <conversions/StringConversions.h>

#include <QDebug>
#include <QLocale>
#include <QScopeGuard>
#include <QTest>

#include <clocale>
#include <functional>
#include <limits>
#include <type_traits>

static_assert(std::is_copy_assignable_v<StringConversions> && std::is_move_assignable_v<StringConversions>);
static_assert(std::is_default_constructible_v<StringConversions> && std::is_copy_constructible_v<StringConversions>);

using namespace Qt::StringLiterals;

// Texts as they stand, for what tst_stringconversions_agreement does not compare or to have an example of each form.

namespace {

using Own = StringConversions;
using Read = std::function<QString(const QString &)>;
using TextMap = QMap<QString, QString>;
using VersionMap = QMap<QString, QVersionNumber>;

/** Adds a row; null for @p expected means a null string, and not one that is only empty. */
void addWriting(const char *form, const QString &text, const char *expected)
{
    QTest::newRow(form) << text << QString::fromUtf8(expected);
}

/** Adds a row for each of @p readings: "<text>=><what is read, as a writer shows it>; ..." in UTF-8. */
void addReadings(const char *form, const Read &read, const char *readings)
{
    const QStringList rows = QString::fromUtf8(readings).split("; "_L1);
    for (const QString &row : rows) {
        const QStringList sides = row.split("=>"_L1);
        QTest::addRow("%s '%s'", form, qUtf8Printable(sides[0])) << read << sides[0] << sides[1];
    }
}

/** Returns an element beside the diagonal and the flags of the matrix, which tell a general one from the identity. */
QString showMatrix(const QString &text)
{
    const QMatrix4x4 matrix = Own::stringToQMatrix4x4(text);
    const bool isRead = Own::stringToQMatrix4x4Safe(text).hasValue();
    return u"%1 %2 %3"_s.arg(matrix(0, 1)).arg(int(matrix.flags()), 0, 16).arg(isRead);
}

QString showVersions(const QString &text)
{
    const LogRecorder log;
    const utility::Optional<VersionMap> versions = Own::stringToStringVersionMap(text);
    return (versions.hasValue() ? Own::mapToString(versions.getValue()) : QString()) + log.getLines().join(u'\n');
}

} // namespace

class StringConversionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_data();
    void writes();
    void reads_data();
    void reads();
    void ignoresLocale();
};

void StringConversionsTest::writes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    addWriting("true", Own::boolToString(true), "true");
    addWriting("false", Own::boolToString(false), "false");
    addWriting("default int", Own::intToString(Own::stringToInt(u"x"_s)), "0");
    const std::vector<int> values = {1, -2, 3, std::numeric_limits<int>::min()};
    addWriting("list", Own::integerArrayToString(values), "1 -2 3 -2147483648");
    addWriting("part of a list", Own::toString(values.data(), 2), "1 -2");
    addWriting("nothing of a list", Own::toString(nullptr, -1), nullptr);
    addWriting("pointer", Own::ptrToString(reinterpret_cast<const void *>(0xABCDEF)), "0x0000000000abcdef");
    addWriting("last pointer", Own::ptrToString(reinterpret_cast<const void *>(~quintptr(0))), "0xffffffffffffffff");
    const QList<QKeySequence> keys = {QKeySequence(Qt::Key_Percent, Qt::Key_1), QKeySequence(Qt::Key_F2)};
    addWriting("shortcut", Own::qkeySequencesToAppendableString(keys), " (%, 1)");
    addWriting("no shortcut", Own::qkeySequencesToAppendableString({}), "");

    addWriting("pointf", Own::qpointfToString(QPointF(0.1, -0.0)), "0.10000000000000001 0");
    addWriting("pointf 3", Own::qpointfToString(QPointF(3.14159265, 1234567.0), 3), "3.14 1.23e+06");
    addWriting("pointf shortest", Own::qpointfToString(QPointF(0.1, -qInf()), -128), "0.1 -inf");
    addWriting("pointf ties", Own::qpointfToString(QPointF(0.125, 22.5), 2), "0.13 23");
    addWriting("path", Own::qpointfVectorToString({QPointF(1, 2), QPointF(3.5, 4)}, 6), "1 2,3.5 4");
    addWriting("path 17", Own::qpointfVectorToString({QPointF(0.1, 2)}), "0.10000000000000001 2");

    addWriting("2d", Own::vector2DToString(QVector2D(1.5f, 0.1f)), "1.5 0.100000001");
    addWriting("2d whole", Own::vector2DToString(QVector2D(0.5f, -1e-20f), 0, true), "1 -0");
    addWriting("3d", Own::vector3DToString(QVector3D(1234567, 0.1f, -0.25f)), "1234567 0.100000001 -0.25");
    addWriting("3d fixed", Own::vector3DToString(QVector3D(1, 2, 3.125f), 2, true), "1.00 2.00 3.13");
    const float elements[] = {0.1f, 2, 1e-20f, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    addWriting("matrix",
        Own::matrix4x4ToString(QMatrix4x4(elements)).remove(".00000000000000000"_L1),
        "0.10000000149011612 2 0 4 5 6 7 8 9 10 11 12 13 14 15 16");
    addWriting("transform",
        Own::transformToString(QTransform(1, 2, 3, 4, 5, 6, 7, 8.5, 0.7071067811865476)),
        "1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 7.000000 8.500000 0.707107");

    const TextMap texts = {{u"b"_s, u"x y"_s}, {u"a"_s, u"1"_s}, {u"B"_s, {}}};
    addWriting("map", Own::mapToString(texts), "B  | a 1 | b x y");
    addWriting("no map", Own::mapToString(TextMap()), nullptr);
    const VersionMap versions = {{u"ui"_s, QVersionNumber(2, 0)}, {u"core"_s, QVersionNumber(1, -2)}, {u"x"_s, {}}};
    addWriting("versions", Own::mapToString(versions), "core 1.-2 | ui 2.0 | x ");
    addWriting("no versions", Own::mapToString(VersionMap()), nullptr);
}

void StringConversionsTest::writes()
{
    QFETCH(const QString, text);
    QFETCH(const QString, expected);
    QCOMPARE(text, expected);
    QCOMPARE(text.isNull(), expected.isNull());
}

void StringConversionsTest::reads_data()
{
    QTest::addColumn<Read>("read");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const auto readBool = [](const QString &text) { return Own::boolToString(Own::stringToBool(text)); };
    const auto readInt = [](const QString &text) { return Own::intToString(Own::stringToInt(text, 5)); };
    const auto readFloat = [](const QString &text) { return QString::number(Own::stringToFloat(text)); };
    const auto readLatin = [](const QString &text) { return QString::number(Own::stringToFloat(text, '\xe9')); };
    const auto readList = [](const QString &text) {
        return Own::integerArrayToString(Own::stringToIntegerArray(text));
    };
    const auto readPoint = [](const QString &text) { return Own::qpointToString(Own::stringToQPoint(text)); };
    const auto readPointF = [](const QString &text) { return Own::qpointfToString(Own::stringToQPointF(text)); };
    const auto readSize = [](const QString &text) { return Own::qSizeToString(Own::stringToQSize(text)); };
    const auto readSizeF = [](const QString &text) { return Own::qSizeFToString(Own::stringToQSizeF(text)); };
    const auto readRect = [](const QString &text) { return Own::rectToString(Own::stringToRect(text)); };
    const auto read2D = [](const QString &text) { return Own::vector2DToString(Own::stringToVector2D(text)); };
    const auto read3D = [](const QString &text) { return Own::vector3DToString(Own::stringToVector3D(text)); };
    const auto readTransform = [](const QString &text) {
        return Own::transformToString(Own::stringToQTransform(text)).remove(".000000"_L1);
    };

    addReadings("bool", readBool, "tRuE=>true; 1=>true; =>false; 01=>false;  true=>false; true =>false; yes=>false");
    addReadings(
        "int", readInt, "-42=>-42; 0=>0;  7=>7; =>5; 12abc=>5; 0x10=>5; 2147483648=>5; -2147483648=>-2147483648");
    addReadings("float e", readFloat, "1.5e3=>1500; 2.5e=>2.5; e3=>0; =>0; 1e2e3=>100; 1.5E3=>1500; 1E999=>inf");
    addReadings("float \u00e9", readLatin, "1.5\u00e9+3=>1500; 1.5e3=>1500; abc=>0; 1\u00e9999=>inf; 0\u00e9999=>nan");
    addReadings("list", readList, "1 -2 3=>1 -2 3; =>0; 1  2 =>1 0 2 0; 1 x 3=>1 0 3; 1\t2=>0; 2147483648 5=>0 5");
    addReadings("point", readPoint, "10 -20 30=>10 -20; 10=>0 0; =>0 0; 10  -20=>10 0;  5=>0 5; 1.5 2=>0 2");
    addReadings("pointf", readPointF, "1.23e+06 0.5 x=>1230000 0.5; 1.5=>0 0; 1e999 -inf=>inf -inf; -1 \u00a02=>-1 2");
    addReadings("size", readSize, "640 x 480=>640 480; 640=>640 640; =>0 0; 640 480 =>640 0");
    addReadings("sizef", readSizeF, "0.10000000000000001 x 2=>0.10000000000000001 2; 2.5=>2.5 2.5; =>0 0; 1 x=>1 0");
    addReadings("rect", readRect, "-1,x,30,40,99=>-1,0,30,40; 1,2,30=>0,0,0,0; =>0,0,0,0");
    addReadings("rect", readRect, "2147483647,-2147483648,10,-1=>2147483647,-2147483648,1,1");
    addReadings("2d", read2D, "1.500 x=>1.5 0; 1.5=>0 0; 1 2 3=>0 0; 1  2=>0 0; 1 2 =>0 0");
    addReadings("3d", read3D, "1.00 2 3=>1 2 3; =>0 0 0; 1 2=>0 0 0; 1 2 3 4=>0 0 0");
    addReadings("matrix", &showMatrix, "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1=>0 1f 1; =>0 0 0");
    addReadings("matrix", &showMatrix, "1 2 3 4 5 6 7 8 9 x 11 12 13 14 15 16=>2 1f 1; 1 2=>0 0 0");
    addReadings("transform", readTransform, "x 2 3 4 5 6 7 8 0.707107=>0 2 3 4 5 6 7 8 0.707107");
    addReadings("transform", readTransform, "=>1 0 0 0 1 0 0 0 1; 1 2 3 4 5 6 7 8=>1 0 0 0 1 0 0 0 1");
    addReadings(
        "versions", &showVersions, "core 1.2|ui 2=>core 1.2 | ui 2;   b   1.2   |  \ta \t2\u00a0 =>a 2 | b 1.2");
    addReadings("versions", &showVersions, "a b=>a ; a 1.2b=>a 1.2; b 1 | B 3 | b 2=>B 3 | b 2");
    const QStringList refused = u";a;a\u00a01;a ;a b 1;a 1 | ;| a 1;a 1 || b 2;a\t\"1\"\u0001"_s.split(u';');
    for (const QString &text : refused) {
        const QString line = u"1 default invalid version format (%1)"_s.arg(QDebug::toString(text));
        QTest::addRow("versions '%s'", qUtf8Printable(text)) << Read(&showVersions) << text << line;
    }
}

void StringConversionsTest::reads()
{
    QFETCH(const Read, read);
    QFETCH(const QString, text);
    QTEST(read(text), "expected");
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

    QCOMPARE(Own::qpointfToString(QPointF(1234567.5, 0.125), 2), u"1.2e+06 0.13"_s);
    QCOMPARE(Own::integerArrayToString({1234567, -1}), u"1234567 -1"_s);
    QCOMPARE(Own::qpointfToString(Own::stringToQPointF(u"1234.5 1,5"_s)), u"1234.5 0"_s);
    QCOMPARE(Own::vector2DToString(Own::stringToVector2D(u"\u00a01.5 ١"_s)), u"1.5 0"_s);
}

QTEST_GUILESS_MAIN(StringConversionsTest)
#include "tst_stringconversions.moc"
