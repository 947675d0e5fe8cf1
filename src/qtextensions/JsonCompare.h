#ifndef TARNWICK_QTEXTENSIONS_JSONCOMPARE_H
#define TARNWICK_QTEXTENSIONS_JSONCOMPARE_H

#include <tarnwick_export.h>

#include <QJsonDocument>

/** Comparison of JSON documents. */
namespace json {

/**
 * Returns whether two documents are equal, ignoring the order of array elements at every level.
 *
 * - Arrays are compared as multisets: [1, 2, 3] equals [3, 1, 2], but [1, 1, 2] does not equal [1, 2, 2].
 * - Objects are equal if they have the same keys and equal values.
 * - An empty object, an empty array and a null document all differ. Two null documents are equal.
 * - All other values are compared with QJsonValue's operators: strings by UTF-16 code units, two integers exactly, an
 *   integer and a double as doubles. NaN, which a parsed document cannot contain, equals nothing, not even itself.
 *
 * This equality of numbers is not transitive: the double 9223372036854775808 equals each of the integers
 * 9223372036854775296 to 9223372036854775807, which are not equal to each other. In such a case, each element of
 * @p first is matched with the first equal element of @p second that has not been matched yet.
 *
 * The time is O(n log n) in the size of the documents, except for documents with a double between 2^53 and 2^63. There,
 * n elements that differ only by integers which convert to the same double may take O(n^2).
 *
 * Every document that Qt's parser accepts can be compared. Documents made in memory overflow the stack at some tens of
 * thousands of levels, as they do with QJsonDocument's operator==.
 *
 * Threads: may be called on any thread that may read both documents.
 */
TARNWICK_EXPORT bool compare(const QJsonDocument &first, const QJsonDocument &second);

} // namespace json

#endif
