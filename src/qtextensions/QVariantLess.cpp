#include "QVariantLess.h"

#include <QAbstractItemModel>
#include <QDateTime>
#include <QPersistentModelIndex>
#include <QStringList>
#include <QUrl>
#include <QUuid>
#include <QVariant>

#include <algorithm>
#include <tuple>

namespace {
bool isStringLess(const QString &lhs, const QString &rhs)
{
    return QtPrivate::compareStrings(lhs, rhs, Qt::CaseSensitive) < 0;
}

bool isStringListLess(const QStringList &lhs, const QStringList &rhs)
{
    return std::lexicographical_compare(lhs.begin(), lhs.end(), rhs.begin(), rhs.end(), isStringLess);
}

auto toTuple(const QModelIndex &index)
{
    return std::tuple(index.row(), index.column(), index.internalId(), reinterpret_cast<quintptr>(index.model()));
}
} // namespace

bool qtextensions::QVariantLess::operator()(const QVariant &lhs, const QVariant &rhs) const
{
    switch (lhs.typeId()) {
    case QMetaType::Bool:
        return !lhs.toBool() && rhs.toBool();
    case QMetaType::Int:
        return lhs.toInt() < rhs.toInt();
    case QMetaType::UInt:
        return lhs.toUInt() < rhs.toUInt();
    case QMetaType::LongLong:
        return lhs.toLongLong() < rhs.toLongLong();
    case QMetaType::ULongLong:
        return lhs.toULongLong() < rhs.toULongLong();
    case QMetaType::Double:
        return lhs.toDouble() < rhs.toDouble();
    case QMetaType::QChar:
        return lhs.toChar() < rhs.toChar();
    case QMetaType::QString:
        return isStringLess(lhs.toString(), rhs.toString());
    case QMetaType::QStringList:
        return isStringListLess(lhs.toStringList(), rhs.toStringList());
    case QMetaType::QByteArray:
        return QtPrivate::compareMemory(lhs.toByteArray(), rhs.toByteArray()) < 0;
    case QMetaType::QDate:
        return lhs.toDate() < rhs.toDate();
    case QMetaType::QTime:
        return lhs.toTime() < rhs.toTime();
    case QMetaType::QDateTime:
        return lhs.toDateTime() < rhs.toDateTime();
    case QMetaType::QUrl:
        return lhs.toUrl() < rhs.toUrl();
    case QMetaType::QUuid:
        return lhs.toUuid() < rhs.toUuid();
    case QMetaType::QModelIndex:
        return toTuple(lhs.toModelIndex()) < toTuple(rhs.toModelIndex());
    case QMetaType::QPersistentModelIndex:
        return lhs.toPersistentModelIndex() < rhs.toPersistentModelIndex();
    default:
        return false;
    }
}
