#ifndef TARNWICK_STRINGS_NATURALSORT_H
#define TARNWICK_STRINGS_NATURALSORT_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

/**
 * @brief Orders texts the way a person reads them: "file2" comes before "file10".
 *
 * The order is that of a default QCollator in numeric mode, hence of the default QLocale at the moment of the call. In
 * the C locale, QCollator ignores the numeric mode and compares code units: there, "file10" comes before "file2".
 *
 * Threads: may be used on any thread; each call has a collator of its own.
 */
class TARNWICK_EXPORT NaturalSort
{
public:
    /** An object holds nothing; copying, moving and assigning one does nothing. */
    NaturalSort() = default;
    /** @copydoc NaturalSort() */
    NaturalSort(const NaturalSort &source) = default;
    /** @copydoc NaturalSort() */
    NaturalSort(NaturalSort &&source) = default;
    /** @copydoc NaturalSort() */
    NaturalSort &operator=(const NaturalSort &source) = default;
    /** @copydoc NaturalSort() */
    NaturalSort &operator=(NaturalSort &&source) = default;

    /**
     * Compares two texts and returns what QCollator::compare() gives: a number below 0 if @p firstText comes first,
     * above 0 if @p secondText does, and 0 if there is no order between them, which does not make them equal: "1" and
     * "01" are such a pair. Each call makes a collator; sort() makes one for the whole list.
     */
    static int compare(const QString &firstText, const QString &secondText);

    /**
     * Sorts @p list in place, in ascending order. Texts without an order between them come in any order. Where the
     * collator contradicts itself, as it does for runs of digits outside ASCII in some locales, the result is some
     * permutation of the list.
     */
    static void sort(QList<QString> &list);
};

#endif
