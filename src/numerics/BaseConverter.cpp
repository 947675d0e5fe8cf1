#include "BaseConverter.h"

#include <QVarLengthArray>

#include <algorithm>
#include <array>

namespace {
using Limb = quint64;
using Limbs = QVarLengthArray<Limb, 16>; // a number in base 2^64 or 10^19, the lowest first, without zeros on top

constexpr int LIMB_BITS = 64;
constexpr Limb CHUNK_BASE = Q_UINT64_C(10000000000000000000); // 10^19; its top bit is set, as divide() demands

struct WideLimb
{
    Limb high;
    Limb low;
};

// a * b + c, which always fits.
WideLimb multiplyAdd(Limb a, Limb b, Limb c)
{
#ifdef __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    const Wide result = Wide(a) * b + c;
    return {Limb(result >> LIMB_BITS), Limb(result)};
#else
    const Limb half = 0xFFFFFFFF;
    const Limb low = (a & half) * (b & half) + (c & half);
    const Limb middle = (a >> 32) * (b & half) + (low >> 32) + (c >> 32);
    const Limb otherMiddle = (a & half) * (b >> 32) + (middle & half);
    return {(a >> 32) * (b >> 32) + (middle >> 32) + (otherMiddle >> 32), (otherMiddle << 32) | (low & half)};
#endif
}

// Divides remainder * 2^64 + limb by 10^19, with a remainder below 10^19: returns the quotient and updates the
// remainder. After Moeller and Granlund, Improved division by invariant integers (2011), algorithm 4: what
// the multiplication by the reciprocal gives is off by one at most.
Limb divide(Limb &remainder, Limb limb)
{
    constexpr Limb reciprocal = Q_UINT64_C(0xD83C94FB6D2AC34A); // floor((2^128 - 1) / 10^19) - 2^64
    const WideLimb product = multiplyAdd(reciprocal, remainder, limb);
    Limb quotient = product.high + remainder + 1;
    Limb rest = limb - quotient * CHUNK_BASE;
    if (rest > product.low) {
        --quotient;
        rest += CHUNK_BASE;
    }
    if (rest >= CHUNK_BASE) {
        ++quotient;
        rest -= CHUNK_BASE;
    }
    remainder = rest;
    return quotient;
}

using DigitValues = std::array<quint8, 256>;

// The value of each byte as a digit, in either case and whatever the locale; 0 for what is none.
DigitValues getDigitValues(const std::string &baseSet)
{
    DigitValues values = {};
    for (size_t i = 0; i < baseSet.size(); ++i) {
        const auto digit = static_cast<unsigned char>(baseSet[i]);
        values[digit] = quint8(i);
        values[digit | 0x20] = quint8(i); // lower case in ASCII, where the digits 0 to 9 have this bit anyway
    }
    return values;
}

// How many digits make up one limb: 64 bits of binary and hexadecimal ones, and the most decimal ones that fit.
constexpr size_t getChunkDigits(size_t base)
{
    return base == 2 ? 64 : base == 16 ? 16 : 19;
}

void removeLeadingZeros(Limbs &number)
{
    while (!number.isEmpty() && number.last() == 0) {
        number.removeLast();
    }
}

// Reads a number in the base of one limb's digits: 2^64, or 10^19 for decimal ones.
Limbs readChunks(const std::string &value, const std::string &baseSet)
{
    const DigitValues values = getDigitValues(baseSet);
    const Limb base = baseSet.size();
    const size_t chunkDigits = getChunkDigits(baseSet.size());
    Limbs chunks((qsizetype(value.size() + chunkDigits - 1) / qsizetype(chunkDigits)));
    const char *begin = value.data();
    for (size_t i = size_t(chunks.size()); i-- > 0;) {
        Limb chunk = 0;
        for (const char *const end = value.data() + value.size() - i * chunkDigits; begin != end; ++begin) {
            chunk = chunk * base + values[static_cast<unsigned char>(*begin)];
        }
        chunks[qsizetype(i)] = chunk;
    }
    removeLeadingZeros(chunks);
    return chunks;
}

// Writes a number in the base of one limb's digits. The base is a constant so that dividing by it is cheap.
template <size_t base>
std::string writeChunks(const Limbs &chunks, const std::string &baseSet)
{
    constexpr size_t chunkDigits = getChunkDigits(base);
    if (chunks.isEmpty()) {
        return baseSet.substr(0, 1);
    }
    std::string text(size_t(chunks.size()) * chunkDigits, baseSet.front());
    char *end = text.data() + text.size();
    for (const Limb chunk : chunks) {
        char *digit = end;
        Limb rest = chunk;
        for (; rest >= base; rest /= base * base) { // by pairs, since one division has to wait for the other
            *--digit = baseSet[rest % base];
            *--digit = baseSet[rest / base % base];
        }
        if (rest != 0) {
            *--digit = baseSet[rest];
        }
        end -= chunkDigits;
    }
    return text.erase(0, text.find_first_not_of(baseSet.front()));
}

// From base 10^19 to base 2^64.
Limbs toBinary(const Limbs &chunks)
{
    Limbs number;
    for (qsizetype i = chunks.size(); i-- > 0;) {
        Limb carry = chunks[i];
        for (Limb &limb : number) {
            const WideLimb product = multiplyAdd(limb, CHUNK_BASE, carry);
            limb = product.low;
            carry = product.high;
        }
        if (carry != 0) {
            number.append(carry);
        }
    }
    return number;
}

// From base 2^64 to base 10^19.
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
    // Every converter has decimal digits on one side, and those of a power of two on the other.
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
