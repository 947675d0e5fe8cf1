#include "DigestCommand.h"

#include "DigestCommandData.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>

namespace {

constexpr qsizetype chunkSize = 65536; // bytes; small enough for a prompt cancel, large enough to be fast
constexpr qint64 progressInterval = 50; // milliseconds; nobody sees more frequent changes

} // namespace

DigestCommand::DigestCommand(DigestCommandData *data)
    : Command(data)
    , data(data)
{
}

DigestCommand::~DigestCommand() = default;

bool DigestCommand::canBeStarted() const
{
    return true;
}

bool DigestCommand::isFinished()
{
    return finished;
}

void DigestCommand::handleExecute()
{
    finished = false;
    if (!hash) {
        hash = std::make_unique<QCryptographicHash>(QCryptographicHash::Sha256);
        data->setDigestedBytes(0);
    }
    QFile file(data->getPath());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !file.seek(data->getDigestedBytes())) {
        fail(file);
        return;
    }
    data->setTotalBytes(file.size());
    digest(file);
}

void DigestCommand::digest(QFile &file)
{
    QByteArray chunk(chunkSize, Qt::Uninitialized);
    QElapsedTimer sinceProgress;
    sinceProgress.start();
    while (!isCancelled() && !isPaused()) {
        const qint64 length = file.read(chunk.data(), chunk.size());
        if (length < 0) {
            fail(file);
            return;
        }
        if (length == 0) {
            data->setDigest(hash->result());
            hash.reset();
            finished = true;
            return;
        }
        hash->addData(QByteArrayView(chunk.constData(), length));
        data->setDigestedBytes(data->getDigestedBytes() + length);
        if (sinceProgress.hasExpired(progressInterval)) {
            sinceProgress.restart();
            Q_EMIT data->progressUpdated(data);
        }
    }
}

void DigestCommand::fail(const QFile &file)
{
    hash.reset();
    // The code first, since the message is logged with it; the status last, since its listeners read both.
    data->setErrorCode(file.error());
    data->setErrorMessage(file.errorString());
    setError(file.error());
}
