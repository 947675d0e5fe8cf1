// Aims at: src/conversions
#include "../../benchmarks/ReferenceConversions.h"
#include "Fuzz.h"

#include <conversions/StringConversions.h>

#include <QDataStream>

#include <algorithm>
#include <functional>

// Readers and writers of all forms, against the sequence of calls to Qt; values by their bits.

using namespace Qt::StringLiterals;

namespace {

using Own = StringConversions;
using Form = std::function<void(Input &)>;

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

/** Returns what may stand in a field: a number most of the time, or pieces that readers like to get wrong. */
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

/** Returns a text of fields, often as many as @p wanted, with a separator too many now and then. */
QString makeText(Input &input, QChar separator, int wanted)
{
    QString text = makeField(input);
    for (int count = input.oneIn(4) ? input.below(wanted + 3) : wanted - 1; count > 0; --count) {
        text += QString(input.oneIn(20) ? 2 : 1, separator) + makeField(input);
    }
    return text;
}

/** Shows a value and its bits. */
template <typename T>
QString show(const T &value)
{
    QByteArray bits;
    QDataStream stream(&bits, QDataStream::WriteOnly);
    stream << value;
    return QDebug::toString(value) + u", bits "_s + QString::fromLatin1(bits.toHex());
}

QString show(const std::vector<int> &values)
{
    return QDebug::toString(values);
}

template <typename OwnRead, typename ReferenceRead>
Form reader(const char *function, QChar separator, int wanted, OwnRead own, ReferenceRead reference)
{
    return [=](Input &input) {
        const QString text = makeText(input, separator, wanted);
        check(function, show(own(text)), show(reference(text)), text);
    };
}

void checkIntegerWriters(Input &input)
{
    std::vector<int> values(std::size_t(input.below(100)));
    std::generate(values.begin(), values.end(), [&input] { return input.integer<int>() >> input.below(32); });
    const QString expected = reference::toString(values.data(), int(values.size()));
    check("integerArrayToString", Own::integerArrayToString(values), expected);
}

void checkRealWriters(Input &input)
{
    const int precision = input.oneIn(50) ? input.below(256) - 150 : input.below(21) - 1;
    const bool fixed = input.oneIn(2);
    const double a = input.real();
    const double b = input.real();
    const QList<double> values = {a, b, double(precision), double(fixed)};
    const auto [x, y] = std::pair(float(a), float(b));
    const std::vector<QPointF> path(std::size_t(input.below(8)), QPointF(a, b));
    const QVector3D vector(x, y, -x);
    check("qpointfToString",
        Own::qpointfToString({a, b}, precision),
        reference::qpointfToString({a, b}, precision),
        values);
    check("qpointfVectorToString",
        Own::qpointfVectorToString(path, precision),
        reference::qpointfVectorToString(path, precision),
        values);
    check("vector3DToString",
        Own::vector3DToString(vector, precision, fixed),
        reference::vector3DToString(vector, precision, fixed),
        values);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const auto readFloat = [](const QString &text) { return Own::stringToFloat(text, 'e'); };
    static const auto readFloatByReference = [](const QString &text) { return reference::stringToFloat(text, 'e'); };
    static const Form forms[] = {&checkIntegerWriters,
        &checkRealWriters,
        reader("stringToFloat", u'e', 2, readFloat, readFloatByReference),
        reader("stringToIntegerArray", u' ', 8, &Own::stringToIntegerArray, &reference::stringToIntegerArray),
        reader("stringToQPointF", u' ', 2, &Own::stringToQPointF, &reference::stringToQPointF),
        reader("stringToQSize", u' ', 2, &Own::stringToQSize, &reference::stringToQSize),
        reader("stringToVector3D", u' ', 3, &Own::stringToVector3D, &reference::stringToVector3D)};
    Input input(data, size);
    input.oneOf(forms)(input);
    return 0;
}
