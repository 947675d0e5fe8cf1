#ifndef QUEUEMONITOR_COMMANDLISTMODEL_H
#define QUEUEMONITOR_COMMANDLISTMODEL_H

#include <commands/CommandData.h>

#include <QAbstractListModel>
#include <QHash>
#include <QSet>
#include <QTimer>

#include <memory>
#include <vector>

class CommandQueue;
class DigestCommandData;

/**
 * @brief Lists commands by their records, which it owns, while they wait, run, and have left the queue.
 *
 * A row shows the state of the record at the last refresh. Signals of the queue and the records only mark rows as out
 * of date; a refresh follows within a frame or two and reads each marked row once. So the cost depends on the number of
 * frames, not on the number of signals: a fast queue emits a hundred thousand in a second.
 *
 * Ownership: a queued signal names the record and may arrive when the command is already destroyed. So create an object
 * of this class before the queue and destroy it after the queue. In between, only clear() destroys records, when the
 * queue lists none of their commands. This class listens to no signal that names a record after its removal: it does
 * not use commandFinished().
 *
 * Threads: everything here happens on the thread that created the object. All connections are queued, so no slot runs
 * on the worker, nor with the queue's lock held.
 */
class CommandListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /** The roles of a row besides DisplayRole, its title. */
    enum Role {
        StatusRole = Qt::UserRole, ///< CommandData::Status as int
        ProgressRole, ///< how much of the work is done, in percent
        DetailRole, ///< the error message and the path, the digest, or the path
        DigestRole ///< the digest in hexadecimal digits, empty if there is none
    };

    /** Counts of the rows, except for `unanswered` of those with digests of files. */
    struct Summary
    {
        int digests = 0; ///< all of them
        int finished = 0;
        int failed = 0;
        int cancelled = 0;
        int unanswered = 0; ///< rows whose command needs an answer
        qint64 digestedBytes = 0;
        qint64 remainingBytes = 0; ///< of the commands that have not ended
    };

    CommandListModel();
    ~CommandListModel() override;

    /** Connects itself to the signals of @p queue. */
    void follow(const CommandQueue &queue);

    /** Appends a row for each of @p records. Must be called before their commands are added to a queue. */
    void append(std::vector<std::unique_ptr<CommandData>> records);

    /** Prepares a record whose command has left the queue for a new command, which is added to a queue after this. */
    void relist(const CommandData *record);

    /** Removes all rows and destroys their records, if no command is listed any more; otherwise does nothing. */
    void clear();

    /** Returns whether a command with this reference is, or is about to be, listed by a queue. */
    bool isListed(const QString &reference) const;

    /** Returns how many commands are listed by a queue or about to be. */
    qsizetype getListedCount() const;

    /** Returns the counts of all rows, as they are shown. */
    const Summary &getSummary() const;

    /** Returns whether a command with @p status is done with, successfully or not. */
    static bool hasEnded(CommandData::Status status);

    /** Returns the record of a row, valid until clear(). */
    CommandData *getRecord(int row) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    /** Rows were added, removed or changed. Emitted once for each refresh. */
    void refreshed();

private:
    // The numbers are those shown.
    struct Row
    {
        std::unique_ptr<CommandData> record;
        const DigestCommandData *digest = nullptr; // the record, if it is one of a digest
        CommandData::Status status = CommandData::OTHER;
        qint64 digestedBytes = 0;
        qint64 remainingBytes = 0;
        bool isOutdated = false;
    };

    void markOutdated(const CommandData *record);
    void markRemoved(const CommandData *record);
    void refresh();
    void update(Row &row);
    void count(const Row &row, int sign);
    static int progressOf(const Row &row);
    static QString digestOf(const Row &row);
    static QString detailOf(const Row &row);

    std::vector<Row> rows;
    QHash<const CommandData *, int> rowOfRecord;
    QSet<QString> listedReferences;
    Summary summary;
    std::vector<int> outdatedRows;
    QTimer refreshTimer;
};

#endif
