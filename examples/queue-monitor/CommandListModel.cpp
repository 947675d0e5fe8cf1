#include "CommandListModel.h"

#include "DigestCommandData.h"
#include "StatusLook.h"

#include <commands/CommandQueue.h>
#include <logging/CategoriesRegistry.h>

#include <QLoggingCategory>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto refreshDelay = 40ms; // what the eye takes for at once

// Each change of a command's status, at debug level.
Q_LOGGING_CATEGORY(monitorLog, "queuemonitor.commands")
const logging::CategoriesRegistrar monitorLogRegistrar(monitorLog, logging::CategoriesRegistrySingleton::getInstance());

} // namespace

CommandListModel::CommandListModel()
{
    refreshTimer.setSingleShot(true);
    refreshTimer.setInterval(refreshDelay);
    connect(&refreshTimer, &QTimer::timeout, this, &CommandListModel::refresh);
}

CommandListModel::~CommandListModel() = default;

void CommandListModel::follow(const CommandQueue &queue)
{
    connect(&queue, &CommandQueue::commandRemoved, this, &CommandListModel::markRemoved, Qt::QueuedConnection);
}

void CommandListModel::append(std::vector<std::unique_ptr<CommandData>> records)
{
    if (records.empty()) {
        return;
    }
    const int firstRow = rowCount();
    beginInsertRows(QModelIndex(), firstRow, firstRow + static_cast<int>(records.size()) - 1);
    for (std::unique_ptr<CommandData> &record : records) {
        connect(record.get(), &CommandData::statusChanged, this, &CommandListModel::markOutdated, Qt::QueuedConnection);
        connect(
            record.get(), &CommandData::progressUpdated, this, &CommandListModel::markOutdated, Qt::QueuedConnection);
        rowOfRecord.insert(record.get(), rowCount());
        listedReferences.insert(record->getReference());
        const auto *const digest = qobject_cast<const DigestCommandData *>(record.get());
        rows.push_back({std::move(record), digest});
        count(rows.back(), 1);
        update(rows.back());
    }
    endInsertRows();
    Q_EMIT refreshed();
}

void CommandListModel::relist(const CommandData *record)
{
    listedReferences.insert(record->getReference());
    markOutdated(record);
}

void CommandListModel::clear()
{
    if (rows.empty() || !listedReferences.isEmpty()) {
        return;
    }
    beginRemoveRows(QModelIndex(), 0, rowCount() - 1);
    rows.clear();
    rowOfRecord.clear();
    summary = {};
    outdatedRows.clear();
    endRemoveRows();
    Q_EMIT refreshed();
}

bool CommandListModel::isListed(const QString &reference) const
{
    return listedReferences.contains(reference);
}

qsizetype CommandListModel::getListedCount() const
{
    return listedReferences.size();
}

const CommandListModel::Summary &CommandListModel::getSummary() const
{
    return summary;
}

bool CommandListModel::hasEnded(CommandData::Status status)
{
    return status == CommandData::FINISHED || status == CommandData::CANCELLED || status == CommandData::ERR;
}

CommandData *CommandListModel::getRecord(int row) const
{
    return rows[static_cast<std::size_t>(row)].record.get();
}

int CommandListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

QVariant CommandListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row &row = rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return row.record->getTitle();
    case Qt::ToolTipRole:
        return row.status == CommandData::ERR ? detailOf(row) : row.record->getDescription();
    case Qt::AccessibleTextRole:
        return u"%1, %2, %3%, %4"_s.arg(
            row.record->getTitle(), lookOf(row.status).name, QString::number(progressOf(row)), detailOf(row));
    case StatusRole:
        return static_cast<int>(row.status);
    case ProgressRole:
        return progressOf(row);
    case DetailRole:
        return detailOf(row);
    case DigestRole:
        return digestOf(row);
    default:
        return {};
    }
}

void CommandListModel::markOutdated(const CommandData *record)
{
    const int index = rowOfRecord.value(record);
    Row &row = rows[static_cast<std::size_t>(index)];
    if (row.isOutdated) {
        return;
    }
    row.isOutdated = true;
    outdatedRows.push_back(index);
    if (!refreshTimer.isActive()) {
        refreshTimer.start();
    }
}

void CommandListModel::markRemoved(const CommandData *record)
{
    listedReferences.remove(record->getReference());
    markOutdated(record);
}

void CommandListModel::refresh()
{
    std::vector<int> indexes = std::move(outdatedRows);
    outdatedRows.clear();
    for (const int index : indexes) {
        update(rows[static_cast<std::size_t>(index)]);
    }
    if (const auto [first, last] = std::minmax_element(indexes.begin(), indexes.end()); first != indexes.end()) {
        Q_EMIT dataChanged(index(*first), index(*last));
    }
    Q_EMIT refreshed();
}

void CommandListModel::update(Row &row)
{
    row.isOutdated = false;
    count(row, -1);
    const CommandData::Status status = row.record->getStatus();
    const bool isChanged = std::exchange(row.status, status) != status;
    if (row.digest) {
        row.digestedBytes = row.digest->getDigestedBytes();
        row.remainingBytes =
            hasEnded(status) ? 0 : std::max<qint64>(row.digest->getTotalBytes() - row.digestedBytes, 0);
    }
    count(row, 1);
    if (isChanged) {
        qCDebug(monitorLog, "%s: %s", qUtf8Printable(row.record->getTitle()), qUtf8Printable(lookOf(status).name));
    }
}

void CommandListModel::count(const Row &row, int sign)
{
    summary.unanswered += row.status == CommandData::REQUIRE_USER_ACTION ? sign : 0;
    if (!row.digest) {
        return;
    }
    summary.digests += sign;
    summary.finished += row.status == CommandData::FINISHED ? sign : 0;
    summary.failed += row.status == CommandData::ERR ? sign : 0;
    summary.cancelled += row.status == CommandData::CANCELLED ? sign : 0;
    summary.digestedBytes += sign * row.digestedBytes;
    summary.remainingBytes += sign * row.remainingBytes;
}

int CommandListModel::progressOf(const Row &row)
{
    if (row.status == CommandData::FINISHED) {
        return 100;
    }
    const qint64 total = row.digestedBytes + row.remainingBytes;
    return hasEnded(row.status) || total == 0 ? 0 : static_cast<int>(100 * row.digestedBytes / total);
}

QString CommandListModel::digestOf(const Row &row)
{
    const bool hasDigest = row.digest && row.status == CommandData::FINISHED;
    return hasDigest ? QString::fromLatin1(row.digest->getDigest().toHex()) : QString();
}

QString CommandListModel::detailOf(const Row &row)
{
    const QString path = row.record->getDescription();
    if (row.status == CommandData::ERR) {
        return u"%1: %2"_s.arg(row.record->getErrorMessage(), path);
    }
    const QString digest = digestOf(row);
    return digest.isEmpty() ? path : digest;
}
