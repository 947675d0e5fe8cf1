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
 * Cancel and pause count at the next chunk. A paused command comes back unfinished, closes the file and keeps what it
 * has computed: executed again, it goes on where it left off. A file that cannot be read is an error with the code of
 * QFileDevice::FileError and its text; executed again, the command starts anew.
 */
class DigestCommand : public Command
{
    Q_OBJECT

public:
    /** @param data the record, not owned; has to outlive the command and every delivery of a signal that names it */
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
    std::unique_ptr<QCryptographicHash> hash; // null unless a digest is begun
    bool finished = false; // used by the driving thread alone
};

#endif
