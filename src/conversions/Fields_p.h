#ifndef TARNWICK_CONVERSIONS_FIELDS_P_H
#define TARNWICK_CONVERSIONS_FIELDS_P_H

#include <QChar>
#include <QStringView>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cstddef>

/**
 * @brief Splits a text at a separator into at most @p Limit fields, which are views into the text.
 *
 * The fields are those of QString::split() with Qt::KeepEmptyParts. The rest of a text with more fields is not split. A
 * reader of exactly n fields uses a limit of n + 1 and compares count() with n.
 */
template <std::size_t Limit>
class Fields
{
public:
    Fields(QStringView text, QChar separator)
    {
        // QStringTokenizer is slower for short fields: it calls a search function for each.
        const QChar *first = text.begin();
        const QChar *last = std::find(first, text.end(), separator);
        fields[found++] = QStringView(first, last);
        while (found < Limit && last != text.end()) {
            first = last + 1;
            last = std::find(first, text.end(), separator);
            fields[found++] = QStringView(first, last);
        }
    }

    /** Returns the number of fields, at most @p Limit. */
    std::size_t count() const { return found; }

    /** Returns the field at @p index, which must be less than count(). */
    QStringView operator[](std::size_t index) const { return fields[index]; }

private:
    std::array<QStringView, Limit> fields;
    std::size_t found = 0;
};

/** Returns the text before the first @p separator, or the whole @p text if there is none. */
inline QStringView firstField(QStringView text, QChar separator)
{
    const qsizetype end = text.indexOf(separator);
    return end < 0 ? text : text.first(end);
}

/** Returns the text after the last @p separator, or the whole @p text if there is none. */
inline QStringView lastField(QStringView text, QChar separator)
{
    return text.sliced(text.lastIndexOf(separator) + 1);
}

#endif
