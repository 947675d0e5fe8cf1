#include "QVariantLess.h"

#include <QByteArray>
#include <QChar>
#include <QDateTime>
#include <QMetaType>
#include <QModelIndex>
#include <QPersistentModelIndex>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QUuid>
#include <QtGlobal>

#include <tuple>

namespace {

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
        return lhs.toString() < rhs.toString();
    case QMetaType::QStringList:
        return lhs.toStringList() < rhs.toStringList();
    case QMetaType::QByteArray:
        return lhs.toByteArray() < rhs.toByteArray();
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
