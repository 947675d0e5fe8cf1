#include <conversions/StringConversions.h>

#include <QLocale>
#include <QScopeGuard>
#include <QTest>

#include <atomic>
#include <clocale>
#include <functional>
#include <limits>
#include <type_traits>

static_assert(std::is_copy_assignable_v<StringConversions> && std::is_move_assignable_v<StringConversions>);
static_assert(std::is_default_constructible_v<StringConversions> && std::is_copy_constructible_v<StringConversions>);

static std::atomic<int> allocated = 0; // stays 0 where nothing counts

#if defined(__GLIBC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// Stands in for the function of the C library, which stays within reach under its other name.
extern "C" void *__libc_malloc(std::size_t size);

extern "C" void *malloc(std::size_t size) noexcept
{
    ++allocated;
    return __libc_malloc(size);
}
#endif

using namespace Qt::StringLiterals;

// What fuzz_conversions does not compare, and an example of each form.

namespace {

using Own = StringConversions;
using TextMap = QMap<QString, QString>;
using VersionMap = QMap<QString, QVersionNumber>;

/** Adds a row; null for @p expected means a null string, and not one that is only empty. */
void addWriting(const char *form, const QString &text, const char *expected)
{
    QTest::newRow(form) << text << QString::fromUtf8(expected);
}

} // namespace

class StringConversionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_data()
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
        addWriting(
            "last pointer", Own::ptrToString(reinterpret_cast<const void *>(~quintptr(0))), "0xffffffffffffffff");
        const QList<QKeySequence> keys = {QKeySequence(Qt::Key_Percent, Qt::Key_1), QKeySequence(Qt::Key_F2)};
        addWriting("shortcut", Own::qkeySequencesToAppendableString(keys), " (%, 1)");
        addWriting("no shortcut", Own::qkeySequencesToAppendableString({}), "");

        addWriting("pointf", Own::qpointfToString(QPointF(0.1, -0.0)), "0.10000000000000001 0");
        addWriting("pointf 3", Own::qpointfToString(QPointF(3.14159265, 1234567.0), 3), "3.14 1.23e+06");
        addWriting("pointf shortest", Own::qpointfToString(QPointF(0.1, -qInf()), -128), "0.1 -inf");
        addWriting("pointf ties", Own::qpointfToString(QPointF(0.125, 22.5), 2), "0.13 23");
        addWriting("pointf tie above a power of ten", Own::qpointfToString(QPointF(10000.5, 2.5), 5), "10001 2.5");
        addWriting("pointf greatest tie", Own::qpointfToString(QPointF(2.5e21, 1.5e22), 1), "3e+21 2e+22");
        addWriting("pointf least tie",
            Own::qpointfToString(QPointF(0x1p-25, 0x1.0000000000001p50)),
            "2.9802322387695313e-08 1125899906842624.3");
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
        const QString longKey(512, u'k'); // as long as the writer's buffer
        const TextMap longTexts = {{longKey, u"v"_s}, {longKey + u'k', {}}};
        addWriting(
            "map of long keys", Own::mapToString(longTexts), qPrintable(longKey + u" v | "_s + longKey + u"k "_s));
        addWriting("no map", Own::mapToString(TextMap()), nullptr);
        const VersionMap versions = {{u"ui"_s, QVersionNumber(2, 0)}, {u"core"_s, QVersionNumber(1, -2)}, {u"x"_s, {}}};
        addWriting("versions", Own::mapToString(versions), "core 1.-2 | ui 2.0 | x ");
        addWriting("no versions", Own::mapToString(VersionMap()), nullptr);
    }

    void writes()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, expected);
        QCOMPARE(text, expected);
        QCOMPARE(text.isNull(), expected.isNull());
    }

    void readsByDefault()
    {
        QCOMPARE(Own::stringToFloat(u"1.5e3e9"_s), 1500.0f);
        QCOMPARE(Own::stringToFloat(u"1.5\u00e9+3"_s, '\xe9'), 1500.0f);
        QCOMPARE(Own::stringToQPoint(u"~5 -6"_s), QPoint(0, -6));
        QCOMPARE(Own::stringToIntegerArray(QString()), std::vector<int>{0});
        QVERIFY(!Own::stringToQMatrix4x4Safe(u"1 2"_s).hasValue());
        // A general matrix, which a comparison cannot tell from the identity.
        const QString identity = Own::matrix4x4ToString(QMatrix4x4());
        QCOMPARE(int(Own::stringToQMatrix4x4Safe(identity).getValue().flags()), 0x1f);
        QCOMPARE(int(Own::stringToQMatrix4x4(identity).flags()), 0x1f);
        QCOMPARE(int(Own::stringToQMatrix4x4(u"1 2"_s).flags()), 0);
    }

    void allocatesTheResultAlone()
    {
        const auto expect = [](int allocations, const auto &read, const QString &text) {
            const int before = allocated;
            static_cast<void>(std::invoke(read, text));
            QVERIFY2(allocated == 0 || allocated - before == allocations, qPrintable(text));
        };
        const auto matrix = [](const QString &text) { return Own::stringToQMatrix4x4Safe(text, u';'); };
        expect(0, &Own::stringToQPoint, u"10 -20 30"_s);
        expect(0, &Own::stringToQPointF, u"1.5 -2.25e+10"_s);
        expect(0, &Own::stringToQSize, u"640 x 480"_s);
        expect(0, &Own::stringToQSizeF, u"0.5 nan"_s);
        expect(0, &Own::stringToRect, u"1,2,30,40"_s);
        expect(0, &Own::stringToVector2D, u"1.5 2.5"_s);
        expect(0, &Own::stringToVector3D, u"1.5 x 2.5"_s);
        expect(0, matrix, Own::matrix4x4ToString(QMatrix4x4(), u';'));
        expect(0, &Own::stringToQTransform, Own::transformToString(QTransform()));
        expect(1, &Own::stringToIntegerArray, u"7 "_s.repeated(99));
        // The map, and for each entry a node and a key.
        expect(5, &Own::stringToStringVersionMap, u"core 1.2.3 | ui 2.0"_s);
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

        QCOMPARE(Own::qpointfToString(QPointF(1234567.5, 0.125), 2), u"1.2e+06 0.13"_s);
        QCOMPARE(Own::integerArrayToString({1234567, -1}), u"1234567 -1"_s);
        QCOMPARE(Own::qpointfToString(Own::stringToQPointF(u"1234.5 1,5"_s)), u"1234.5 0"_s);
        QCOMPARE(Own::vector2DToString(Own::stringToVector2D(u"\u00a01.5 ١"_s)), u"1.5 0"_s);
    }
};

QTEST_GUILESS_MAIN(StringConversionsTest)
#include "tst_stringconversions.moc"
