#ifndef FILEDIGEST_DIGESTREPORT_H
#define FILEDIGEST_DIGESTREPORT_H

#include <QElapsedTimer>
#include <QObject>

#include <memory>
#include <vector>

class CommandData;
class CommandQueue;
class DigestCommandData;

/**
 * @brief Owns the records of all files, follows the queue and prints.
 *
 * Each command gets its row of the table when it has left the queue: the digest, two blanks, the status in nine
 * columns, two blanks, and the path relative to the folder, written as sha256sum writes it: if the path holds a
 * backslash, a line feed or a carriage return, these are escaped and the row begins with a backslash. So
 * `sed -nE 's/^(\\?[0-9a-f]{64})  FINISHED   /\1  /p' | sha256sum -c` checks the table in that folder. A file without
 * digest has a dash in its place.
 *
 * On a terminal a last line shows how far the current file is.
 *
 * Ownership: a queued signal arrives when the queue has gone on and the command is gone as a rule; what it names is the
 * record. So the records belong to this object, which is created before the queue and destroyed after it, and none is
 * given up in between.
 *
 * Threads: everything here happens on the thread that created the object. It is connected to the queue by queued
 * connections, so no slot runs on the worker, nor with the queue's lock held.
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

    /** Makes the record of one file, which this object owns. To be called before the event loop runs. */
    DigestCommandData *addRecord(const QString &path, const QString &title);

    /** Prints what came of all files. */
    void printSummary() const;

    /** Returns whether the command of any file came to an error. */
    bool hasFailures() const;

Q_SIGNALS:
    /** Every file has its row. */
    void allReported();

private:
    void reportRemoved(CommandData *record);
    void showProgress(CommandData *record);

    const bool isTerminal;
    std::vector<std::unique_ptr<DigestCommandData>> records;
    std::size_t finished = 0;
    std::size_t failed = 0;
    std::size_t cancelled = 0;
    qint64 bytes = 0;
    QElapsedTimer sinceStart;
};

#endif
