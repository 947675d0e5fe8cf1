#ifndef TARNWICK_COMMANDS_COMMANDQUEUETHREAD_H
#define TARNWICK_COMMANDS_COMMANDQUEUETHREAD_H

#include "CommandQueue.h"

#include <tarnwick_export.h>

#include <QThread>
#include <QtGlobal>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

/**
 * @brief A thread, the worker, that owns a CommandQueue and runs its process(); it sleeps between runs.
 *
 * Create it, start() it, and add commands to getCommandQueue(). At the end call stop(), then QThread::wait(), then
 * destroy it. The destructor neither stops nor waits, and must not be called while the thread runs.
 *
 *     CommandQueueThread thread;
 *     thread.start();
 *     thread.getCommandQueue().addCommand(QSharedPointer<MyCommand>::create(data));
 *     ...
 *     thread.stop();
 *     thread.wait();
 *
 * Wake-ups: CommandQueue::addCommand(), CommandQueue::finishCommandAllowed(true) while no run is under way, and
 * restart() wake the worker, which then calls CommandQueue::process(). The worker remembers a wake-up until the next
 * process() begins, so none is lost. A pause of the queue, by CommandQueue::pause() or by a command that requires user
 * action, voids the earlier wake-ups, so they do not end the pause. A wake-up after stop() ends the worker without
 * another process(). finishCommandAllowed(true) during a run has no effect, even if the queue has been paused in that
 * run: call restart() to end the pause.
 *
 * The first process() after start() needs no wake-up. It ends every earlier pause, even one made after start() has
 * returned. To start with a paused queue, add the commands later.
 *
 * Threads: stop(), restart() and getCommandQueue() may be called on any thread. The worker has no event loop; it
 * executes the commands and emits most of the queue's signals. The object and its queue live on the thread that created
 * them. An addCommand() or finishCommandAllowed(true) on that thread wakes the worker at once. On another thread, it
 * wakes the worker when the event loop of the creator's thread delivers the signal. It counts as a wake-up only then: a
 * pause made in between does not void it. If the creator's thread runs no event loop, call restart() after the add.
 *
 * The thread is called "CommandQueue" in a debugger, unless another object name is set before it is started. The
 * QObject parent is null.
 */
class TARNWICK_EXPORT CommandQueueThread : public QThread
{
    Q_OBJECT

public:
    /** Creates the worker of a default CommandQueue; does not start it. */
    CommandQueueThread();

    /** Creates the worker of @p commandQueue and owns that; null means a default CommandQueue. Does not start it. */
    explicit CommandQueueThread(std::unique_ptr<CommandQueue> commandQueue);

    /**
     * Neither stops the worker nor waits for it. The thread must have ended, and every call on other threads, including
     * stop(), must have returned. If the thread still runs, the process ends with QThread's fatal message. If the
     * object is never destroyed, the worker is terminated at an arbitrary point when the process ends.
     */
    ~CommandQueueThread() override;

    /** Returns the queue, valid for the life of this object. */
    CommandQueue &getCommandQueue();

    /** Returns the queue, valid for the life of this object. */
    const CommandQueue &getCommandQueue() const;

    /**
     * Abandons the queue: pauses it, cancels every listed command, and ends the worker when the running command, if
     * any, has returned. Every waiting command is CommandData::CANCELLED and removed when this returns. For the running
     * command, this calls Command::pause() and Command::cancel() and does not wait. A command that has just ended keeps
     * its final status. If the running command is listed twice, its second entry stays.
     *
     * May be called in any state of the worker, more than once, and by a command from its handleExecute(). It cannot be
     * undone: create a new object to continue. If the thread is started again, it makes one more process() and ends. A
     * command added after stop() is listed as QUEUEING and never executed, and no signal reports that: a client that
     * waits for the end of its commands must also stop waiting when it calls stop().
     *
     * Holds the queue's lock while it cancels: 20 to 50 ms for 100,000 commands, and longer if slots copy the list.
     *
     * Must not be called with the queue's lock held, since that inverts the lock order and can deadlock (asserted in
     * Debug builds). So do not call it
     * - in a slot connected directly to CommandQueue::commandAdded(), CommandQueue::commandRemoved() or
     *   CommandQueue::awaitingUserAction();
     * - in a slot connected directly to CommandData::statusChanged() of a waiting command that is being cancelled;
     * - in Command::canBeStarted(), Command::handleCancel(), Command::handlePause(), Command::getCommandData() or
     *   CommandScheduler::schedule();
     * - in code that one of these calls.
     */
    void stop();

    /**
     * Wakes the worker; this is the way to end a pause. The pause ends only if a command can start then. Never blocks,
     * not even on the queue's lock, so it may be called anywhere. Has no effect on a worker that has ended.
     */
    void restart();

protected Q_SLOTS:
    /** Wakes the worker, as restart() does. Connected to CommandQueue::commandAdded(). */
    void processQueue();

    /**
     * Wakes the worker if @p finishAllowed is true and CommandQueue::isProcessing() is false; a run under way looks at
     * the list again by itself. Connected to CommandQueue::finishCommandAllowed().
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
    std::mutex mutex; // held by stop() until all commands are cancelled
    std::atomic<bool> stopRequested = false; // written under mutex
    std::mutex wakeUpMutex; // a leaf: nothing is called while it is held
    std::optional<quint64> pendingWakeUp; // the queue's pause count at the latest wake-up; guarded by wakeUpMutex
};

#endif
