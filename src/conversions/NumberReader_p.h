#ifndef TARNWICK_CONVERSIONS_NUMBERREADER_P_H
#define TARNWICK_CONVERSIONS_NUMBERREADER_P_H

#include <QChar>
#include <QStringView>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

/**
 * Faster equivalents of QStringView::toInt(), toDouble() and toFloat(). Numbers in the usual notation are read here;
 * all other fields are passed to Qt. A field that is not a number reads as 0.
 */
namespace NumberReader {

/**
 * Reads an optional "-" and the digits after it from [first, last) into @p number.
 *
 * @return the end of the digits, or @p first if there are no digits or the number may not fit into an int
 */
inline const QChar *scanInt(const QChar *first, const QChar *last, int &number)
{
    const bool negative = first != last && *first == u'-';
    const QChar *const digits = negative ? first + 1 : first;
    const QChar *end = digits;
    quint64 magnitude = 0; // may wrap around; too many digits are rejected below
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

/** Reads @p field as a decimal integer. */
inline int readInt(QStringView field)
{
    int number = 0;
    const bool isRead = !field.isEmpty() && scanInt(field.begin(), field.end(), number) == field.end();
    return isRead ? number : field.toInt(nullptr, 10);
}

/** Reads the field at @p position like readInt() and moves @p position to the end of the field. */
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

/** Returns whether std::from_chars() and Qt agree on @p character. Qt also accepts white space, "inf" and "nan". */
inline bool isCommon(QChar character)
{
    return (character >= u'0' && character <= u'9') || character == u'.' || character == u'-' || character == u'+'
        || character == u'e';
}

/**
 * Reads @p field with std::from_chars(), which rounds to the nearest double. So does Qt in the processor's default
 * rounding mode. Fields that std::from_chars() does not read completely, and numbers out of range, are passed to Qt. If
 * the standard library lacks the function, every field is passed to Qt.
 */
inline double readDouble(QStringView field)
{
#ifdef __cpp_lib_to_chars
    std::array<char, 64> ascii;
    if (field.size() <= static_cast<qsizetype>(ascii.size())) {
        char *end = ascii.data();
        for (const QChar character : field) {
            if (!isCommon(character)) {
                return field.toDouble();
            }
            *end++ = static_cast<char>(character.unicode());
        }
        double number = 0;
        const auto [used, error] = std::from_chars(ascii.data(), end, number);
        if (used == end && error == std::errc()) {
            return number;
        }
    }
#endif
    return field.toDouble();
}

/**
 * Reads @p field as a double and narrows it, as Qt does. Reading a float directly rounds only once and may differ in
 * the last bit. Numbers outside the range of float are passed to Qt, which has its own rules for them.
 */
inline float readFloat(QStringView field)
{
    const double number = readDouble(field);
    const bool isOutOfRange =
        !(std::abs(number) <= std::numeric_limits<float>::max()) || (number != 0 && static_cast<float>(number) == 0);
    return isOutOfRange ? field.toFloat() : static_cast<float>(number);
}

} // namespace NumberReader

#endif
