#include <numerics/ColorUtil.h>

#include <QRgba64>
#include <QTest>

#include <climits>
#include <cmath>

class ColorUtilTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void interpolatesColors()
    {
        const QColor first(200, 100, 0, 128);
        const QColor second(0, 20, 40, 64);
        const QColor reds[] = {QColor(1, 0, 0), QColor(26, 0, 0), QColor(QRgba64::fromRgba64(6040, 0, 0, 0xFFFF))};
        QCOMPARE(ColorUtil::interpolate(first, second, 1.0), first);
        QCOMPARE(ColorUtil::interpolate(first, second, 0.0), second);
        QCOMPARE(ColorUtil::interpolate(first, second, 0.25), QColor(50, 40, 30, 80));
        QCOMPARE(ColorUtil::interpolate(reds[0], reds[1], 0.1), reds[2]); // needs double precision
        QCOMPARE(ColorUtil::interpolate(reds[2], reds[2], 0.5), reds[2]); // needs 16 bits a channel
    }

    void interpolatesPackedColors()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        QCOMPARE(ColorUtil::interpolate(0xFF0064C8U, 0xFF281400U, 0.25), 0xFF1E2832U);
        QCOMPARE(ColorUtil::interpolate(0x00103080U, 0x00502060U, 1.0), 0xFF103080U);
        QCOMPARE(ColorUtil::interpolate(0x00103080U, 0x80502060U, 2.0), 0xFF0040A0U);
        QCOMPARE(ColorUtil::interpolate(0xC0000080U, 0x00000060U, 1e17), 0xFF0000FFU); // the weights' sum is not 1
        QCOMPARE(ColorUtil::interpolate(0xFF000000U, 0xFF000001U, 0.25), 0xFF000001U); // rounded, not truncated
        QCOMPARE(ColorUtil::interpolate(0xFF000000U, 0xFF00002DU, 0.3), 0xFF000020U); // not mixed as bytes
        QCOMPARE(ColorUtil::interpolate(0xFF000001U, 0xFF00001AU, 0.1), 0xFF000018U); // needs double precision
    }

    void interpolatesBeyondTheColors()
    {
        const QColor extended = ColorUtil::interpolate(QColor(200, 100, 50, 128), QColor(100, 100, 100, 128), 2.0);
        QCOMPARE(extended.spec(), QColor::ExtendedRgb);
        QCOMPARE(std::round(extended.redF() * 255), 300.0f);
        QVERIFY(!ColorUtil::interpolate(QColor(1, 2, 3, 255), QColor(1, 2, 3, 0), 1.5).isValid());
    }

    void makeDarkerColorByFraction()
    {
        const auto darken = [](int value, float fraction) {
            return ColorUtil::makeDarkerColor(QColor::fromHsv(240, 10, value), fraction).value();
        };
        QCOMPARE(darken(255, 0.1f), 229); // 25.5 rounds up
        QCOMPARE(darken(1, 0.001f), 0); // 0.001 rounds up
        QCOMPARE(darken(255, 0.2f), 204); // float precision: double gives 203
        QCOMPARE(darken(200, 0.0f), 200);
        QCOMPARE(darken(200, static_cast<float>(qInf())), 0);
        QCOMPARE(darken(200, -0.5f), 200);
        QCOMPARE(darken(200, static_cast<float>(qQNaN())), 200);
    }

    void makeDarkerColorOfUnusualColors()
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
        QCOMPARE(ColorUtil::makeDarkerColor(QColor(QRgba64::fromRgba64(0xFFFF, 0, 1, 0xFFFF)), 100), red); // hue 360
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
