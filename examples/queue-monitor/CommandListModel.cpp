#include "CommandListModel.h"

#include "DigestCommandData.h"
#include "MonitorLog.h"

#include <commands/CommandQueue.h>
#include <strings/StringUtility.h>

#include <QMetaEnum>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto refreshDelay = 40ms; // what the eye takes for at once
constexpr int complete = 100; // percent

// "REQUIRE_USER_ACTION" reads "Require user action".
QString statusName(CommandData::Status status)
{
    if (status == CommandData::ERR) {
        return u"Error"_s;
    }
    const char *const key = QMetaEnum::fromType<CommandData::Status>().valueToKey(status);
    return StringUtility::makeFirstCharacterUpperLowerTheRest(
        StringUtility::removeInvalidCharacters(QString::fromLatin1(key)));
}

// "save digests" becomes "SD".
QString initials(const QString &typeName)
{
    QString first;
    QString last;
    StringUtility::patientNameToFirstLastName(typeName, first, last);
    return StringUtility::getPatientInitials(last, first).toUpper();
}

int progressOf(const CommandData &record, CommandData::Status status)
{
    if (status == CommandData::FINISHED) {
        return complete;
    }
    const auto *const digest = qobject_cast<const DigestCommandData *>(&record);
    if (!digest) {
        return 0;
    }
    const qint64 total = std::max<qint64>(digest->getTotalBytes(), 1); // a file can grow while it is read
    return static_cast<int>(complete * std::min(digest->getDigestedBytes(), total) / total);
}

QString detailOf(const CommandData &record, CommandData::Status status)
{
    if (status == CommandData::ERR) {
        return record.getErrorMessage();
    }
    const auto *const digest = qobject_cast<const DigestCommandData *>(&record);
    return digest && status == CommandData::FINISHED ? QString::fromLatin1(digest->getDigest().toHex())
                                                     : record.getDescription();
}

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
        const CommandData::Status status = record->getStatus();
        ++counts[status];
        rows.push_back({std::move(record), status});
    }
    endInsertRows();
    Q_EMIT refreshed();
}

void CommandListModel::clear()
{
    if (rows.empty() || !listedReferences.isEmpty()) {
        return;
    }
    beginRemoveRows(QModelIndex(), 0, rowCount() - 1);
    rows.clear();
    rowOfRecord.clear();
    counts.clear();
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

int CommandListModel::getCount(CommandData::Status status) const
{
    const auto found = counts.find(status);
    return found == counts.end() ? 0 : found->second;
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
        return row.record->getDescription();
    case Qt::AccessibleTextRole:
        return u"%1, %2, %3 %, %4"_s.arg(row.record->getTitle(), statusName(row.status))
            .arg(row.progress)
            .arg(detailOf(*row.record, row.status));
    case StatusRole:
        return static_cast<int>(row.status);
    case StatusNameRole:
        return statusName(row.status);
    case KindRole:
        return initials(row.record->getTypeName());
    case ProgressRole:
        return row.progress;
    case DetailRole:
        return detailOf(*row.record, row.status);
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
    std::sort(indexes.begin(), indexes.end());
    for (const int index : indexes) {
        update(rows[static_cast<std::size_t>(index)]);
    }
    for (std::size_t first = 0, last = 0; first < indexes.size(); first = ++last) {
        while (last + 1 < indexes.size() && indexes[last + 1] == indexes[last] + 1) {
            ++last;
        }
        Q_EMIT dataChanged(index(indexes[first]), index(indexes[last]));
    }
    Q_EMIT refreshed();
}

void CommandListModel::update(Row &row)
{
    row.isOutdated = false;
    const CommandData::Status status = row.record->getStatus();
    row.progress = progressOf(*row.record, status);
    if (status == row.status) {
        return;
    }
    --counts[std::exchange(row.status, status)];
    ++counts[status];
    qCDebug(monitorLog, "%s: %s", qUtf8Printable(row.record->getTitle()), qUtf8Printable(statusName(status)));
}
