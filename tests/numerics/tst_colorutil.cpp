#include <numerics/ColorUtil.h>

#include <QRgba64>
#include <QTest>

#include <array>
#include <cmath>
#include <limits>

class ColorUtilTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void interpolateMixesEachChannel();
    void interpolateOutsideTheRange();
    void packedInterpolateIgnoresAlpha();
    void makeDarkerColorLowersTheValueOnly();
    void makeDarkerColorByFraction_data();
    void makeDarkerColorByFraction();
    void makeDarkerColorOfOddColors_data();
    void makeDarkerColorOfOddColors();
    void packing();
};

namespace {
constexpr std::array steps = {0, 1, 51, 127, 128, 254, 255};
}

void ColorUtilTest::interpolateMixesEachChannel()
{
    for (const int a : steps) {
        for (const int b : steps) {
            // The shares are sixteenths, so the exact result in 16 bits a channel is a matter of integers.
            for (int share = 0; share <= 16; ++share) {
                const auto exact = [share](int first, int second) {
                    return 257.0 * (first * share + second * (16 - share)) / 16.0;
                };
                const QColor first(a, b, 255 - a, 255 - b);
                const QColor second(b, 77, a, 200);
                const QRgba64 mixed = ColorUtil::interpolate(first, second, share / 16.0).rgba64();
                QVERIFY(std::abs(mixed.red() - exact(a, b)) <= 1.0);
                QVERIFY(std::abs(mixed.green() - exact(b, 77)) <= 1.0);
                QVERIFY(std::abs(mixed.blue() - exact(255 - a, a)) <= 1.0);
                QVERIFY(std::abs(mixed.alpha() - exact(255 - b, 200)) <= 1.0);
            }
        }
    }
}

void ColorUtilTest::interpolateOutsideTheRange()
{
    const QColor bright(200, 100, 50, 128);
    const QColor dark(100, 100, 100, 128);
    const QColor extended = ColorUtil::interpolate(bright, dark, 2.0);
    QCOMPARE(extended.spec(), QColor::ExtendedRgb);
    QVERIFY(std::abs(extended.redF() - 300.0f / 255.0f) < 0.001f);
    QVERIFY(std::abs(extended.blueF()) < 0.001f);

    QTest::ignoreMessage(QtWarningMsg, "QColor::fromRgbF: Alpha parameter out of range");
    QVERIFY(!ColorUtil::interpolate(QColor(1, 2, 3, 255), QColor(1, 2, 3, 0), 1.5).isValid());
}

void ColorUtilTest::packedInterpolateIgnoresAlpha()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
    for (const double weight : {-1e9, -1.0, 0.0, 0.3, 1.0, 2.0, 1e17}) {
        const unsigned int opaque = ColorUtil::interpolate(0xFF102030u, 0xFF504030u, weight);
        QCOMPARE(opaque >> 24, 0xFFu);
        QCOMPARE(ColorUtil::interpolate(0x00102030u, 0x80504030u, weight), opaque);
        QCOMPARE(ColorUtil::interpolate(0xC0102030u, 0x00504030u, weight), opaque);
    }
    QCOMPARE(ColorUtil::interpolate(0x00102030u, 0x00504030u, 1.0), 0xFF102030u);
    QCOMPARE(ColorUtil::interpolate(0x00102030u, 0x00504030u, 0.0), 0xFF504030u);
    QCOMPARE(ColorUtil::interpolate(0x00100080u, 0x00500060u, 2.0), 0xFF0000A0u);
}

void ColorUtilTest::makeDarkerColorLowersTheValueOnly()
{
    for (const int hue : {-1, 0, 119, 359}) {
        for (const int value : steps) {
            for (const int amount :
                {std::numeric_limits<int>::min(), -1, 0, 1, 128, 255, std::numeric_limits<int>::max()}) {
                const QColor darker = ColorUtil::makeDarkerColor(QColor::fromHsv(hue, 90, value, 128), amount);
                const int taken = amount < 0 ? 0 : (amount > value ? value : amount);
                QCOMPARE(darker, QColor::fromHsv(hue, 90, value - taken, 128));
            }
        }
    }
}

void ColorUtilTest::makeDarkerColorByFraction_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<float>("fraction");
    QTest::addColumn<int>("darkerValue");

    QTest::newRow("amount 25.5 rounds up") << 255 << 0.1f << 229;
    QTest::newRow("the least share takes one") << 1 << 0.001f << 0;
    QTest::newRow("the least float takes one") << 255 << std::numeric_limits<float>::min() << 254;
    QTest::newRow("whole amount") << 200 << 0.5f << 100;
    QTest::newRow("none") << 200 << 0.0f << 200;
    QTest::newRow("all") << 200 << 1.0f << 0;
    QTest::newRow("more than all") << 200 << std::numeric_limits<float>::infinity() << 0;
    QTest::newRow("negative") << 200 << -0.5f << 200;
    QTest::newRow("not a number") << 200 << std::numeric_limits<float>::quiet_NaN() << 200;
}

void ColorUtilTest::makeDarkerColorByFraction()
{
    QFETCH(int, value);
    QFETCH(float, fraction);
    QFETCH(int, darkerValue);

    const QColor darker = ColorUtil::makeDarkerColor(QColor::fromHsv(240, 10, value, 77), fraction);
    QCOMPARE(darker, QColor::fromHsv(240, 10, darkerValue, 77));
}

void ColorUtilTest::makeDarkerColorOfOddColors_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("darker");

    QTest::newRow("invalid") << QColor() << QColor::fromHsv(0, 0, 0);
    QTest::newRow("grey in RGB") << QColor(150, 150, 150) << QColor::fromHsv(-1, 0, 50);
    QTest::newRow("CMYK") << QColor::fromCmyk(0, 255, 255, 0, 9) << QColor::fromHsv(0, 255, 155, 9);
    QTest::newRow("hue 360, HSV") << QColor::fromHsvF(1.0f, 1.0f, 1.0f) << QColor::fromHsv(0, 255, 155);
    QTest::newRow("hue 360, 16 bits") << QColor(QRgba64::fromRgba64(0xFFFF, 0, 1, 0xFFFF))
                                      << QColor::fromHsv(0, 255, 155);
    QTest::newRow("beyond white") << QColor::fromRgbF(2.0f, 2.0f, 2.0f) << QColor::fromHsv(-1, 0, 155);
}

void ColorUtilTest::makeDarkerColorOfOddColors()
{
    QFETCH(QColor, color);
    QFETCH(QColor, darker);

    QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
    QCOMPARE(ColorUtil::makeDarkerColor(color, 100), darker);
}

void ColorUtilTest::packing()
{
    QCOMPARE(ColorUtil::toAABBGGRR(QColor(0x11, 0x22, 0x33, 0x44), true), 0x44332211u);
    QCOMPARE(ColorUtil::toAABBGGRR(QColor(0x11, 0x22, 0x33, 0), false), 0xFF332211u);
    QCOMPARE(ColorUtil::toQColor(0x44332211u), QColor(0x11, 0x22, 0x33, 0x44));
    for (const unsigned int packed : {0u, 0x80u, 0xFFu << 24, 0xF0E1D2C3u, 0xFFFFFFFFu}) {
        QCOMPARE(ColorUtil::toAABBGGRR(ColorUtil::toQColor(packed), true), packed);
    }
}

QTEST_GUILESS_MAIN(ColorUtilTest)
#include "tst_colorutil.moc"
