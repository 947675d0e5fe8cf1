#include <numerics/ColorUtil.h>

#include <QRgba64>
#include <QTest>

#include <climits>
#include <cmath>
#include <limits>

namespace {
constexpr float infinity = std::numeric_limits<float>::infinity();
} // namespace

class ColorUtilTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void interpolatesColors_data()
    {
        QTest::addColumn<QColor>("first");
        QTest::addColumn<QColor>("second");
        QTest::addColumn<double>("weight");
        QTest::addColumn<QColor>("expected");
        const QColor first(200, 100, 0, 128);
        const QColor second(0, 20, 40, 64);
        QTest::newRow("first only") << first << second << 1.0 << first;
        QTest::newRow("second only") << first << second << 0.0 << second;
        QTest::newRow("quarter of the first") << first << second << 0.25 << QColor(50, 40, 30, 80);
        QTest::newRow("in double") << QColor(1, 0, 0) << QColor(26, 0, 0) << 0.1
                                   << QColor(QRgba64::fromRgba64(6040, 0, 0, 0xFFFF));
    }
    void interpolatesColors()
    {
        QFETCH(QColor, first);
        QFETCH(QColor, second);
        QFETCH(double, weight);
        QTEST(ColorUtil::interpolate(first, second, weight), "expected");
    }

    void interpolatesPackedColors_data()
    {
        QTest::addColumn<unsigned int>("first");
        QTest::addColumn<unsigned int>("second");
        QTest::addColumn<double>("weight");
        QTest::addColumn<unsigned int>("expected");
        QTest::newRow("quarter of the first") << 0xFF0064C8U << 0xFF281400U << 0.25 << 0xFF1E2832U;
        QTest::newRow("transparent") << 0x00103080U << 0x00502060U << 1.0 << 0xFF103080U;
        QTest::newRow("twice the first") << 0x00103080U << 0x80502060U << 2.0 << 0xFF0040A0U;
        QTest::newRow("weights that do not add up to 1") << 0xC0000080U << 0x00000060U << 1e17 << 0xFF0000FFU;
        QTest::newRow("no truncation") << 0xFF000000U << 0xFF000001U << 0.25 << 0xFF000001U;
        QTest::newRow("no mixing of bytes") << 0xFF000000U << 0xFF00002DU << 0.3 << 0xFF000020U;
        QTest::newRow("in double") << 0xFF000001U << 0xFF00001AU << 0.1 << 0xFF000018U;
    }
    void interpolatesPackedColors()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        QFETCH(unsigned int, first);
        QFETCH(unsigned int, second);
        QFETCH(double, weight);
        QTEST(ColorUtil::interpolate(first, second, weight), "expected");
    }

    void interpolatesBeyondTheColors()
    {
        const QColor extended = ColorUtil::interpolate(QColor(200, 100, 50, 128), QColor(100, 100, 100, 128), 2.0);
        QCOMPARE(extended.spec(), QColor::ExtendedRgb);
        QCOMPARE(std::round(extended.redF() * 255), 300.0f);
        QVERIFY(!ColorUtil::interpolate(QColor(1, 2, 3, 255), QColor(1, 2, 3, 0), 1.5).isValid());
    }

    void makeDarkerColorByFraction_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<float>("fraction");
        QTest::addColumn<int>("expected");
        QTest::newRow("25.5 rounds up") << 255 << 0.1f << 229;
        QTest::newRow("0.001 rounds up") << 1 << 0.001f << 0;
        QTest::newRow("in float") << 255 << 0.2f << 204;
        QTest::newRow("half") << 200 << 0.5f << 100;
        QTest::newRow("nothing") << 200 << 0.0f << 200;
        QTest::newRow("all") << 200 << 1.0f << 0;
        QTest::newRow("infinite") << 200 << infinity << 0;
        QTest::newRow("negative") << 200 << -0.5f << 200;
        QTest::newRow("not a number") << 200 << std::numeric_limits<float>::quiet_NaN() << 200;
    }
    void makeDarkerColorByFraction()
    {
        QFETCH(int, value);
        QFETCH(float, fraction);
        QTEST(ColorUtil::makeDarkerColor(QColor::fromHsv(240, 10, value), fraction).value(), "expected");
    }

    void makeDarkerColorOfOddColors()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        const QColor red = QColor::fromHsv(0, 255, 155);
        for (const int amount : {INT_MIN, 0, 155, 156, INT_MAX}) {
            const QColor half = QColor::fromHsv(359, 90, 155, 128);
            QCOMPARE(ColorUtil::makeDarkerColor(half, amount), QColor::fromHsv(359, 90, amount <= 0 ? 155 : 0, 128));
        }
        QCOMPARE(ColorUtil::makeDarkerColor(QColor(), 100), QColor::fromHsv(0, 0, 0));
        QCOMPARE(ColorUtil::makeDarkerColor(QColor(150, 150, 150), 100), QColor::fromHsv(-1, 0, 50));
        QCOMPARE(ColorUtil::makeDarkerColor(QColor::fromCmyk(0, 255, 255, 0), 100), red);
        QCOMPARE(ColorUtil::makeDarkerColor(QColor::fromHsvF(1.0f, 1.0f, 1.0f), 100), red); // its hue reads 360
        QCOMPARE(ColorUtil::makeDarkerColor(QColor(QRgba64::fromRgba64(0xFFFF, 0, 1, 0xFFFF)), 100), red); // and this
    }

    void packing()
    {
        QCOMPARE(ColorUtil::toAABBGGRR(QColor(0x11, 0x22, 0x33, 0x44), true), 0x44332211u);
        QCOMPARE(ColorUtil::toAABBGGRR(QColor(0x11, 0x22, 0x33, 0), false), 0xFF332211u);
        QCOMPARE(ColorUtil::toQColor(0xF4332211u), QColor(0x11, 0x22, 0x33, 0xF4));
    }
};

QTEST_GUILESS_MAIN(ColorUtilTest)
#include "tst_colorutil.moc"
