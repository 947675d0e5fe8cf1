#ifndef QUEUEMONITOR_QUEUECONTROLLER_H
#define QUEUEMONITOR_QUEUECONTROLLER_H

#include "CommandListModel.h"
#include "FolderListing.h"

#include <commands/CommandQueueThread.h>

class SaveCommandData;

/**
 * @brief Runs digests on a worker thread and keeps their records in a model: the window without the window.
 *
 * Threads: everything here happens on the thread that created the object. The connections to the worker and its queue
 * are queued, so no slot runs on the worker, nor with the queue's lock held.
 */
class QueueController : public QObject
{
    Q_OBJECT

public:
    enum class State { Idle, Running, Paused, AwaitingAnswer, Stopping };

    QueueController();

    /** Stops the worker and waits for the chunk of work that it is at. */
    ~QueueController() override;

    CommandListModel &getModel();
    State getState() const;

    /** Returns the record that waits for an answer(), or null. */
    const SaveCommandData *getAwaitingRecord() const;

    /** Queues a digest for each of @p files, but for those that wait already. A pause stays a pause. */
    void digest(const std::vector<ListedFile> &files);

    /** Queues the saving of all digests that stand in the list to @p target. A pause stays a pause. */
    void saveDigests(const QString &target);

    void pause();
    void goOn();

    /** Cancels the commands of these records, as far as they have not ended. */
    void cancel(const std::vector<const CommandData *> &records);

    /** Answers the question whether the command that waits for it may overwrite its target; if not, it is cancelled. */
    void answer(bool overwrite);

    /** Cancels everything. What is added once the state is Idle again runs on a new worker. */
    void stop();

Q_SIGNALS:
    /** The state may have changed. */
    void stateChanged();

private:
    void startWorker();
    void renewWorker();
    void awaitAnswer(CommandData *record);
    void restartUnlessHeld();
    void add(const std::vector<QSharedPointer<Command>> &commands, std::vector<std::unique_ptr<CommandData>> records);
    CommandQueue &queue() const;

    CommandListModel model; // with the records, so it is made before the worker and destroyed after it
    std::unique_ptr<CommandQueueThread> worker;
    SaveCommandData *awaitingRecord = nullptr;
    bool isHeld = false; // by pause(), whatever else has paused the queue or woken it
    bool isStopping = false;
};

#endif
