#ifndef TARNWICK_CONVERSIONS_FIELDS_P_H
#define TARNWICK_CONVERSIONS_FIELDS_P_H

#include <QStringView>

#include <algorithm>
#include <array>
#include <cstddef>

/**
 * @brief The first fields of a text that is split at a separator, as views into the text, which has to outlive them.
 *
 * Fields are counted as QString::split() with Qt::KeepEmptyParts counts them: a text has at least one, and two
 * separators in a row have an empty one between them. No more than @p Limit are looked for, so a reader that wants
 * exactly n fields takes a limit of n + 1 and does not split the rest of a text that it is going to refuse.
 */
template <std::size_t Limit>
class Fields
{
public:
    Fields(QStringView text, QChar separator)
    {
        // Not a QStringTokenizer: fields are short, and its call of a search function for each costs more than the
        // search.
        const QChar *first = text.begin();
        const QChar *last = std::find(first, text.end(), separator);
        fields[found++] = QStringView(first, last);
        while (found < Limit && last != text.end()) {
            first = last + 1;
            last = std::find(first, text.end(), separator);
            fields[found++] = QStringView(first, last);
        }
    }

    /** Returns how many fields the text has, at most @p Limit. */
    std::size_t count() const { return found; }

    /** Returns the field at @p index, which is less than count(). */
    QStringView operator[](std::size_t index) const { return fields[index]; }

private:
    std::array<QStringView, Limit> fields;
    std::size_t found = 0;
};

/** Returns what stands ahead of the first @p separator: the whole @p text if there is none. */
inline QStringView firstField(QStringView text, QChar separator)
{
    const qsizetype end = text.indexOf(separator);
    return end < 0 ? text : text.first(end);
}

/** Returns what follows the last @p separator: the whole @p text if there is none. */
inline QStringView lastField(QStringView text, QChar separator)
{
    return text.sliced(text.lastIndexOf(separator) + 1);
}

#endif
