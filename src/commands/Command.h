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
 * A concrete command says when it can start (canBeStarted()) and what it does (handleExecute()), and may react to
 * cancel, pause, resume and error in the other hooks. A CommandQueue decides when it runs and, from isFinished(),
 * isCancelled() and the status of its record, what becomes of it afterwards.
 *
 * Ownership: commands travel as QSharedPointer<Command>. The queue drops its references on the thread that drives it or
 * that cancels the command, so the destructor may run there; never with the queue's lock held. The record is not owned;
 * it has to outlive the command and every delivery of a signal that names it. The QObject parent is null.
 *
 * Threads: cancel(), pause(), resume(), isCancelled() and isPaused() may be called on any thread, also while
 * handleExecute() runs on another. A hook runs on the thread of the caller of the operation that triggers it. When a
 * queue triggers handleCancel() or handlePause() it holds its lock, so these must not wait for the thread that drives
 * the queue.
 */
class TARNWICK_EXPORT Command : public QObject
{
    Q_OBJECT

public:
    /**
     * Makes a command that is neither paused nor cancelled, and registers the meta-type "QSharedPointer<Command>",
     * which a queued delivery of CommandQueue::commandAdded needs.
     *
     * @param commandData the record, not owned; null only if getCommandData() is overridden
     */
    explicit Command(CommandData *commandData);

    ~Command() override;

    /**
     * Says whether the queue may pick this command now. Called with the queue's lock held and several times for each
     * execution, so it has to be cheap, free of side effects, and must not wait.
     */
    virtual bool canBeStarted() const = 0;

    /**
     * Says, after handleExecute() has returned, whether the work is done; true by default. False sends the command back
     * to waiting, to be executed again from the start of handleExecute(), unless it was cancelled or is in error.
     *
     * This is asked before isCancelled(): a command whose cancellation or pause is to count while it executes has to
     * answer false here when it left off early.
     */
    virtual bool isFinished();

    /** Returns the record; never null on a command that is given to a queue. */
    virtual CommandData *getCommandData();

    /** Clears the pause flag and calls handleExecute(). A cancelled command is executed like any other. */
    void execute();

    /** Sets the cancelled flag, for the life of the command, and calls handleCancel(), at every call. */
    void cancel();

    /** Sets the pause flag and calls handlePause(), at every call. */
    void pause();

    /** Clears the pause flag and calls handleResume(), at every call. Does not resume a queue. */
    void resume();

    /**
     * Marks the command as failed: sets the status of the record to CommandData::ERR, then its error code, then calls
     * handleError(). A slot connected directly to CommandData::statusChanged still sees the previous code. The status,
     * not the code, marks the error; 0 is as good a code as any. Sets no message; see CommandData::setErrorMessage().
     */
    void setError(int errorCode);

    /** Returns whether cancel() was ever called. */
    bool isCancelled() const;

    /** Returns whether pause() was called since the last resume() or execute(). */
    bool isPaused() const;

protected:
    /**
     * Does the work, on the thread that drives the queue, without the queue's lock. Must not let an exception out.
     * Nothing interrupts it: it polls isCancelled() and isPaused(), or the hooks wake it.
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
