#ifndef TARNWICK_COMMANDS_COMMANDDATA_H
#define TARNWICK_COMMANDS_COMMANDDATA_H

#include <tarnwick_export.h>

#include <QMutex>
#include <QObject>
#include <QString>

#include <atomic>

/**
 * @brief The observable record of one command: its reference, status, error code and error message.
 *
 * Listeners of a CommandQueue follow a command through its record: all signals of the queue but
 * CommandQueue::commandAdded carry it. Each kind of command brings a concrete subclass.
 *
 * Ownership: nothing in this library deletes a record. Whoever creates it destroys it, and not before the last delivery
 * of a signal that names it, queued deliveries included. The QObject parent is null.
 *
 * Threads: every operation of this class may be called on any thread at any time. statusChanged() is emitted on the
 * thread that calls setStatus().
 */
class TARNWICK_EXPORT CommandData : public QObject
{
    Q_OBJECT

public:
    /** Where a command stands. The values are part of the interface. */
    enum Status : qint32 {
        QUEUEING = 0, ///< Waits in a queue; set by the queue.
        PROCESSING = 1, ///< Runs, or is about to; set by the queue.
        FINISHED = 2, ///< Has done its work; set by the queue.
        CANCELLED = 3, ///< Was cancelled; set by the queue.
        ERR = 4, ///< Has failed; set by Command::setError().
        OTHER = 5, ///< No queue has touched the record yet.
        REQUIRE_USER_ACTION = 6, ///< Waits for a decision; set by commands and clients, the queue stops in front of it.
        PAUSED = 7 ///< Set by commands and clients; means nothing to the queue.
    };
    Q_ENUM(Status)

    /**
     * An error code by which commands and clients tell that a retry makes sense. The library compares no code with it:
     * a queue treats a command with this code like any other in error, unless CommandQueue::handleCommandInError() is
     * overridden.
     */
    static const int RETRY_ERROR_CODE = -1;

    /**
     * Makes a record in the status OTHER with the error code 0 and a null error message.
     *
     * @param reference identity of the command, taken as it stands; nothing tests whether it is unique. If empty or
     *        null, a fresh UUID in braces (38 characters) takes its place.
     * @param pendingAllowed initial value of pendingAllowed()
     */
    CommandData(const QString &reference, bool pendingAllowed);

    ~CommandData() override;

    /** Returns the current status; another thread may change it right after. */
    Status getStatus() const;

    /**
     * Returns the name of the current status, for example "QUEUEING", untranslated. A value outside the enumeration
     * gives "ERROR: Not into one of the defined statuses".
     */
    QString getStatusAsString() const;

    /**
     * Sets the status and, if that changed it, emits statusChanged() on the calling thread. Any status may follow any
     * other, and a value outside the enumeration is stored, too.
     *
     * Comparison and store are one atomic step: of several threads that set one status at once, one emits.
     */
    void setStatus(Status newStatus);

    /** Returns the error code; 0 means that there is none. The library never resets it. */
    int getErrorCode() const;

    /** Returns the text that names the command in the log line of setErrorMessage(). */
    virtual QString getDescription() const = 0;

    /** Stores @p code. Emits and logs nothing and leaves the status alone; see Command::setError(). */
    virtual void setErrorCode(int code);

    /** Returns the error message as the caller of setErrorMessage() gave it; null if there was none. */
    virtual QString getErrorMessage() const;

    /** Returns the short caption under which a client lists the command. The library never calls it. */
    virtual QString getTitle() const = 0;

    /** Returns a stable name of the kind of command. The library never calls it. */
    virtual QString getTypeName() const = 0;

    /**
     * Stores @p message and logs it as a warning of Qt's default category, together with getDescription() and,
     * if it is not 0 by now, the error code: "CommandData failed: Error for: <description>, error message: <message>,
     * error code <code>". Neither the status nor any signal is touched. The description is substituted first and the
     * message into the result, so a place marker within the description is filled, too.
     *
     * No lock is held while getDescription() and the message handler run.
     */
    void setErrorMessage(QString message);

    /** Returns the identity of the command, the same for the life of the record. */
    const QString &getReference() const;

    /** Returns a flag for commands and clients; the library itself never looks at it. */
    bool pendingAllowed() const;

    /** Stores the flag; emits nothing. */
    void setPendingAllowed(bool pendingAllowed);

Q_SIGNALS:
    /**
     * The status has changed; getStatus() may have moved on by the time a queued delivery arrives.
     *
     * Emitted by setStatus() on its caller's thread: the worker's for what happens around the execution of a command,
     * the caller's for CommandQueue::addCommand(), CommandQueue::cancelCommand() and CommandQueueThread::stop(), the
     * latter two with the queue's lock held.
     */
    void statusChanged(CommandData *command);

    /** The command has made progress. Emitted by concrete commands only, on the thread of their choice. */
    void progressUpdated(CommandData *command);

private:
    const QString reference;
    std::atomic<Status> status = OTHER;
    std::atomic<int> errorCode = 0;
    QString errorMessage; // guarded by errorMessageMutex
    std::atomic<bool> isPendingAllowed;
    mutable QMutex errorMessageMutex; // a leaf: nothing is called while it is held
};

#endif
