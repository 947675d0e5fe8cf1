#include <numerics/ColorUtil.h>

#include <QRgba64>
#include <QTest>

#include <array>
#include <climits>
#include <cmath>
#include <limits>

namespace {
constexpr std::array steps = {0, 1, 51, 127, 128, 254, 255};
constexpr float infinity = std::numeric_limits<float>::infinity();
} // namespace

class ColorUtilTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void interpolateMixesEachChannel()
    {
        for (const int a : steps) {
            for (const int b : steps) {
                // The shares are sixteenths, so the exact result in 16 bits a channel is a matter of integers.
                for (int share = 0; share <= 16; ++share) {
                    const auto isMix = [share](int mixed, int first, int second) {
                        return std::abs(mixed * 16 - 257 * (first * share + second * (16 - share))) <= 16;
                    };
                    const QColor first(a, b, 255 - a, 255 - b);
                    const QRgba64 mixed = ColorUtil::interpolate(first, QColor(b, 77, a, 200), share / 16.0).rgba64();
                    QVERIFY(isMix(mixed.red(), a, b) && isMix(mixed.green(), b, 77));
                    QVERIFY(isMix(mixed.blue(), 255 - a, a) && isMix(mixed.alpha(), 255 - b, 200));
                }
            }
        }
    }

    void interpolateOutsideTheRange()
    {
        const QColor extended = ColorUtil::interpolate(QColor(200, 100, 50, 128), QColor(100, 100, 100, 128), 2.0);
        QCOMPARE(extended.spec(), QColor::ExtendedRgb);
        QVERIFY(std::abs(extended.redF() - 300.0f / 255.0f) < 0.001f);
        QTest::ignoreMessage(QtWarningMsg, "QColor::fromRgbF: Alpha parameter out of range");
        QVERIFY(!ColorUtil::interpolate(QColor(1, 2, 3, 255), QColor(1, 2, 3, 0), 1.5).isValid());

        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        for (const double weight : {-1.0, 0.3, 2.0, 1e17}) { // 1e17 and 1 - 1e17 do not add up to 1
            const unsigned int opaque = ColorUtil::interpolate(0xFF103080u, 0xFF502060u, weight);
            QCOMPARE(ColorUtil::interpolate(0xC0103080u, 0x00502060u, weight), opaque);
        }
        QCOMPARE(ColorUtil::interpolate(0x00103080u, 0x00502060u, 1.0), 0xFF103080u);
        QCOMPARE(ColorUtil::interpolate(0x00103080u, 0x80502060u, 2.0), 0xFF0040A0u);
    }

    void makeDarkerColorByFraction()
    {
        const auto darken = [](int value, float fraction) {
            return ColorUtil::makeDarkerColor(QColor::fromHsv(240, 10, value), fraction).value();
        };
        QCOMPARE(darken(255, 0.1f), 229); // 25.5 rounds up to 26
        QCOMPARE(darken(1, 0.001f), 0);
        QCOMPARE(darken(200, 0.5f), 100);
        QCOMPARE(darken(200, 0.0f), 200);
        QCOMPARE(darken(200, 1.0f), 0);
        QCOMPARE(darken(200, infinity), 0);
        QCOMPARE(darken(200, -infinity), 200);
        QCOMPARE(darken(200, std::numeric_limits<float>::quiet_NaN()), 200);
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
