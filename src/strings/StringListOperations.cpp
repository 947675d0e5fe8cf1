#include "StringListOperations.h"

#include <QSet>
#include <QtGlobal>

#include <algorithm>

using namespace Qt::StringLiterals;

QList<QString> StringListOperations::intersection(const QList<QString> &firstList, const QList<QString> &secondList)
{
    QSet<QString> wanted(secondList.cbegin(), secondList.cend());
    QList<QString> result;
    for (const QString &text : firstList) {
        // Removing it prevents a duplicate from being found again.
        if (wanted.remove(text)) {
            result.append(text);
        }
    }
    return result;
}

QList<QString> StringListOperations::subtract(const QList<QString> &firstList, const QList<QString> &secondList)
{
    QSet<QString> unwanted;
    unwanted.reserve(firstList.size() + secondList.size());
    for (const QString &text : secondList) {
        unwanted.insert(text);
    }
    QList<QString> result;
    for (const QString &text : firstList) {
        // Inserting it prevents a duplicate from being taken again. The set grows only if the text was not in it.
        const qsizetype sizeBefore = unwanted.size();
        unwanted.insert(text);
        if (unwanted.size() != sizeBefore) {
            result.append(text);
        }
    }
    return result;
}

QList<QString> StringListOperations::unite(const QList<QString> &firstList, const QList<QString> &secondList)
{
    QList<QString> result = firstList + secondList;
    result.removeDuplicates();
    return result;
}

void StringListOperations::resize(QList<QString> &list, int newSize)
{
    const qsizetype size = std::max(newSize, 0);
    if (size < list.size()) {
        list.resize(size);
    } else if (size > list.size()) {
        // QList::resize() would append null texts.
        list.insert(list.size(), size - list.size(), u""_s);
    }
}
