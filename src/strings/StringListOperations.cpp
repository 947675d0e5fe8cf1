#include "StringListOperations.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace StringListOperations {

namespace {

/** Appends the texts that are not in @p seen to @p result, and to @p seen. */
void appendUnseen(const QList<QString> &list, QSet<QString> &seen, QList<QString> &result)
{
    for (const QString &text : list) {
        const qsizetype sizeBefore = seen.size();
        seen.insert(text);
        if (seen.size() != sizeBefore) {
            result.append(text);
        }
    }
}

} // namespace

QList<QString> intersection(const QList<QString> &firstList, const QList<QString> &secondList)
{
    QSet<QString> wanted(secondList.cbegin(), secondList.cend());
    QList<QString> result;
    for (const QString &text : firstList) {
        // What has been found once is not wanted again.
        if (wanted.remove(text)) {
            result.append(text);
        }
    }
    return result;
}

QList<QString> subtract(const QList<QString> &firstList, const QList<QString> &secondList)
{
    QSet<QString> seen(secondList.cbegin(), secondList.cend());
    QList<QString> result;
    appendUnseen(firstList, seen, result);
    return result;
}

QList<QString> unite(const QList<QString> &firstList, const QList<QString> &secondList)
{
    QSet<QString> seen;
    seen.reserve(firstList.size() + secondList.size());
    QList<QString> result;
    appendUnseen(firstList, seen, result);
    appendUnseen(secondList, seen, result);
    return result;
}

void resize(QList<QString> &list, int newSize)
{
    const qsizetype size = std::max(newSize, 0);
    if (size < list.size()) {
        list.resize(size);
    } else if (size > list.size()) {
        // QList::resize() would append null texts.
        list.insert(list.size(), size - list.size(), u""_s);
    }
}

} // namespace StringListOperations
