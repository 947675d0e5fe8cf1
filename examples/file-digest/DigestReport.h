#ifndef FILEDIGEST_DIGESTREPORT_H
#define FILEDIGEST_DIGESTREPORT_H

#include <QElapsedTimer>
#include <QObject>
#include <QTextStream>

#include <memory>
#include <vector>

class CommandData;
class CommandQueue;
class DigestCommandData;

/**
 * @brief Owns the records of all files, follows the queue and prints.
 *
 * Prints one row for each command that has left the queue: the digest, two blanks, the status in nine columns, two
 * blanks, and the title, as sha256sum writes it. A title with a backslash, a line feed or a carriage return is escaped,
 * and its row begins with a backslash. If the titles are paths relative to a folder,
 * `sed -nE 's/^(\\?[0-9a-f]{64})  FINISHED   /\1  /p' | sha256sum -c` checks the table in that folder. If a file has no
 * digest, its row has a dash instead.
 *
 * On a terminal, the last line shows the progress of the current file.
 *
 * Ownership: this object owns the records. A queued signal may arrive when its command is already destroyed, so this
 * object is created before the queue and destroyed after it, and destroys no record in between.
 *
 * Threads: everything here happens on the thread that created the object. The connections to the queue are queued, so
 * no slot runs on the worker or while the queue's mutex is held.
 */
class DigestReport : public QObject
{
    Q_OBJECT

public:
    /** @param isTerminal whether standard output is a terminal */
    explicit DigestReport(bool isTerminal);

    ~DigestReport() override;

    /** Connects itself to the signals of @p queue. */
    void follow(const CommandQueue &queue);

    /** Creates the record of one file, which this object owns. Must be called before the event loop runs. */
    DigestCommandData *addRecord(const QString &path, const QString &title);

    /** Prints how many files were finished, failed and cancelled. */
    void printSummary();

    /** Returns whether a file could not be read. */
    bool hasFailures() const;

    /** Returns whether a write to standard output has failed. Nothing is printed after that. */
    bool hasWriteFailed() const;

Q_SIGNALS:
    /** The row of every file is printed. */
    void allReported();

    /** Standard output cannot be written. Emitted once. */
    void writeFailed();

private:
    void reportRemoved(CommandData *record);
    void showProgress(CommandData *record);
    void print(const QString &text);

    QTextStream output{stdout};
    const bool isTerminal;
    std::vector<std::unique_ptr<DigestCommandData>> records;
    std::size_t finished = 0;
    std::size_t failed = 0;
    std::size_t cancelled = 0;
    qint64 bytes = 0;
    QElapsedTimer sinceStart;
};

#endif
