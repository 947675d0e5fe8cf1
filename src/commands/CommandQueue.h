#ifndef TARNWICK_COMMANDS_COMMANDQUEUE_H
#define TARNWICK_COMMANDS_COMMANDQUEUE_H

#include "Command.h"
#include "CommandData.h"
#include "CommandScheduler.h"

#include <tarnwick_export.h>

#include <QList>
#include <QObject>
#include <QRecursiveMutex>
#include <QSharedPointer>
#include <QString>
#include <QVarLengthArray>
#include <QtGlobal>

#include <atomic>
#include <memory>

/**
 * @brief An ordered list of commands, executed one at a time by the thread that calls process().
 *
 * That thread is usually the worker of a CommandQueueThread. Each call of process() is a run: it takes the first
 * command that can start, executes it, removes it when it is done, and continues until nothing can start or the queue
 * is paused. A command stays listed while it is executed.
 *
 * When execute() returns, the first of these that applies decides:
 * - Command::isFinished() is true and the status is not CommandData::ERR: the status becomes FINISHED, the command is
 *   removed;
 * - Command::isCancelled() is true: the status becomes CANCELLED, the command is removed;
 * - the status is CommandData::ERR: handleCommandInError() decides; by default the command is removed;
 * - otherwise the status becomes QUEUEING, and the command stays listed and is executed again when it is picked again.
 *
 * Pause: only a process() that finds a command that can start ends a pause. On the queue of a CommandQueueThread, every
 * wake-up after the pause leads to a process(): CommandQueueThread::restart(), but also addCommand() and, while no run
 * is under way, finishCommandAllowed(true). On a thread other than the creator's, an addCommand() or
 * finishCommandAllowed(true) counts when the creator's event loop delivers the signal, so a call from before the pause
 * may end the pause. The first run of a started thread ends every earlier pause, even one made after
 * CommandQueueThread::start() has returned. A pause() just before a command's execute() has no effect on that command,
 * since execute() clears its flag: the queue pauses after it.
 *
 * Threads: one thread at a time drives the queue, by process() and what that calls. Every other public operation may be
 * called on any thread at any time. The queue's recursive lock is not held while a command is executed. It is held
 * - in slots connected directly to commandAdded(), commandRemoved() and awaitingUserAction();
 * - in slots connected directly to CommandData::statusChanged() of a waiting command that is being cancelled;
 * - in Command::canBeStarted(), Command::handleCancel() and Command::handlePause(), and in Command::getCommandData()
 *   where the queue calls it under the lock;
 * - in CommandScheduler::schedule().
 *
 * Code in these places may call the queue and CommandQueueThread::restart(). It must not block on a thread that
 * needs the queue, and must not call CommandQueueThread::stop().
 *
 * Ownership: the queue shares its commands and owns its scheduler. It releases references to commands only after it has
 * unlocked the mutex, except inside a critical section that a subclass opens itself. The destructor cancels nothing,
 * waits for nothing and emits nothing; no thread may be driving the queue then. A record must exist until every signal
 * that names it is delivered; a queued delivery may arrive after the command is destroyed. The QObject parent is null.
 */
class TARNWICK_EXPORT CommandQueue : public QObject
{
    Q_OBJECT

public:
    /** Creates an empty queue that appends new commands. */
    CommandQueue();

    /** Creates an empty queue with the policy @p scheduler; null means a CommandScheduler, which appends. */
    explicit CommandQueue(std::unique_ptr<CommandScheduler> scheduler);

    ~CommandQueue() override;

    /**
     * Lets the scheduler insert @p command into the list and emits commandAdded(). Before it takes the lock, sets the
     * status to CommandData::QUEUEING unless it is CommandData::REQUIRE_USER_ACTION. Starts nothing by itself. A
     * command may be listed more than once. Null has no effect.
     *
     * After CommandQueueThread::stop() the command is listed as QUEUEING and never executed; no signal reports that.
     */
    void addCommand(QSharedPointer<Command> command);

    /**
     * Cancels @p command, with the lock held. A waiting command is CommandData::CANCELLED and removed when this
     * returns. For the current command, this only sets the flag and calls Command::handleCancel(); the queue decides
     * about it when execute() returns. A command that is not listed is treated like a waiting one: commandRemoved() is
     * emitted for it, too. Null has no effect.
     *
     * When a command in CommandData::REQUIRE_USER_ACTION has paused the queue, cancelling it does not end the pause.
     */
    void cancelCommand(QSharedPointer<Command> command);

    /**
     * Cancels the first listed command with exactly this reference, as cancelCommand() does. Does nothing if there is
     * none. Searches the list from the front: 20 to 100 ms for a command in the middle of a million.
     */
    void cancelCommandByReference(const QString &reference);

    /**
     * Executes commands on the calling thread. Returns when none can start or the queue is paused. Ends a pause that
     * began before the call. If nothing can start, it returns at once, emits nothing and leaves a pause as it is.
     *
     * Must not be called again before it returns, neither on another thread nor by a command or slot that it runs;
     * asserted in Debug builds while commands may still be started.
     */
    void process();

    /**
     * Pauses the queue, so that it starts nothing further, and pauses the current command: sets its flag and calls
     * Command::handlePause(), with the lock held.
     */
    void pause();

    /**
     * Returns the list, the running command included. Implicitly shared: copied only if the queue changes while the
     * result is alive.
     */
    const QList<QSharedPointer<Command>> getCommands() const;

    /**
     * Returns whether the list contains a command with the reference of @p command; false for null. Searches the list,
     * at the same cost as cancelCommandByReference().
     */
    bool hasCommand(Command *command);

    /** Returns whether commands are listed and the queue is not paused; none of them need be running. */
    bool isActive() const;

    /** Returns whether the queue is paused. */
    bool isPaused() const;

    /**
     * Returns whether a run of process() is under way and may start a command: from before its commandStarted() until
     * the run has looked at the list for the last time, before its commandFinished().
     */
    bool isProcessing() const;

Q_SIGNALS:
    /** @p command was added. Emitted on the thread that adds it, with the lock held. */
    void commandAdded(QSharedPointer<Command> command);

    /**
     * The command of @p data has left the list, or one that is not listed was cancelled. The status is FINISHED,
     * CANCELLED or ERR, unless a slot has already changed it, for example by adding the command again. Emitted on the
     * driving thread or on the thread that cancels the command, with the lock held. The command may be destroyed when a
     * queued delivery arrives.
     */
    void commandRemoved(CommandData *data);

    /**
     * The command of @p data is next, but its status is CommandData::REQUIRE_USER_ACTION: it was not executed, stays
     * listed, and the queue is paused. Emitted on the driving thread, with the lock held.
     *
     * To answer, change the status or cancel the command, then let process() be called again, for example by
     * CommandQueueThread::restart(). In a slot connected directly the command is still the current one, so cancelling
     * it there only sets its flag.
     *
     * An add or a restart before the answer makes the queue emit this again. That emission pauses the queue again and
     * voids earlier wake-ups, which may include that of the answer. So respond to every emission: if the status has
     * been changed already, call restart() alone.
     */
    void awaitingUserAction(CommandData *data);

    /**
     * A run of process() begins; the command of @p data is the first that can start. Emitted once for each run, not for
     * each command, on the driving thread, without the lock. To follow a command, use CommandData::statusChanged() and
     * commandRemoved().
     */
    void commandStarted(CommandData *data);

    /**
     * The run of process() that began with @p data has ended, even if it executed other commands after that one.
     * Emitted once for each run, on the driving thread, without the lock.
     */
    void commandFinished(CommandData *data);

    /**
     * Emitted by clients and commands, never by the queue. True asks an idle CommandQueueThread to look at the list
     * again, for example because a command can now be started.
     */
    void finishCommandAllowed(bool finishAllowed);

protected Q_SLOTS:
    /**
     * One step of process(): picks the next command and executes it, on the calling thread. Does nothing while the
     * queue is paused. If nothing can start, logs the warning "there are no commands left to process".
     */
    void startNextCommand();

protected:
    /**
     * Returns the first listed command that can be started, or null. Calls only Command::canBeStarted(), with the lock
     * held, on the commands of a snapshot of the list, until one returns true.
     */
    QSharedPointer<Command> getNextCommandThatCanBeStarted();

    /**
     * Removes the first entry of @p command, which must not be null, from the list and emits commandRemoved(), with the
     * lock held. Emits it also if there was no entry.
     */
    void removeCommand(QSharedPointer<Command> command);

    /**
     * Handles an error of the current command, on the driving thread, without the lock. By default removes the command,
     * and the queue continues. An override must
     * - remove the command or leave it listed;
     * - clear currentCommand with the mutex locked;
     * - if it leaves the command listed, test Command::isCancelled() in the same critical section and remove the
     * command if it is cancelled: a cancel of the current command relies on its removal here.
     */
    virtual void handleCommandInError();

    /** The commands in order of consideration, the running one included. Guarded by mutex. */
    QList<QSharedPointer<Command>> commands;

    /** Guards commands, currentCommand and the state of the queue. */
    mutable QRecursiveMutex mutex;

    /**
     * The current command: being started or executed; null if there is none. Only the driving thread writes it, with
     * the mutex locked, so that thread may read it without the mutex.
     */
    QSharedPointer<Command> currentCommand;

private:
    friend class CommandQueueThread;

    // Functions that are not exported may change in any version.

    // For CommandQueueThread: a later pause voids its wake-ups, see CommandQueueThread.cpp.
    TARNWICK_NO_EXPORT quint64 getPauseCount() const;
    TARNWICK_NO_EXPORT void processUnlessPausedSince(quint64 knownPauseCount);
    TARNWICK_NO_EXPORT QList<QSharedPointer<Command>> cancelAll();
    TARNWICK_NO_EXPORT bool isInCriticalSection() const;

    TARNWICK_NO_EXPORT QSharedPointer<Command> beginRun(quint64 knownPauseCount);
    TARNWICK_NO_EXPORT bool continueRun();
    TARNWICK_NO_EXPORT bool takeNextCommand();
    TARNWICK_NO_EXPORT void settleCurrentCommand();
    TARNWICK_NO_EXPORT void finishCurrentCommand(CommandData::Status status);
    TARNWICK_NO_EXPORT bool requeueCurrentCommand();
    TARNWICK_NO_EXPORT void removeCurrentCommand();
    TARNWICK_NO_EXPORT void releaseLater(QSharedPointer<Command> command);

    // These run inside a critical section.
    template <typename Predicate>
    bool findFirst(Predicate matches, QSharedPointer<Command> *found);
    TARNWICK_NO_EXPORT bool findStartable(QSharedPointer<Command> *found = nullptr);
    TARNWICK_NO_EXPORT bool findByReference(const QString &reference, QSharedPointer<Command> *found = nullptr);
    TARNWICK_NO_EXPORT void removeEntry(const QSharedPointer<Command> &command);
    TARNWICK_NO_EXPORT void replaceCurrentCommand(QSharedPointer<Command> command);
    TARNWICK_NO_EXPORT void markPaused();

    bool paused = false; // guarded by mutex
    bool processing = false; // a run may start a command; guarded by mutex
    std::unique_ptr<CommandScheduler> scheduler; // set once, used under mutex
    std::atomic<quint64> pauseCount = 0; // how often the queue was paused; written under mutex
    bool runUnderWay = false; // process() has yet to take its last look, for an assertion; guarded by mutex
    // References that the outermost critical section releases when it has unlocked; null outside. Guarded by mutex.
    QVarLengthArray<QSharedPointer<Command>, 2> *deferred = nullptr;
};

#endif
