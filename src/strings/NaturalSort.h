#ifndef TARNWICK_STRINGS_NATURALSORT_H
#define TARNWICK_STRINGS_NATURALSORT_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

/**
 * @brief Orders texts the way a person reads them: "file2" comes before "file10".
 *
 * The order is that of a default QCollator in numeric mode, so it depends on the default QLocale at the time of the
 * call. In the C locale, QCollator ignores the numeric mode and compares code units: "file10" comes before "file2". On
 * Linux, a Qt built without ICU has no numeric mode in any locale.
 *
 * Threads: all functions may be called on any thread; each call makes its own collator.
 */
class TARNWICK_EXPORT NaturalSort
{
public:
    /**
     * Returns the result of QCollator::compare(): a number below 0 if @p firstText comes first, above 0 if
     * @p secondText comes first, and 0 if they compare equivalent. Equivalent texts may differ: with ICU, "1" and "01"
     * are equivalent in every locale except C. Each call makes a collator; sort() makes one for the whole list.
     */
    static int compare(const QString &firstText, const QString &secondText);

    /**
     * Sorts @p list in place, in ascending order. The order of equivalent texts is unspecified. Pointers into a list
     * that is not shared, and its capacity, stay valid; a shared list detaches.
     *
     * The collator's order is not transitive in some locales for runs of digits outside ASCII. The result is then an
     * unspecified permutation of the list.
     */
    static void sort(QList<QString> &list);
};

#endif
