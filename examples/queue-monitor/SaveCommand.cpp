#include "SaveCommand.h"

#include "DigestCommandData.h"
#include "EscapedPath.h"
#include "SaveCommandData.h"

#include <QFileInfo>
#include <QSaveFile>

namespace {

QByteArray checksumLine(const DigestCommandData &record)
{
    const QString path = escapedPath(record.getPath());
    return (path == record.getPath() ? QByteArray() : QByteArray("\\")) + record.getDigest().toHex() + "  "
        + path.toUtf8() + '\n';
}

} // namespace

SaveCommand::SaveCommand(SaveCommandData *data, std::vector<const DigestCommandData *> digests)
    : Command(data)
    , data(data)
    , digests(std::move(digests))
{
}

SaveCommand::~SaveCommand() = default;

bool SaveCommand::canBeStarted() const
{
    return true;
}

bool SaveCommand::isFinished()
{
    return finished;
}

void SaveCommand::handleExecute()
{
    if (!data->isOverwritingAllowed() && QFileInfo::exists(data->getDescription())) {
        fail(QFileDevice::OpenError, tr("A file of this name has come to exist."));
        return;
    }
    QSaveFile file(data->getDescription());
    if (!file.open(QIODevice::WriteOnly)) {
        fail(file.error(), file.errorString());
        return;
    }
    const bool written = writeLines(file);
    if (isCancelled()) {
        return; // nothing was committed
    }
    if (!written || !file.commit()) {
        fail(file.error(), file.errorString());
        return;
    }
    finished = true;
}

bool SaveCommand::writeLines(QSaveFile &file) const
{
    for (const DigestCommandData *const record : digests) {
        if (isCancelled()) {
            return false;
        }
        if (record->getStatus() == CommandData::FINISHED && file.write(checksumLine(*record)) < 0) {
            return false;
        }
    }
    return true;
}

void SaveCommand::fail(int code, const QString &message)
{
    // The code first, since the message is logged with it; the status last, since its listeners read both.
    data->setErrorCode(code);
    data->setErrorMessage(message);
    setError(code);
}
