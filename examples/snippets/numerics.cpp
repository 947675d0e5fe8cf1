// Digits in other bases, of any length, and colours.

//! [example]
#include <numerics/BaseConverter.h>
#include <numerics/ColorUtil.h>

#include <QString>
#include <QTextStream>

int main()
{
    QTextStream out(stdout);

    // The largest number of 128 bits.
    const BaseConverter &toHex = BaseConverter::getDecimalToHexConverter();
    const QString hex = toHex.convert(QStringLiteral("340282366920938463463374607431768211455"));
    out << hex << '\n' << BaseConverter::getHexToDecimalConverter().convert(hex) << '\n';

    // The weight is the share of the first colour.
    out << ColorUtil::interpolate(QColor(Qt::red), QColor(Qt::blue), 0.25).name() << '\n';
    out << ColorUtil::makeDarkerColor(QColor(Qt::green), 0.5F).name() << '\n';

    // Red is the lowest byte, alpha the highest.
    const unsigned int packed = ColorUtil::toAABBGGRR(QColor(0x11, 0x22, 0x33, 0x44), true);
    out << QString::number(packed, 16) << '\n' << ColorUtil::toQColor(packed).name(QColor::HexArgb) << '\n';
}
//! [example]
