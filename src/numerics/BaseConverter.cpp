#include "BaseConverter.h"

#include <QVarLengthArray>
#include <QtGlobal>

#include <array>
#include <cstddef>

namespace {

using Limb = quint64;
using Limbs = QVarLengthArray<Limb, 16>; // a number in base 2^64 or 10^19: least limb first, no leading zeros

constexpr int limbBits = 64;
constexpr Limb chunkBase = Q_UINT64_C(10000000000000000000); // 10^19; divide() requires that its top bit is set

struct WideLimb
{
    Limb high;
    Limb low;
};

// Returns a * b + c, which always fits into two limbs.
WideLimb multiplyAdd(Limb a, Limb b, Limb c)
{
#if defined(__SIZEOF_INT128__) && !defined(TARNWICK_NO_INT128) // a test of the fallback defines the latter
    __extension__ using Wide = unsigned __int128;
    const Wide result = static_cast<Wide>(a) * b + c;
    return {static_cast<Limb>(result >> limbBits), static_cast<Limb>(result)};
#else
    constexpr Limb lowHalf = 0xFFFFFFFF;
    const Limb low = (a & lowHalf) * (b & lowHalf) + (c & lowHalf);
    const Limb middle = (a >> 32) * (b & lowHalf) + (low >> 32) + (c >> 32);
    const Limb otherMiddle = (a & lowHalf) * (b >> 32) + (middle & lowHalf);
    return {(a >> 32) * (b >> 32) + (middle >> 32) + (otherMiddle >> 32), (otherMiddle << 32) | (low & lowHalf)};
#endif
}

// Divides remainder * 2^64 + limb by 10^19, where remainder is less than 10^19. Returns the quotient and updates the
// remainder. The estimate by the reciprocal is off by at most one: Moeller and Granlund, Improved division by invariant
// integers (2011), algorithm 4.
Limb divide(Limb &remainder, Limb limb)
{
    constexpr Limb reciprocal = Q_UINT64_C(0xD83C94FB6D2AC34A); // floor((2^128 - 1) / 10^19) - 2^64
    const WideLimb product = multiplyAdd(reciprocal, remainder, limb);
    Limb quotient = product.high + remainder + 1;
    Limb rest = limb - quotient * chunkBase;
    if (rest > product.low) {
        --quotient;
        rest += chunkBase;
    }
    if (rest >= chunkBase) {
        ++quotient;
        rest -= chunkBase;
    }
    remainder = rest;
    return quotient;
}

using DigitValues = std::array<quint8, 256>;

// Returns the digit value of each byte, independent of case and locale; 0 for bytes that are no digits.
DigitValues getDigitValues(const std::string &baseSet)
{
    DigitValues values = {};
    for (std::size_t i = 0; i < baseSet.size(); ++i) {
        const auto digit = static_cast<unsigned char>(baseSet[i]);
        values[digit] = static_cast<quint8>(i);
        values[digit | 0x20] = static_cast<quint8>(i); // lower case in ASCII; the digits 0 to 9 have this bit already
    }
    return values;
}

// Returns the number of digits in a limb: 64 bits of binary or hexadecimal digits, or as many decimal digits as fit.
constexpr std::size_t getChunkDigits(std::size_t base)
{
    return base == 2 ? 64 : base == 16 ? 16 : 19;
}

void removeLeadingZeros(Limbs &number)
{
    while (!number.isEmpty() && number.last() == 0) {
        number.removeLast();
    }
}

// Reads the digits into limbs of base 2^64, or of base 10^19 if they are decimal.
Limbs readChunks(const std::string &value, const std::string &baseSet)
{
    const DigitValues values = getDigitValues(baseSet);
    const Limb base = baseSet.size();
    const std::size_t chunkDigits = getChunkDigits(baseSet.size());
    Limbs chunks(static_cast<qsizetype>((value.size() + chunkDigits - 1) / chunkDigits));
    const char *begin = value.data();
    for (auto i = static_cast<std::size_t>(chunks.size()); i-- > 0;) {
        Limb chunk = 0;
        for (const char *const end = value.data() + value.size() - i * chunkDigits; begin != end; ++begin) {
            chunk = chunk * base + values[static_cast<unsigned char>(*begin)];
        }
        chunks[static_cast<qsizetype>(i)] = chunk;
    }
    removeLeadingZeros(chunks);
    return chunks;
}

// Writes limbs as digits. The base is a template parameter, since division by a constant is cheaper.
template <std::size_t Base>
std::string writeChunks(const Limbs &chunks, const std::string &baseSet)
{
    constexpr std::size_t chunkDigits = getChunkDigits(Base);
    if (chunks.isEmpty()) {
        return baseSet.substr(0, 1);
    }
    std::string text(static_cast<std::size_t>(chunks.size()) * chunkDigits, baseSet.front());
    char *end = text.data() + text.size();
    for (const Limb chunk : chunks) {
        char *digit = end;
        Limb rest = chunk;
        // Two digits per division: each division depends on the previous one.
        for (; rest >= Base; rest /= Base * Base) {
            *--digit = baseSet[rest % Base];
            *--digit = baseSet[rest / Base % Base];
        }
        if (rest != 0) {
            *--digit = baseSet[rest];
        }
        end -= chunkDigits;
    }
    return text.erase(0, text.find_first_not_of(baseSet.front()));
}

// Converts from base 10^19 to base 2^64.
Limbs toBinary(const Limbs &chunks)
{
    Limbs number;
    for (qsizetype i = chunks.size(); i-- > 0;) {
        Limb carry = chunks[i];
        for (Limb &limb : number) {
            const WideLimb product = multiplyAdd(limb, chunkBase, carry);
            limb = product.low;
            carry = product.high;
        }
        if (carry != 0) {
            number.append(carry);
        }
    }
    return number;
}

// Converts from base 2^64 to base 10^19.
Limbs toDecimal(Limbs number)
{
    Limbs chunks;
    while (!number.isEmpty()) {
        Limb remainder = 0;
        for (qsizetype i = number.size(); i-- > 0;) {
            number[i] = divide(remainder, number[i]);
        }
        chunks.append(remainder);
        removeLeadingZeros(number);
    }
    return chunks;
}

} // namespace

const BaseConverter &BaseConverter::getBinaryToDecimalConverter()
{
    static const BaseConverter converter("01", "0123456789");
    return converter;
}

const BaseConverter &BaseConverter::getDecimalToBinaryConverter()
{
    static const BaseConverter converter("0123456789", "01");
    return converter;
}

const BaseConverter &BaseConverter::getDecimalToHexConverter()
{
    static const BaseConverter converter("0123456789", "0123456789ABCDEF");
    return converter;
}

const BaseConverter &BaseConverter::getHexToDecimalConverter()
{
    static const BaseConverter converter("0123456789ABCDEF", "0123456789");
    return converter;
}

BaseConverter::BaseConverter(const std::string &sourceBaseSet, const std::string &targetBaseSet)
    : sourceBaseSet(sourceBaseSet)
    , targetBaseSet(targetBaseSet)
{
}

std::string BaseConverter::convert(const std::string &value) const
{
    // One alphabet of each converter is decimal; the base of the other is a power of two.
    const Limbs chunks = readChunks(value, sourceBaseSet);
    switch (getTargetBase()) {
    case 2:
        return writeChunks<2>(toBinary(chunks), targetBaseSet);
    case 16:
        return writeChunks<16>(toBinary(chunks), targetBaseSet);
    default:
        return writeChunks<10>(toDecimal(chunks), targetBaseSet);
    }
}

QString BaseConverter::convert(const QString &value) const
{
    return QString::fromStdString(convert(value.toStdString()));
}

unsigned int BaseConverter::getSourceBase() const
{
    return static_cast<unsigned int>(sourceBaseSet.size());
}

unsigned int BaseConverter::getTargetBase() const
{
    return static_cast<unsigned int>(targetBaseSet.size());
}

std::string BaseConverter::getSourceBaseSet() const
{
    return sourceBaseSet;
}

std::string BaseConverter::getTargetBaseSet() const
{
    return targetBaseSet;
}
