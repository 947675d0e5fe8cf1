#ifndef TARNWICK_QTEXTENSIONS_QVARIANTLESS_H
#define TARNWICK_QTEXTENSIONS_QVARIANTLESS_H

#include <tarnwick_export.h>

#include <QVariant>

/** Additions to Qt's own classes. */
namespace qtextensions {

/**
 * @brief Orders two variants, as comparator of sorted containers and sorts.
 *
 * The type of the left operand decides; the right one is converted to it, and counts as a default value of that type
 * where QVariant cannot convert it. The types with an order are Bool, Int, UInt, LongLong, ULongLong, Double, QChar,
 * QString, QStringList, QByteArray, QDate, QTime, QDateTime, QUrl, QUuid, QModelIndex and QPersistentModelIndex. All
 * others, user types and the invalid variant included, are less than nothing: two of them count as equivalent.
 *
 * @code
 * std::map<QVariant, QString, qtextensions::QVariantLess> captions;
 * std::sort(values.begin(), values.end(), qtextensions::QVariantLess());
 * @endcode
 *
 * Only the values of one listed type have an order in the strict sense, not-a-number left aside. Across types the order
 * is not even antisymmetric, since either operand may convert to the other: "10" < 9 as text, and 9 < "10" as number.
 * Keep containers and sorts to one type.
 *
 * Threads: stateless; may be used on any thread with values that this thread may read.
 */
struct TARNWICK_EXPORT QVariantLess
{
    /** An object holds nothing; copying, moving and assigning one does nothing. */
    QVariantLess() = default;
    /** @copydoc QVariantLess() */
    QVariantLess(const QVariantLess &) = default;
    /** @copydoc QVariantLess() */
    QVariantLess(QVariantLess &&) noexcept = default;
    /** @copydoc QVariantLess() */
    QVariantLess &operator=(const QVariantLess &) = default;
    /** @copydoc QVariantLess() */
    QVariantLess &operator=(QVariantLess &&) noexcept = default;

    /**
     * Returns whether @p lhs is less than @p rhs in the order of the type of @p lhs.
     *
     * Texts and characters compare by UTF-16 code unit, case-sensitively; lists of texts lexicographically; bytes as
     * unsigned; a double that is not a number is neither less nor greater than any other; indexes by row, column,
     * internal id and model address; the others by their own `operator<`.
     */
    bool operator()(const QVariant &lhs, const QVariant &rhs) const;
};

} // namespace qtextensions

#endif
