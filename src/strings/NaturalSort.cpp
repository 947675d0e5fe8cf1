#include "NaturalSort.h"

#include <QChar>
#include <QCollator>
#include <QLocale>
#include <QtGlobal>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

// Sorting by sort keys is several times faster than sorting by comparisons, but the order of the keys may differ from
// that of compare().
//
// With ICU, both agree for texts that are not empty and consist of ASCII and letters of the basic plane. This was
// tested with random pairs in each locale of ICU, and fuzz_naturalsort repeats the test. They disagree for empty texts
// and texts of ignorable characters, for digits outside ASCII, for the marks of Japanese kana, and for lone surrogates.
//
// Without ICU, Qt's sort keys ignore the numeric mode or do not follow compare() at all (QTBUG-128170).

namespace {

struct KeyedText
{
    QCollatorSortKey key;
    qsizetype index; // in the list
};

QCollator makeCollator()
{
    QCollator collator;
    collator.setNumericMode(true);
    return collator;
}

bool isAsciiOrLetter(QChar character)
{
    if (character.unicode() < 0x80) {
        return true;
    }
    switch (character.category()) {
    case QChar::Letter_Uppercase:
    case QChar::Letter_Lowercase:
    case QChar::Letter_Titlecase:
    case QChar::Letter_Other:
        return true;
    default:
        return false;
    }
}

bool isPlainText(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), isAsciiOrLetter);
}

bool doKeysFollowComparison([[maybe_unused]] const QCollator &collator, const QList<QString> &list)
{
    // "01" and "1" compare equivalent only with ICU. Windows and macOS do not document what their collators do here.
#if defined(Q_OS_WIN) || defined(Q_OS_DARWIN)
    const bool isIcu = false;
#else
    const bool isIcu = collator.compare(u"01", u"1") == 0;
#endif
    return isIcu && std::all_of(list.cbegin(), list.cend(), isPlainText);
}

void sortByKeys(QList<QString> &list, const QCollator &collator)
{
    std::vector<KeyedText> entries;
    entries.reserve(static_cast<std::size_t>(list.size()));
    for (qsizetype i = 0; i < list.size(); ++i) {
        entries.push_back({collator.sortKey(list.at(i)), i});
    }
    // std::stable_sort() makes fewer comparisons than std::sort(), and each comparison is likely to miss the cache.
    std::stable_sort(entries.begin(), entries.end(), [](const KeyedText &first, const KeyedText &second) {
        return first.key < second.key;
    });
    std::vector<QString> sorted(entries.size());
    QString *const texts = list.data();
    std::transform(entries.cbegin(), entries.cend(), sorted.begin(), [texts](const KeyedText &entry) {
        return std::move(texts[entry.index]);
    });
    std::move(sorted.begin(), sorted.end(), texts);
}

// The sorts of the standard library require a strict weak order. The collator's order is not one: in several locales it
// is not transitive for runs of digits outside ASCII. This merge sort is safe with any order: each step moves one text
// from one of two ranges that are not empty.
void sortByMerging(QList<QString> &list, const QCollator &collator)
{
    std::vector<QString> buffer(static_cast<std::size_t>(list.size()));
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
        std::move(buffer.begin(), buffer.end(), target);
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
        // The collator compares code units, which is a strict weak order and cheaper than sort keys.
        std::sort(list.begin(), list.end(), [&collator](const QString &first, const QString &second) {
            return collator.compare(first, second) < 0;
        });
    } else if (doKeysFollowComparison(collator, list)) {
        sortByKeys(list, collator);
    } else {
        sortByMerging(list, collator);
    }
}
