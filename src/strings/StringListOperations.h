#ifndef TARNWICK_STRINGS_STRINGLISTOPERATIONS_H
#define TARNWICK_STRINGS_STRINGLISTOPERATIONS_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

/**
 * Set operations on lists of strings, and a resize that appends empty strings. Elements are compared with QString's
 * operator==, so upper and lower case differ and nothing is normalised. All functions may be called on any thread. The
 * time is linear in the lengths of the lists.
 */
namespace StringListOperations {

/** Returns the elements that are in both lists, each once, in unspecified order. */
TARNWICK_EXPORT QList<QString> intersection(const QList<QString> &firstList, const QList<QString> &secondList);

/** Returns the elements of @p firstList that are not in @p secondList, each once, in unspecified order. */
TARNWICK_EXPORT QList<QString> subtract(const QList<QString> &firstList, const QList<QString> &secondList);

/**
 * Returns the elements of both lists, each once: first those of @p firstList, then those that are only in
 * @p secondList, both in the order of their first occurrence.
 */
TARNWICK_EXPORT QList<QString> unite(const QList<QString> &firstList, const QList<QString> &secondList);

/**
 * Resizes @p list to @p newSize elements. Removes elements at the end, or appends strings that are empty but not null.
 * A negative size counts as 0. A list that already has the size does not detach.
 */
TARNWICK_EXPORT void resize(QList<QString> &list, int newSize);

} // namespace StringListOperations

#endif
