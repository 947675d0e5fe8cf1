#include "NaturalSort.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <vector>

namespace {

struct KeyedText
{
    QCollatorSortKey key;
    const QString *text;
};

QCollator makeCollator()
{
    QCollator collator;
    collator.setNumericMode(true);
    return collator;
}

bool isNonEmptyAscii(const QString &text)
{
    return !text.isEmpty()
        && std::all_of(text.cbegin(), text.cend(), [](QChar character) { return character.unicode() < 0x80; });
}

/** Makes one key for each text, several times as fast as a collation for each comparison. */
void sortByKeys(QList<QString> &list, const QCollator &collator)
{
    std::vector<KeyedText> entries;
    entries.reserve(std::size_t(list.size()));
    for (const QString &text : std::as_const(list)) {
        entries.push_back({collator.sortKey(text), &text});
    }
    // The stable sort makes fewer comparisons, each of which goes to two places far apart in memory.
    std::stable_sort(entries.begin(), entries.end(), [](const KeyedText &first, const KeyedText &second) {
        return first.key < second.key;
    });
    QList<QString> sorted;
    sorted.reserve(list.size());
    for (const KeyedText &entry : entries) {
        sorted.append(*entry.text);
    }
    list.swap(sorted);
}

/**
 * A merge sort that ends, within its bounds, whatever the collator answers: each step takes one text off one of two
 * ranges that are not yet empty. The sorts of the standard library promise nothing unless the order is a strict weak
 * one, and the collator's is not: for runs of digits outside ASCII it is not transitive in several locales.
 */
void sortByMerging(QList<QString> &list, const QCollator &collator)
{
    QList<QString> buffer(list.size());
    QString *source = list.data();
    QString *target = buffer.data();
    const qsizetype size = list.size();
    for (qsizetype width = 1; width < size; width *= 2) {
        for (qsizetype begin = 0; begin < size; begin += 2 * width) {
            const qsizetype middle = std::min(begin + width, size);
            const qsizetype end = std::min(middle + width, size);
            qsizetype left = begin;
            qsizetype right = middle;
            for (qsizetype i = begin; i < end; ++i) {
                const bool takesLeft =
                    right == end || (left < middle && collator.compare(source[right], source[left]) >= 0);
                target[i] = std::move(takesLeft ? source[left++] : source[right++]);
            }
        }
        std::swap(source, target);
    }
    if (source != list.constData()) {
        list.swap(buffer);
    }
}

} // namespace

int NaturalSort::compare(const QString &firstText, const QString &secondText)
{
    return makeCollator().compare(firstText, secondText);
}

void NaturalSort::sort(QList<QString> &list)
{
    const QCollator collator = makeCollator();
    if (collator.locale().language() == QLocale::C) {
        // A plain comparison of code units, cheaper than any key and always consistent.
        std::sort(list.begin(), list.end(), [&collator](const QString &first, const QString &second) {
            return collator.compare(first, second) < 0;
        });
    } else if (std::all_of(list.cbegin(), list.cend(), isNonEmptyAscii)) {
        // Keys follow the comparison for these texts. They do not for empty texts beside ignorable characters, digits
        // outside ASCII, some Japanese texts and lone surrogates.
        sortByKeys(list, collator);
    } else {
        sortByMerging(list, collator);
    }
}
