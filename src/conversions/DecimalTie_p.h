#ifndef TARNWICK_CONVERSIONS_DECIMALTIE_P_H
#define TARNWICK_CONVERSIONS_DECIMALTIE_P_H

#include <QtAlgorithms>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>

/**
 * Recognises ties: numbers exactly halfway between two texts of the requested precision. Qt rounds a tie away from
 * zero, std::to_chars() to the even digit. They agree on all other numbers, which both round to the nearest text.
 *
 * A tie is recognised by its lowest set bit: a number whose lowest set bit has the value 2^-n has exactly n decimals,
 * and the last decimal is a 5.
 */
namespace DecimalTie {

/**
 * Returns n if the lowest set bit of @p number, which must be finite, has the value 2^-n. n is negative for even
 * numbers. Zero and subnormal numbers give an n above 1000, which no supported precision reaches.
 */
inline int lowestFractionBit(double number)
{
    static_assert(std::numeric_limits<double>::is_iec559, "the exponent is read from the bits of the number");
    quint64 bits;
    std::memcpy(&bits, &number, sizeof bits);
    constexpr int mantissaBits = std::numeric_limits<double>::digits - 1;
    constexpr quint64 leadingBit = Q_UINT64_C(1) << mantissaBits;
    const int exponent = static_cast<int>(bits >> mantissaBits & 0x7ff);
    const int unit = exponent - std::numeric_limits<double>::max_exponent + 1 - mantissaBits;
    return -(unit + static_cast<int>(qCountTrailingZeroBits(bits | leadingBit)));
}

/**
 * Returns whether @p number may be a tie at @p precision significant digits, which must be 1 to 17. The lowest set bit
 * of a tie between 10^d and 10^(d + 1) has the value 2^-(precision - d). May return true for a whole number that is no
 * tie; never returns false for a tie.
 */
inline bool mayOccurAtDigit(double number, int precision)
{
    // There are no ties outside these decades. Below them, the lowest set bit would be greater than the number. Above
    // them, a tie is an odd multiple of 5^(d - precision + 1) * 2^(d - precision) and needs more than 53 bits. The only
    // exception is 1.5e22 at one digit, which both functions round to 2e22.
    // clang-format off
    constexpr std::array tens = {
        1e-8, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 1e-1,
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11,
        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    // clang-format on
    constexpr int lowest = -8;
    constexpr int highest = 21;
    const int decade = precision - lowestFractionBit(number);
    if (decade < lowest || decade > highest) {
        return false;
    }
    const double magnitude = std::abs(number);
    const auto index = static_cast<std::size_t>(decade - lowest);
    return magnitude >= tens[index] && magnitude < tens[index + 1];
}

/** Returns whether @p number may be a tie in format 'f' or 'g' at a @p precision of 0 to 17. In 'g', 0 counts as 1. */
inline bool mayOccur(double number, char format, int precision)
{
    return format == 'f' ? lowestFractionBit(number) == precision + 1 : mayOccurAtDigit(number, std::max(precision, 1));
}

} // namespace DecimalTie

#endif
