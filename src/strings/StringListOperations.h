#ifndef TARNWICK_STRINGS_STRINGLISTOPERATIONS_H
#define TARNWICK_STRINGS_STRINGLISTOPERATIONS_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

/**
 * Set operations on lists of texts, and a resize that fills up with empty texts. Texts are one element if they are
 * equal, upper and lower case apart and without any normalisation; an empty text is an element like any other. All
 * functions may be called on any thread and take time proportional to the lengths of the lists.
 */
namespace StringListOperations {

/** Returns the elements that are in both lists, each once, in an order that callers must not rely on. */
TARNWICK_EXPORT QList<QString> intersection(const QList<QString> &firstList, const QList<QString> &secondList);

/**
 * Returns the elements of @p firstList that are not in @p secondList, each once, in an order that callers must not rely
 * on.
 */
TARNWICK_EXPORT QList<QString> subtract(const QList<QString> &firstList, const QList<QString> &secondList);

/**
 * Returns the elements of both lists, each once: those of @p firstList in the order of their first occurrence, followed
 * by those that only @p secondList has, in the order of their first occurrence.
 */
TARNWICK_EXPORT QList<QString> unite(const QList<QString> &firstList, const QList<QString> &secondList);

/**
 * Brings @p list to @p newSize elements: drops elements from its end or appends empty texts that are not null. A
 * negative size counts as 0. A list of that size already is left as it is, shared data included.
 */
TARNWICK_EXPORT void resize(QList<QString> &list, int newSize);

} // namespace StringListOperations

#endif
