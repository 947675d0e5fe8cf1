#ifndef QUEUEMONITOR_COMMANDLISTMODEL_H
#define QUEUEMONITOR_COMMANDLISTMODEL_H

#include <commands/CommandData.h>

#include <QAbstractListModel>
#include <QHash>
#include <QSet>
#include <QTimer>

#include <map>
#include <memory>
#include <vector>

class CommandQueue;

/**
 * @brief Lists commands by their records, which it owns, while they wait, run, and have left the queue.
 *
 * A row shows the record as it stood at the last refresh. Signals of the queue and the records only note which rows are
 * out of date; a refresh follows within a frame or two, reads each of these once and reports neighbours together. So
 * the cost of showing follows the frames and not the signals, of which a fast queue emits a hundred thousand a second.
 *
 * Ownership: a queued signal arrives when the queue has gone on and the command, as a rule, is gone; what it names is
 * the record. So an object of this class is created before the queue and destroyed after it, and records go in between
 * only by clear(), when the queue has let go of all of them. The signals that this class listens to name a record for
 * the last time when they report its removal; commandFinished(), which can come later, is none of them.
 *
 * Threads: everything here happens on the thread that created the object. All connections are queued, so no slot runs
 * on the worker, nor with the queue's lock held.
 */
class CommandListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /** What a row has beside its title, the DisplayRole. */
    enum Role {
        StatusRole = Qt::UserRole, ///< CommandData::Status as int
        StatusNameRole, ///< the status in words
        KindRole, ///< the kind of command, shortened to its initials
        ProgressRole, ///< how much of the work is done, in percent
        DetailRole ///< the error message, the digest, or what the command works on
    };

    CommandListModel();
    ~CommandListModel() override;

    /** Connects itself to the signals of @p queue. */
    void follow(const CommandQueue &queue);

    /** Appends a row for each of @p records. To be called before their commands are given to a queue. */
    void append(std::vector<std::unique_ptr<CommandData>> records);

    /** Removes all rows and destroys their records, if no command is listed any more; otherwise does nothing. */
    void clear();

    /** Returns whether a command with this reference is, or is about to be, listed by a queue. */
    bool isListed(const QString &reference) const;

    /** Returns how many commands are listed by a queue or about to be. */
    qsizetype getListedCount() const;

    /** Returns how many rows show @p status. */
    int getCount(CommandData::Status status) const;

    /** Returns the record of a row, valid until clear(). */
    CommandData *getRecord(int row) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    /** Rows have come, gone or changed. Once a refresh, whatever the number of rows. */
    void refreshed();

private:
    struct Row
    {
        std::unique_ptr<CommandData> record;
        CommandData::Status status = CommandData::OTHER; // as shown
        int progress = 0; // as shown
        bool isOutdated = false;
    };

    void markOutdated(const CommandData *record);
    void markRemoved(const CommandData *record);
    void refresh();
    void update(Row &row);

    std::vector<Row> rows;
    QHash<const CommandData *, int> rowOfRecord;
    QSet<QString> listedReferences;
    std::map<CommandData::Status, int> counts; // of the rows, by the status that they show
    std::vector<int> outdatedRows;
    QTimer refreshTimer;
};

#endif
