#ifndef TARNWICK_CONVERSIONS_NUMBERREADER_P_H
#define TARNWICK_CONVERSIONS_NUMBERREADER_P_H

#include <QStringView>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

/**
 * Numbers read as Qt's QStringView::toInt(), toDouble() and toFloat() read them, only faster: what is written in the
 * usual way is read here, and whatever else a text may hold is left to Qt. A field that is no number gives 0.
 */
namespace NumberReader {

/**
 * Reads an optional "-" and the digits behind it from [first, last) into @p number.
 *
 * @return what follows the digits, or @p first if there is none or the number may not fit
 */
inline const QChar *scanInt(const QChar *first, const QChar *last, int &number)
{
    const bool negative = first != last && *first == u'-';
    const QChar *const digits = negative ? first + 1 : first;
    const QChar *end = digits;
    quint64 magnitude = 0; // goes astray, without harm, for more digits than are taken
    for (; end != last && *end >= u'0' && *end <= u'9'; ++end) {
        magnitude = magnitude * 10 + (end->unicode() - u'0');
    }
    const auto count = end - digits;
    constexpr auto greatest = static_cast<quint64>(std::numeric_limits<int>::max());
    if (count == 0 || count > std::numeric_limits<int>::digits10 + 1 || magnitude > greatest) {
        return first;
    }
    number = negative ? -static_cast<int>(magnitude) : static_cast<int>(magnitude);
    return end;
}

/** Reads a field as a decimal number. */
inline int readInt(QStringView field)
{
    int number = 0;
    const bool isRead = !field.isEmpty() && scanInt(field.begin(), field.end(), number) == field.end();
    return isRead ? number : field.toInt(nullptr, 10);
}

/** Reads the field that starts at @p position as readInt() does and moves @p position to its end. */
inline int readIntUpTo(QChar separator, const QChar *&position, const QChar *last)
{
    const QChar *const first = position;
    int number = 0;
    position = scanInt(first, last, number);
    if (position != first && (position == last || *position == separator)) {
        return number;
    }
    position = std::find(position, last, separator);
    return QStringView(first, position).toInt(nullptr, 10);
}

/** Tells whether std::from_chars() and Qt mean the same by @p character: Qt also takes blanks, "inf" and more signs. */
inline bool isPlain(QChar character)
{
    return (character >= u'0' && character <= u'9') || character == u'.' || character == u'-' || character == u'+'
        || character == u'e';
}

/**
 * Reads a field of plain characters by std::from_chars(), which rounds to the nearest double as Qt does. What it does
 * not use up, or cannot represent, is left to Qt, and so is every number where the standard library lacks the function.
 */
inline double readDouble(QStringView field)
{
#ifdef __cpp_lib_to_chars
    std::array<char, 64> plain;
    if (field.size() <= static_cast<qsizetype>(plain.size())) {
        char *end = plain.data();
        for (const QChar character : field) {
            if (!isPlain(character)) {
                return field.toDouble();
            }
            *end++ = static_cast<char>(character.unicode());
        }
        double number = 0;
        const auto [used, error] = std::from_chars(plain.data(), end, number);
        if (used == end && error == std::errc()) {
            return number;
        }
    }
#endif
    return field.toDouble();
}

/**
 * Reads a double and narrows it, rounding twice as Qt does; a float read directly may differ in its last bit. Numbers
 * that leave the range of float are left to Qt, which has its own rules for them.
 */
inline float readFloat(QStringView field)
{
    const double number = readDouble(field);
    const bool leavesRange =
        !(std::abs(number) <= std::numeric_limits<float>::max()) || (number != 0 && static_cast<float>(number) == 0);
    return leavesRange ? field.toFloat() : static_cast<float>(number);
}

} // namespace NumberReader

#endif
