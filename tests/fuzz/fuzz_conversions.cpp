// Aims at: src/conversions
#include "../../benchmarks/ReferenceConversions.h"
#include "Fuzz.h"

#include <conversions/StringConversions.h>

#include <algorithm>

// Numbers in texts and texts of numbers, against the sequence of calls to Qt.

using namespace Qt::StringLiterals;

namespace {

using Own = StringConversions;

QString makeNumber(Input &input)
{
    switch (input.below(4)) {
    case 0:
        return QString::number(input.integer<qint64>() >> input.below(64));
    case 1:
        return QString::number(input.real(), "gfe"[input.below(3)], input.below(22) - 1);
    default:
        QString jumble(input.oneIn(2) ? 2 : input.below(40), u'0');
        std::generate(jumble.begin(), jumble.end(), [&input] { return u"0123456789.-e+"[input.below(14)]; });
        return jumble;
    }
}

// Returns the bits of `value` in hexadecimal.
template <typename T>
QByteArray bits(const T &value)
{
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value).toHex();
}

// Returns what may be in a field: a number most of the time, or pieces that readers like to get wrong.
QString makeField(Input &input)
{
    static const QStringList pieces = QStringLiteral(
        "|\t|\u00a0|\u3000|\ufeff|\n|+|-|\u2212|+5|--5|0x10|0b1|010|1,000|1_000|1.|.5|.|1.e5|1e|e5|1E5|1e+5|1e-05|1e5."
        "0|1-2|\u0661\u0662|\uff11|\u0967|nan|-nan|inf|-inf|infinity|NaN|2147483647|-2147483648|2147483648|"
        "18446744073709551617|1e999|-1e999|1e-999|4.9e-324|2.4703282292062327e-324|3.4028235677973366e38|3.40282356e38|"
        "1e39|-1e-46|1.4e-45|0e999|1.00000017881393421514957253748434595763683319091796875001|-0|x|true|TRUE|1")
                                          .split(u'|');
    const QString number = makeNumber(input);
    return input.oneIn(8) ? input.text(pieces)
        : input.oneIn(3)  ? input.oneOf(pieces) + (input.oneIn(2) ? number : QString())
        : input.oneIn(8)  ? number + input.oneOf(pieces)
                          : number;
}

void checkReaders(Input &input)
{
    const QString text = makeField(input) + input.oneOf(u" e") + makeField(input);
    check("stringToIntegerArray", Own::stringToIntegerArray(text), reference::stringToIntegerArray(text), text);
    check("stringToFloat", bits(Own::stringToFloat(text, 'e')), bits(reference::stringToFloat(text, 'e')), text);
    check("stringToQPointF", bits(Own::stringToQPointF(text)), bits(reference::stringToQPointF(text)), text);
    check("stringToVector2D", bits(Own::stringToVector2D(text)), bits(reference::stringToVector2D(text)), text);
}

void checkWriters(Input &input)
{
    const int precision = input.oneIn(50) ? input.below(256) - 150 : input.below(21) - 1;
    const bool fixed = input.oneIn(2);
    const double a = input.real();
    const double b = input.real();
    const QList<double> values = {a, b, static_cast<double>(precision), static_cast<double>(fixed)};
    const auto vector = QVector2D(static_cast<float>(a), static_cast<float>(b));
    const QString expected = reference::qpointfToString({a, b}, precision);
    const QString expectedVector = reference::vector2DToString(vector, precision, fixed);
    check("qpointfToString", Own::qpointfToString({a, b}, precision), expected, values);
    check("vector2DToString", Own::vector2DToString(vector, precision, fixed), expectedVector, values);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    if (input.oneIn(3)) {
        checkWriters(input);
    } else {
        checkReaders(input);
    }
    return 0;
}
