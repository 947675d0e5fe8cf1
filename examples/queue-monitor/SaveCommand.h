#ifndef QUEUEMONITOR_SAVECOMMAND_H
#define QUEUEMONITOR_SAVECOMMAND_H

#include <commands/Command.h>

#include <vector>

class DigestCommandData;
class QSaveFile;
class SaveCommandData;

/**
 * @brief Writes the digests of the files that are finished by then to a file that `sha256sum -c` reads.
 *
 * The file is complete or not written at all: a cancel counts at the next line and keeps the previous file. If
 * another file has been created there in the meantime, that is an error, as if it cannot be written. A pause does not
 * interrupt the command.
 */
class SaveCommand : public Command
{
    Q_OBJECT

public:
    /**
     * @param data the record, not owned
     * @param digests the records to take the digests from, not owned
     *
     * All of them have to outlive the command and every delivery of a signal that names them.
     */
    SaveCommand(SaveCommandData *data, std::vector<const DigestCommandData *> digests);

    ~SaveCommand() override;

    bool canBeStarted() const override;
    bool isFinished() override;

protected:
    void handleExecute() override;

private:
    bool writeLines(QSaveFile &file) const;
    void fail(int code, const QString &message);

    SaveCommandData *data;
    const std::vector<const DigestCommandData *> digests;
    bool finished = false; // used by the driving thread alone
};

#endif
