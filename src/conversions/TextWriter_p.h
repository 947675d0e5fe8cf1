#ifndef TARNWICK_CONVERSIONS_TEXTWRITER_P_H
#define TARNWICK_CONVERSIONS_TEXTWRITER_P_H

#include "DecimalTie_p.h"

#include <QChar>
#include <QString>
#include <QStringView>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>
#include <utility>

/**
 * @brief Assembles a text from numbers and other texts. A short text takes one allocation.
 *
 * Collects characters in a buffer of fixed size. A full buffer is appended to a string, whose capacity grows by a
 * constant factor, so the total time is linear.
 */
class TextWriter
{
public:
    void append(char16_t character)
    {
        if (used == buffer.size()) {
            flush();
        }
        buffer[used++] = character;
    }

    void append(QStringView part)
    {
        if (static_cast<std::size_t>(part.size()) > buffer.size() - used) {
            flush();
        }
        if (static_cast<std::size_t>(part.size()) > buffer.size()) {
            text.append(part);
            return;
        }
        std::copy_n(part.utf16(), part.size(), buffer.data() + used);
        used += static_cast<std::size_t>(part.size());
    }

    /** Appends @p number in base 10. */
    void appendInteger(int number)
    {
        std::array<char, 16> digits = {};
        const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
        appendAscii(digits, end);
    }

    /**
     * Appends the result of QString::number() for format 'f' or 'g'. Uses std::to_chars(), which is faster, where both
     * give the same text: for finite numbers that are neither ties nor -0.0, at a precision of 0 to 17. All other
     * numbers are passed to Qt. The texts are the same in the processor's default rounding mode only.
     */
    void appendReal(double number, char format, int precision)
    {
#ifdef __cpp_lib_to_chars
        const bool isNegativeZero = number == 0 && std::signbit(number);
        const bool isCommon = std::isfinite(number) && !isNegativeZero && precision >= 0 && precision <= 17;
        if (isCommon && !DecimalTie::mayOccur(number, format, precision)) {
            std::array<char, 64> digits = {};
            const auto form = format == 'f' ? std::chars_format::fixed : std::chars_format::general;
            const auto [end, error] =
                std::to_chars(digits.data(), digits.data() + digits.size(), number, form, precision);
            if (error == std::errc()) {
                appendAscii(digits, end);
                return;
            }
        }
#endif
        append(QString::number(number, format, precision));
    }

    /** Returns the text, which is null if nothing was appended. The writer must not be used afterwards. */
    QString take()
    {
        if (text.isNull() && used > 0) {
            return QString(reinterpret_cast<const QChar *>(buffer.data()), static_cast<qsizetype>(used));
        }
        flush();
        text.squeeze();
        return std::move(text);
    }

private:
    /** Appends the @p characters before @p end, which points into them. */
    template <std::size_t Size>
    void appendAscii(const std::array<char, Size> &characters, const char *end)
    {
        if (Size > buffer.size() - used) {
            flush();
        }
        // Copying the whole array is faster: its size is a constant, and the surplus is overwritten.
        std::copy(characters.begin(), characters.end(), buffer.data() + used);
        used += static_cast<std::size_t>(end - characters.data());
    }

    void flush()
    {
        if (used > 0) {
            text.append(QStringView(buffer.data(), static_cast<qsizetype>(used)));
            used = 0;
        }
    }

    std::array<char16_t, 512> buffer; // the first used elements are valid
    std::size_t used = 0;
    QString text; // the characters before those in the buffer
};

#endif
