#ifndef FILEDIGEST_DIGESTCOMMAND_H
#define FILEDIGEST_DIGESTCOMMAND_H

#include <commands/Command.h>

#include <memory>

class DigestCommandData;
class QCryptographicHash;
class QFile;

/**
 * @brief Computes the SHA-256 digest of one file, chunk by chunk.
 *
 * Cancel and pause take effect at the next chunk. A paused command returns unfinished, closes the file and keeps its
 * state; when it is executed again, it continues there. A file that cannot be read is an error with the code of
 * QFileDevice::FileError and its text; when the command is executed again, it starts from the beginning.
 */
class DigestCommand : public Command
{
    Q_OBJECT

public:
    /** @param data the record, not owned; must outlive the command and every delivery of a signal that names it */
    explicit DigestCommand(DigestCommandData *data);

    ~DigestCommand() override;

    bool canBeStarted() const override;
    bool isFinished() override;

protected:
    void handleExecute() override;

private:
    void digest(QFile &file);
    void fail(const QFile &file);

    DigestCommandData *data;
    std::unique_ptr<QCryptographicHash> hash; // null unless a digest has been started
    bool finished = false; // used only on the thread that drives the queue
};

#endif
