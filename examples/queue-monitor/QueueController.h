#ifndef QUEUEMONITOR_QUEUECONTROLLER_H
#define QUEUEMONITOR_QUEUECONTROLLER_H

#include "CommandListModel.h"
#include "FolderListing.h"
#include "SaveCommandData.h"

#include <commands/CommandQueueThread.h>

class DigestCommandData;

/**
 * @brief Runs digests on a worker thread and keeps their records in a model. Knows nothing of the window.
 *
 * Threads: everything here happens on the thread that created the object. The connections to the worker and its queue
 * are queued, so no slot runs on the worker or while the queue's mutex is held.
 */
class QueueController : public QObject
{
    Q_OBJECT

public:
    enum class State { Idle, Running, Paused, Stopping };

    QueueController();

    /** Stops the worker and waits for the chunk of work that it is at. */
    ~QueueController() override;

    CommandListModel &getModel();
    State getState() const;

    /** Queues a digest of each of @p files, except for those that are queued already. Does not end a pause. */
    void digest(const std::vector<ListedFile> &files);

    /** Queues the saving of all digests in the model to @p target. Does not end a pause. */
    void saveDigests(const QString &target);

    void pause();
    void goOn();

    /** Cancels the commands of these records, except for those that have ended. */
    void cancel(const std::vector<CommandData *> &records);

    /** Queues these records again, except for those that are queued or have finished. Does nothing while stopping. */
    void tryAgain(const std::vector<CommandData *> &records);

    /** Lets the command of @p record overwrite its target or cancels it. Does nothing if it needs no answer. */
    void answer(SaveCommandData *record, bool overwrite);

    /** Cancels all commands. Those added once the state is Idle again run on a new worker. */
    void stop();

Q_SIGNALS:
    /** The state may have changed. */
    void stateChanged();

    /** The command of @p record was queued and needs an answer(). The queue stops before it. */
    void answerNeeded(SaveCommandData *record);

private:
    void startWorker();
    void renewWorker();
    void restartIfAnswered(const CommandData *record);
    void restartUnlessHeld();
    QSharedPointer<Command> makeSaveCommand(SaveCommandData *record);
    void add(const QSharedPointer<Command> &command);
    CommandQueue &queue() const;

    CommandListModel model; // owns the records, so it is created before the worker and destroyed after it
    std::unique_ptr<CommandQueueThread> worker;
    bool isHeld = false; // by pause(); other events pause and wake the queue, too
    bool isStopping = false;
};

#endif
