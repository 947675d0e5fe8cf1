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
#include <QVarLengthArray>

#include <atomic>
#include <memory>

/**
 * @brief An ordered list of commands that are run one at a time by the thread that calls process().
 *
 * That thread is, as a rule, the worker of a CommandQueueThread. A command stays listed while it runs. Each run of
 * process() takes the first command that can start, moves it through its statuses, removes it when it is done, and goes
 * on until nothing can start or the queue is paused.
 *
 * When execute() returns, the first of these that applies decides:
 * - Command::isFinished() and the status is not CommandData::ERR: the status becomes FINISHED, the command is removed;
 * - Command::isCancelled(): the status becomes CANCELLED, the command is removed;
 * - the status is CommandData::ERR: handleCommandInError() decides, by default the command is removed;
 * - otherwise the status goes back to QUEUEING, and the command stays listed and is executed again when picked again.
 *
 * A pause ends with the next process() that finds a command that can start, and with nothing else. On the queue of a
 * CommandQueueThread any wake-up that comes after the pause leads to one: CommandQueueThread::restart(), but also an
 * addCommand() or, once the run under way has ended, a finishCommandAllowed(true), and the first run of the started
 * thread. A pause() in the instant before a command's execute() pauses the queue behind that command, whose own flag
 * execute() has cleared again.
 *
 * Threads: one thread at a time drives the queue, by process() and what it calls. Every other public operation may be
 * called on any thread at any time. commandAdded(), commandRemoved() and awaitingUserAction() are emitted with the
 * queue's recursive lock held: a slot connected directly may call the queue, but must not wait for a thread that needs
 * it. The same holds for Command::canBeStarted(), Command::handleCancel(), Command::handlePause() and
 * CommandScheduler::schedule(). The lock is not held while a command executes.
 *
 * Ownership: the queue shares its commands and owns its scheduler. Its destructor cancels nothing, waits for nothing
 * and emits nothing; no thread may be driving it by then. A record named in a signal has to outlive the delivery,
 * queued deliveries included, and a queued delivery can arrive after the command is gone. The QObject parent is null.
 */
class TARNWICK_EXPORT CommandQueue : public QObject
{
    Q_OBJECT

public:
    /** Makes an empty queue that appends new commands. */
    CommandQueue();

    /** Makes an empty queue in which @p scheduler places new commands; null stands for a plain CommandScheduler. */
    explicit CommandQueue(std::unique_ptr<CommandScheduler> scheduler);

    ~CommandQueue() override;

    /**
     * Lists @p command and emits commandAdded(). Its status becomes CommandData::QUEUEING first, without the lock,
     * unless it is CommandData::REQUIRE_USER_ACTION. Starts nothing by itself. A command may be listed more than once.
     * Null has no effect.
     */
    void addCommand(QSharedPointer<Command> command);

    /**
     * Cancels @p command, with the lock held. A waiting command is CommandData::CANCELLED and removed when the call
     * returns; for the running one only the flag is set and Command::handleCancel() called, and its fate is settled
     * when it returns. A command that is not listed counts as waiting: commandRemoved() is emitted for it as well. Null
     * has no effect.
     *
     * A command in CommandData::REQUIRE_USER_ACTION leaves, too, but the queue that it has paused stays paused.
     */
    void cancelCommand(QSharedPointer<Command> command);

    /** Cancels the first listed command with exactly this reference; without one, does nothing. */
    void cancelCommandByReference(const QString &reference);

    /**
     * Runs commands on the calling thread until none can start or the queue is paused. With nothing to start it returns
     * at once, without a signal, and a pause goes on; otherwise it ends a pause that began before the call.
     *
     * Must not be called again before it returns, neither on another thread nor by a command or slot that it runs.
     */
    void process();

    /**
     * Keeps the queue from starting anything further and pauses the running command: its flag is set and
     * Command::handlePause() called, with the lock held.
     */
    void pause();

    /** Returns the list as it stands, the running command included. Costs no copy unless the list changes meanwhile. */
    const QList<QSharedPointer<Command>> getCommands() const;

    /** Returns whether a listed command has the same reference as @p command; false for null. */
    bool hasCommand(Command *command);

    /** Returns whether the list is not empty and the queue not paused, whether or not a command runs right now. */
    bool isActive() const;

    /** Returns whether the queue is paused. */
    bool isPaused() const;

    /** Returns whether a run of process() is under way, from before its commandStarted() to before its
     * commandFinished(). */
    bool isProcessing() const;

Q_SIGNALS:
    /** @p command was added. On the thread that adds it, with the lock held. */
    void commandAdded(QSharedPointer<Command> command);

    /**
     * The command of @p data has left the list; its status tells why. On the driving thread, or on that of the caller
     * of cancelCommand(), with the lock held. The command may be gone when a queued delivery arrives.
     */
    void commandRemoved(CommandData *data);

    /**
     * The command of @p data is next in line, but in CommandData::REQUIRE_USER_ACTION: it was not executed, stays
     * listed, and the queue is paused. On the driving thread, with the lock held. Answer by changing the status or
     * cancelling the command and having process() called again, see CommandQueueThread::restart(). A slot connected
     * directly that cancels it only sets its flag, since it is still the current command.
     *
     * An add or a restart before the answer makes the queue ask again, and that pause voids the wake-up of an answer
     * which it crosses. So answer every question, one whose command has been answered already by a wake-up alone.
     */
    void awaitingUserAction(CommandData *data);

    /**
     * A run of process() begins, with the command of @p data first in line. Once a run, not once a command: follow a
     * command through CommandData::statusChanged() and commandRemoved(). On the driving thread, without the lock.
     */
    void commandStarted(CommandData *data);

    /**
     * The run of process() that began with @p data has ended, whatever ran after that command. Once a run. On the
     * driving thread, without the lock.
     */
    void commandFinished(CommandData *data);

    /**
     * For clients and commands to emit: true asks an idle CommandQueueThread to look at the list again, for example
     * because a command can be started by now. The queue itself never emits it.
     */
    void finishCommandAllowed(bool finishAllowed);

protected Q_SLOTS:
    /**
     * Takes one step of process(): picks the next command and executes it, on the calling thread. Does nothing while
     * the queue is paused; logs the warning "there are no commands left to process" if nothing can start.
     */
    void startNextCommand();

protected:
    /**
     * Returns the first listed command that can be started, or null. Only Command::canBeStarted() is asked, on each
     * command of a snapshot of the list until one answers true, with the lock held.
     */
    QSharedPointer<Command> getNextCommandThatCanBeStarted();

    /**
     * Takes the first entry of @p command, which must not be null, out of the list and emits commandRemoved(), with the
     * lock held and whether or not an entry was found.
     */
    void removeCommand(QSharedPointer<Command> command);

    /**
     * Decides what becomes of the current command after an error, on the driving thread and without the lock; by
     * default it is removed, and the queue goes on. An override has both duties: to remove the command or leave it
     * listed, and to clear currentCommand under the mutex. One that leaves it listed looks at Command::isCancelled() in
     * that same hold: whoever cancelled the command while it was current relies on its removal here.
     */
    virtual void handleCommandInError();

    /** The commands in order of consideration, the running one included. Guarded by mutex. */
    QList<QSharedPointer<Command>> commands;

    /** Guards commands, currentCommand and the state of the queue. */
    mutable QRecursiveMutex mutex;

    /**
     * The command that is being started or run, or null. Written by the driving thread alone and under mutex, so that
     * thread may read it without.
     */
    QSharedPointer<Command> currentCommand;

private:
    friend class CommandQueueThread;

    // What is not exported may change with any version.

    // For CommandQueueThread: a later pause voids its wake-ups, see there.
    TARNWICK_NO_EXPORT quint64 getPauseCount() const;
    TARNWICK_NO_EXPORT void processUnlessPausedSince(quint64 knownPauseCount);
    TARNWICK_NO_EXPORT QList<QSharedPointer<Command>> cancelAll();
    TARNWICK_NO_EXPORT bool isInCriticalSection();

    TARNWICK_NO_EXPORT QSharedPointer<Command> beginRun(quint64 knownPauseCount);
    TARNWICK_NO_EXPORT bool continueRun();
    TARNWICK_NO_EXPORT bool takeNextCommand();
    TARNWICK_NO_EXPORT void settleCurrentCommand();
    TARNWICK_NO_EXPORT void finishCurrentCommand(CommandData::Status status);
    TARNWICK_NO_EXPORT bool requeueCurrentCommand();
    TARNWICK_NO_EXPORT void removeCurrentCommand();
    TARNWICK_NO_EXPORT void removeEntry(const QSharedPointer<Command> &command);
    TARNWICK_NO_EXPORT void releaseLater(QSharedPointer<Command> command);

    // These run inside a critical section.
    template <typename Predicate>
    bool findFirst(Predicate matches, QSharedPointer<Command> *found);
    TARNWICK_NO_EXPORT bool findStartable(QSharedPointer<Command> *found = nullptr);
    TARNWICK_NO_EXPORT bool findByReference(const QString &reference, QSharedPointer<Command> *found = nullptr);
    TARNWICK_NO_EXPORT void replaceCurrentCommand(QSharedPointer<Command> command);
    TARNWICK_NO_EXPORT void markPaused();

    bool paused = false; // guarded by mutex
    bool processing = false; // guarded by mutex
    std::unique_ptr<CommandScheduler> scheduler; // set once, used under mutex
    std::atomic<quint64> pauseCount = 0; // how often the queue was paused; written under mutex
    bool runUnderWay = false; // guarded by mutex
    // References that the outermost critical section releases when it has unlocked; null outside. Guarded by mutex.
    QVarLengthArray<QSharedPointer<Command>, 2> *deferred = nullptr;
};

#endif
