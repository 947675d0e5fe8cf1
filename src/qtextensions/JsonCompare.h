#ifndef TARNWICK_QTEXTENSIONS_JSONCOMPARE_H
#define TARNWICK_QTEXTENSIONS_JSONCOMPARE_H

#include <tarnwick_export.h>

#include <QJsonDocument>

/** Comparison of JSON documents. */
namespace json {

/**
 * Returns whether two documents hold the same data, where the order of array elements does not count, at any depth.
 *
 * Arrays are equal as multisets: [1, 2, 3] equals [3, 1, 2], while [1, 1, 2] does not equal [1, 2, 2]. Objects are
 * equal with the same keys and equal values. Kinds do not mix: an empty object does not equal an empty array, nor a
 * null document an empty one; two null documents are equal. Leaves compare by the operators of QJsonValue: texts by
 * UTF-16 code units, two integers exactly, an integer and a double as doubles. Not-a-number, which only a document made
 * in memory can hold, equals nothing, not even itself.
 *
 * So the double 9223372036854775808 equals each of the integers 9223372036854775296 to 9223372036854775807, though they
 * differ among themselves. Where elements are equal in this unruly way, each element of @p first takes the first equal
 * element of @p second that is still free, and that decides.
 *
 * The time grows with the size of the documents (n log n), whatever their order. The exception are documents that hold,
 * as a double, a number between 2^53 and 2^63: elements then count as distinct only when they differ as doubles, and n
 * elements that merely differ beyond that may take time in n squared. Any depth that Qt's parser
 * accepts is fine; documents made in memory overflow the stack at some tens of thousands of levels, as they do in Qt's
 * own equality.
 *
 * Threads: may be called on any thread that may read both documents.
 */
TARNWICK_EXPORT bool compare(const QJsonDocument &first, const QJsonDocument &second);

} // namespace json

#endif
