#ifndef TARNWICK_QTEXTENSIONS_QVARIANTLESS_H
#define TARNWICK_QTEXTENSIONS_QVARIANTLESS_H

#include <tarnwick_export.h>

#include <QVariant>

/** Additions to Qt's own classes. */
namespace qtextensions {

/**
 * @brief Compares two variants, for sorted containers and algorithms.
 *
 * The right operand is converted to the type of the left operand. If QVariant cannot convert it, it counts as a default
 * value of that type. The supported types are Bool, Int, UInt, LongLong, ULongLong, Double, QChar, QString,
 * QStringList, QByteArray, QDate, QTime, QDateTime, QUrl, QUuid, QModelIndex and QPersistentModelIndex. Values of all
 * other types, including user types and invalid variants, are never less than another value and so compare equivalent
 * to each other.
 *
 * @code
 * std::map<QVariant, QString, qtextensions::QVariantLess> captions;
 * std::sort(values.begin(), values.end(), qtextensions::QVariantLess());
 * @endcode
 *
 * This is a strict weak order for values of one supported type, except for NaN. For different types it is not: "10" is
 * less than 9 as a text, and 9 is less than "10" as a number. So use only one type in a container.
 *
 * Threads: stateless. May be used on any thread that may read the values.
 */
struct TARNWICK_EXPORT QVariantLess
{
    /**
     * Returns whether @p lhs is less than @p rhs according to the type of @p lhs.
     *
     * Strings and characters are compared case-sensitively by UTF-16 code units, string lists lexicographically, byte
     * arrays by unsigned bytes, and model indexes by row, column, internal id and address of the model. The other types
     * are compared with their operator<, so NaN is neither less nor greater than another double.
     */
    bool operator()(const QVariant &lhs, const QVariant &rhs) const;
};

} // namespace qtextensions

#endif
