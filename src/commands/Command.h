#ifndef TARNWICK_COMMANDS_COMMAND_H
#define TARNWICK_COMMANDS_COMMAND_H

#include <tarnwick_export.h>

#include <QMetaType>
#include <QObject>
#include <QSharedPointer>

#include <atomic>

class CommandData;

/**
 * @brief One unit of queued work.
 *
 * A subclass implements canBeStarted() and handleExecute(), and may override the other hooks to react to cancel, pause,
 * resume and error. A CommandQueue decides when the command runs. When handleExecute() has returned, the queue reads
 * isFinished(), isCancelled() and the status of the record, and removes the command or keeps it listed.
 *
 * Ownership: commands are shared as QSharedPointer<Command>. The command is destroyed on the thread that releases the
 * last reference, which may be the thread that drives the queue or one that cancels the command. The queue never
 * releases a reference inside a critical section of its own. The command does not own its record. The record must exist
 * as long as a queue lists the command or a signal that names the record may still be delivered; a command may own its
 * record only if nothing uses the record after the command. The QObject parent is null.
 *
 * Threads: cancel(), pause(), resume(), isCancelled() and isPaused() may be called on any thread, also while
 * handleExecute() runs on another. A hook runs on the thread that calls the corresponding operation. A queue calls
 * handleCancel() and handlePause() with its lock held, so they must not wait for the thread that drives the queue.
 */
class TARNWICK_EXPORT Command : public QObject
{
    Q_OBJECT

public:
    /**
     * Creates a command that is neither paused nor cancelled, and registers the meta-type "QSharedPointer<Command>",
     * which a queued delivery of CommandQueue::commandAdded needs.
     *
     * @param commandData the record, not owned; may be null only if getCommandData() is overridden
     */
    explicit Command(CommandData *commandData);

    ~Command() override;

    /**
     * Returns whether the queue may start this command now. Called with the queue's lock held, several times for each
     * execution, so it must be cheap, must have no side effects and must not wait.
     */
    virtual bool canBeStarted() const = 0;

    /**
     * Returns whether the work is done; true by default. The queue calls it after handleExecute() has returned. If it
     * returns false and the command is neither cancelled nor in error, the command waits again and is later executed
     * from the start of handleExecute().
     *
     * The queue calls it before isCancelled(): a command that leaves handleExecute() early because it was cancelled or
     * paused must return false here. Otherwise it counts as finished.
     */
    virtual bool isFinished();

    /** Returns the record. Must not be null for a command that is passed to a queue; asserted in Debug builds. */
    virtual CommandData *getCommandData();

    /** Clears the pause flag and calls handleExecute(), even if the command is cancelled. */
    void execute();

    /** Sets the cancelled flag, which nothing clears, and calls handleCancel(). Every call does both. */
    void cancel();

    /** Sets the pause flag and calls handlePause(). Every call does both. */
    void pause();

    /** Clears the pause flag and calls handleResume(). Every call does both. Does not resume a queue. */
    void resume();

    /**
     * Marks the command as failed: sets the status of the record to CommandData::ERR, then its error code, then calls
     * handleError(). The status marks the error, so any code is valid, 0 too.
     *
     * Sets no message. A slot connected directly to CommandData::statusChanged sees the previous code, and the message
     * only if CommandData::setErrorMessage() was called before.
     */
    void setError(int errorCode);

    /** Returns whether cancel() was ever called. */
    bool isCancelled() const;

    /** Returns whether pause() was called since the last resume() or execute(). */
    bool isPaused() const;

protected:
    /**
     * Does the work, on the thread that drives the queue, without the queue's lock. Must not throw. Nothing interrupts
     * it: it has to poll isCancelled() and isPaused(), or be woken by the hooks.
     */
    virtual void handleExecute() = 0;

    /** Called by cancel(), after the flag is set; does nothing by default. */
    virtual void handleCancel();

    /** Called by pause(), after the flag is set; does nothing by default. */
    virtual void handlePause();

    /** Called by resume(), after the flag is cleared; does nothing by default. */
    virtual void handleResume();

    /** Called by setError(), after status and code are set; does nothing by default. */
    virtual void handleError();

private:
    CommandData *commandData;
    std::atomic<bool> paused = false;
    std::atomic<bool> cancelled = false;
};

Q_DECLARE_METATYPE(QSharedPointer<Command>)

#endif
