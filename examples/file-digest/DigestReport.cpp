#include "DigestReport.h"

#include "DigestCommandData.h"
#include "EscapedPath.h"

#include <commands/CommandQueue.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype digestColumns = 64;
constexpr qsizetype statusColumns = 9; // of "CANCELLED", the longest
constexpr qsizetype terminalColumns = 79;
const QString eraseLine = u"\x1b[K"_s;

QString tableRow(const DigestCommandData &record)
{
    const QString path = escapedPath(record.getTitle());
    const QString mark = path == record.getTitle() ? QString() : u"\\"_s;
    const bool hasDigest = record.getStatus() == CommandData::FINISHED;
    const QString digest = hasDigest ? QString::fromLatin1(record.getDigest().toHex()) : u"-"_s;
    return mark + digest.leftJustified(digestColumns) + "  "_L1
        + record.getStatusAsString().leftJustified(statusColumns) + "  "_L1 + path + u'\n';
}

} // namespace

DigestReport::DigestReport(bool isTerminal)
    : isTerminal(isTerminal)
{
    sinceStart.start();
}

DigestReport::~DigestReport() = default;

void DigestReport::follow(const CommandQueue &queue)
{
    connect(&queue, &CommandQueue::commandRemoved, this, &DigestReport::reportRemoved, Qt::QueuedConnection);
}

DigestCommandData *DigestReport::addRecord(const QString &path, const QString &title)
{
    DigestCommandData *record = records.emplace_back(std::make_unique<DigestCommandData>(path, title)).get();
    if (isTerminal) {
        connect(record, &CommandData::progressUpdated, this, &DigestReport::showProgress, Qt::QueuedConnection);
    }
    return record;
}

void DigestReport::reportRemoved(CommandData *record)
{
    const auto &digestRecord = static_cast<const DigestCommandData &>(*record);
    switch (digestRecord.getStatus()) {
    case CommandData::FINISHED:
        ++finished;
        break;
    case CommandData::CANCELLED:
        ++cancelled;
        break;
    default:
        ++failed;
        break;
    }
    bytes += digestRecord.getDigestedBytes();
    print((isTerminal ? eraseLine : QString()) + tableRow(digestRecord));
    if (finished + failed + cancelled == records.size()) {
        Q_EMIT allReported();
    }
}

void DigestReport::showProgress(CommandData *record)
{
    const auto &digestRecord = static_cast<const DigestCommandData &>(*record);
    const qint64 total = std::max<qint64>(digestRecord.getTotalBytes(), 1);
    const QString counts = u"[%1/%2] %3% "_s.arg(finished + failed + cancelled + 1)
                               .arg(records.size())
                               .arg(100 * std::min(digestRecord.getDigestedBytes(), total) / total);
    // The cursor returns to the start of the line, so that the next output, even a log line, overwrites it.
    print(eraseLine + counts + escapedPath(digestRecord.getTitle()).right(terminalColumns - counts.size()) + u'\r');
}

void DigestReport::printSummary()
{
    print(u"%1 finished, %2 failed, %3 cancelled, %4 bytes, %5 s\n"_s.arg(finished)
              .arg(failed)
              .arg(cancelled)
              .arg(bytes)
              .arg(static_cast<double>(sinceStart.elapsed()) / 1000, 0, 'f', 3));
}

bool DigestReport::hasFailures() const
{
    return failed > 0;
}

bool DigestReport::hasWriteFailed() const
{
    return output.status() != QTextStream::Ok;
}

void DigestReport::print(const QString &text)
{
    if (hasWriteFailed()) {
        return;
    }
    output << text << Qt::flush;
    if (hasWriteFailed()) {
        Q_EMIT writeFailed();
    }
}
