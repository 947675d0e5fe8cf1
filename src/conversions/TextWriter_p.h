#ifndef TARNWICK_CONVERSIONS_TEXTWRITER_P_H
#define TARNWICK_CONVERSIONS_TEXTWRITER_P_H

#include "DecimalTie_p.h"

#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <utility>

/**
 * @brief Puts a text together from numbers and other texts, with one allocation for a short text.
 *
 * What is appended gathers in a buffer of fixed size within the writer. A text that outgrows it goes on, buffer by
 * buffer, into a string that grows by factors, so that the cost stays linear.
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
     * Appends @p number as QString::number() writes it with the format 'f' or 'g' and any precision. std::to_chars()
     * is faster and rounds like Qt but for ties; those, -0.0, what is not finite and uncommon precisions go to Qt.
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

    /** Returns the text, null if nothing was appended; the writer has done its work then. */
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
    /** Appends what stands ahead of @p end, which points into @p characters. */
    template <std::size_t Size>
    void appendAscii(const std::array<char, Size> &characters, const char *end)
    {
        if (Size > buffer.size() - used) {
            flush();
        }
        // All of them: a fixed number is copied faster than the right one, and the next part overwrites the rest.
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
    QString text; // what has left the buffer
};

#endif
