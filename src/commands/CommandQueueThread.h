#ifndef TARNWICK_COMMANDS_COMMANDQUEUETHREAD_H
#define TARNWICK_COMMANDS_COMMANDQUEUETHREAD_H

#include "CommandQueue.h"

#include <tarnwick_export.h>

#include <QThread>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

/**
 * @brief The worker: a thread that owns a CommandQueue and runs its process(), asleep between runs.
 *
 * Create it, start() it, add commands to getCommandQueue(). At the end, in this order: stop(), QThread::wait(),
 * destroy. The destructor does neither of the first two, and destroying a thread that still runs is an error.
 *
 *     CommandQueueThread thread;
 *     thread.start();
 *     thread.getCommandQueue().addCommand(QSharedPointer<MyCommand>::create(data));
 *     ...
 *     thread.stop();
 *     thread.wait();
 *
 * Wake-ups: a command added, finishCommandAllowed(true) on an idle queue, and restart() wake the worker, which then
 * calls CommandQueue::process(). A wake-up is remembered until a process() that begins after it, so none is lost. A
 * pause of the queue, by CommandQueue::pause() or by a command that requires user action, voids the wake-ups before it,
 * so none undoes a later pause. A wake-up after stop() ends the worker without another process().
 *
 * Threads: stop(), restart() and getCommandQueue() may be called on any thread. The worker has no event loop; it
 * executes the commands and emits most of the queue's signals. The object and its queue live on the thread that created
 * them: a command added there wakes the worker at once, one added on another thread when the creator's event loop
 * delivers the signal, and so it is with a permission. A client that adds on other threads while the creator runs no
 * event loop calls restart() itself.
 *
 * The thread is called "CommandQueue" in a debugger, unless another object name is set before it is started. The
 * QObject parent is null.
 */
class TARNWICK_EXPORT CommandQueueThread : public QThread
{
    Q_OBJECT

public:
    /** Makes the worker of a default CommandQueue; does not start it. */
    CommandQueueThread();

    /** Makes the worker of @p commandQueue, which it owns; null stands for a default CommandQueue. Does not start it.
     */
    explicit CommandQueueThread(std::unique_ptr<CommandQueue> commandQueue);

    /**
     * Neither stops the worker nor waits for it: the thread has to have ended, and every call on other threads, stop()
     * among them, to have returned. While the thread runs, this ends the process by a fatal message, that of QThread. A
     * worker that is never destroyed breaks off wherever it is when the process ends.
     */
    ~CommandQueueThread() override;

    /** Returns the queue, valid for the life of this object. */
    CommandQueue &getCommandQueue();

    /** Returns the queue, valid for the life of this object. */
    const CommandQueue &getCommandQueue() const;

    /**
     * Abandons the queue: pauses it, cancels every listed command, and has the worker end as soon as the running
     * command, if any, has returned. What waits is CommandData::CANCELLED and removed when this returns; the running
     * command is told by Command::pause() and Command::cancel(), but not waited for, and one that has just ended stays
     * as it ended. If the running command is listed twice, its second entry stays.
     *
     * May be called in any state of the worker, more than once, and by a command from its handleExecute(). It cannot be
     * undone: to work again takes a new object; a thread that is started again makes one more process() and ends.
     *
     * Must not be called where the queue's lock is held: from a slot connected directly to
     * CommandQueue::commandAdded(), CommandQueue::commandRemoved() or CommandQueue::awaitingUserAction(), to the
     * statusChanged() of a command that is being cancelled while it waits, or to what such a slot or stop() itself
     * triggers, nor from canBeStarted(), handleCancel(), handlePause() or a scheduler. The locks would be taken in the
     * reverse order, and two threads wait for each other for ever.
     */
    void stop();

    /**
     * Wakes the worker, which is how a paused queue goes on once a command can start. Waits for nothing, not even for
     * the queue's lock, so it may be called anywhere. Does nothing for a worker that has ended.
     */
    void restart();

protected Q_SLOTS:
    /** Wakes the worker, as restart() does. Connected to CommandQueue::commandAdded(). */
    void processQueue();

    /**
     * If @p finishAllowed, wakes the worker unless a run is under way, which looks at the list again by itself.
     * Connected to CommandQueue::finishCommandAllowed().
     */
    void finishCommandAllowed(bool finishAllowed);

protected:
    /** The worker's loop: process(), then one process() for each wake-up, until stop(). */
    void run() override;

private:
    TARNWICK_NO_EXPORT void wakeUp();
    TARNWICK_NO_EXPORT std::optional<quint64> waitForWakeUp();

    std::unique_ptr<CommandQueue> commandQueue;
    std::condition_variable condition; // the worker sleeps on it, with wakeUpMutex
    std::mutex mutex; // held by stop() for its whole work
    std::atomic<bool> stopRequested = false; // written under mutex
    std::mutex wakeUpMutex; // a leaf: nothing is called while it is held
    std::optional<quint64> pendingWakeUp; // the queue's pause count at the latest wake-up; guarded by wakeUpMutex
};

#endif
