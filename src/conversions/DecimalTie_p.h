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
 * Where a double lies exactly halfway between two texts of the wanted precision, Qt rounds away from zero and
 * std::to_chars() to the even digit; everywhere else both round to the nearest and agree. Such a tie is told from the
 * lowest bit that is set: a number whose lowest bit stands for 2^-n has exactly n decimals, and the last of them is
 * a 5.
 */
namespace DecimalTie {

/**
 * Returns n if the lowest bit set in @p number, finite, stands for 2^-n; n is negative for even numbers. For
 * what is smaller than a normal number, 0 too, some n beyond 1000 comes back: no wanted precision reaches down there.
 */
inline int lowestFractionBit(double number)
{
    static_assert(std::numeric_limits<double>::is_iec559, "the position of the lowest bit is read from the bits");
    quint64 bits;
    std::memcpy(&bits, &number, sizeof bits);
    constexpr int mantissaBits = std::numeric_limits<double>::digits - 1;
    constexpr quint64 leadingBit = quint64(1) << mantissaBits;
    const int exponent = static_cast<int>(bits >> mantissaBits & 0x7ff);
    const int unit = exponent - std::numeric_limits<double>::max_exponent + 1 - mantissaBits;
    return -(unit + static_cast<int>(qCountTrailingZeroBits(bits | leadingBit)));
}

/**
 * Tells whether @p number may be a tie at @p precision significant digits, from 1 to 17. A tie in the decade from 10^d
 * to 10^(d + 1) has its lowest bit at 2^-(precision - d). A true answer may err for whole numbers, a false one never.
 */
inline bool mayOccurAtDigit(double number, int precision)
{
    // In decades beyond these there is none. Further down its lowest bit would lie above the decade. Further up its
    // value, an odd multiple of 5^(d - precision + 1) * 2^(d - precision), would take more than 53 bits; only 1.5e22
    // at one digit would not, and that becomes 2e22 either way.
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

/** Tells whether @p number may be a tie in the format 'f' or 'g' at @p precision, from 0 to 17; "g" takes 0 for 1. */
inline bool mayOccur(double number, char format, int precision)
{
    return format == 'f' ? lowestFractionBit(number) == precision + 1 : mayOccurAtDigit(number, std::max(precision, 1));
}

} // namespace DecimalTie

#endif
