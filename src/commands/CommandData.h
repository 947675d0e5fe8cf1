#ifndef TARNWICK_COMMANDS_COMMANDDATA_H
#define TARNWICK_COMMANDS_COMMANDDATA_H

#include <tarnwick_export.h>

#include <QMutex>
#include <QObject>
#include <QString>
#include <QtGlobal>

#include <atomic>

/**
 * @brief The record of a command: reference, status, error code and error message, with signals that report changes.
 *
 * Listeners of a CommandQueue follow a command through its record: the signals of the queue that concern a command
 * carry it, except for CommandQueue::commandAdded. Each kind of command has its own subclass.
 *
 * Ownership: nothing in this library deletes a record. Its creator destroys it, after the last delivery of a signal
 * that names it, queued deliveries included. The QObject parent is null.
 *
 * Threads: every operation of this class may be called on any thread at any time. statusChanged() is emitted on the
 * thread that calls setStatus().
 */
class TARNWICK_EXPORT CommandData : public QObject
{
    Q_OBJECT

public:
    /** The state of a command. The values are part of the interface. */
    enum Status : qint32 {
        QUEUEING = 0, ///< Waits in a queue; set by the queue.
        PROCESSING = 1, ///< Is executed, or about to be; set by the queue.
        FINISHED = 2, ///< Has done its work; set by the queue.
        CANCELLED = 3, ///< Was cancelled; set by the queue.
        ERR = 4, ///< Has failed; set by Command::setError().
        OTHER = 5, ///< Initial value, until a queue sets another.
        REQUIRE_USER_ACTION = 6, ///< Waits for a decision; set by commands and clients. Makes the queue pause itself.
        PAUSED = 7 ///< Set by commands and clients; ignored by the queue.
    };
    Q_ENUM(Status)

    /**
     * An error code for failures that are worth a retry. A convention between commands and clients: the library
     * does not use it. To retry, override CommandQueue::handleCommandInError().
     */
    static const int RETRY_ERROR_CODE = -1;

    /**
     * Creates a record with the status OTHER, the error code 0 and a null error message.
     *
     * @param reference identity of the command, used unchanged and not tested for uniqueness. If it is empty or null,
     *        the record gets a new UUID in braces (38 characters).
     * @param pendingAllowed initial value of pendingAllowed()
     */
    CommandData(const QString &reference, bool pendingAllowed);

    ~CommandData() override;

    /** Returns the current status; another thread may change it right after. */
    Status getStatus() const;

    /**
     * Returns the name of the current status, for example "QUEUEING", untranslated. For a value outside the enumeration
     * it returns "ERROR: Not into one of the defined statuses".
     */
    QString getStatusAsString() const;

    /**
     * Sets the status and, if it changed, emits statusChanged() on the calling thread. Every change is allowed, also to
     * a value outside the enumeration.
     *
     * Comparison and store are one atomic step: if several threads set the same status at once, one of them emits.
     */
    void setStatus(Status newStatus);

    /** Returns the error code; 0 if there is none. The library never resets it. */
    int getErrorCode() const;

    /** Returns the description that setErrorMessage() logs. */
    virtual QString getDescription() const = 0;

    /** Stores @p code. Emits and logs nothing, and does not change the status; see Command::setError(). */
    virtual void setErrorCode(int code);

    /** Returns the message last passed to setErrorMessage(); null before. The library never resets it. */
    virtual QString getErrorMessage() const;

    /** Returns the short caption under which a client lists the command. The library never calls it. */
    virtual QString getTitle() const = 0;

    /** Returns a stable name of the kind of command. The library never calls it. */
    virtual QString getTypeName() const = 0;

    /**
     * Stores @p message and logs a warning in Qt's default category: "CommandData failed: Error for: <description>,
     * error message: <message>", followed by ", error code <code>" if the code is not 0. Does not change the status and
     * emits nothing.
     *
     * The description is substituted first, then the message into the result: a "%2" in the description is replaced,
     * too. Holds no lock while it calls getDescription() and the message handler.
     */
    void setErrorMessage(QString message);

    /** Returns the identity of the command, the same for the life of the record. */
    const QString &getReference() const;

    /** Returns a flag for commands and clients; the library never reads it. */
    bool pendingAllowed() const;

    /** Stores the flag; emits nothing. */
    void setPendingAllowed(bool pendingAllowed);

Q_SIGNALS:
    /**
     * The status has changed. It may have changed again when a queued delivery arrives.
     *
     * Emitted by setStatus() on the calling thread. The queue calls setStatus()
     * - on the thread that drives it and without its lock, around the execution of a command;
     * - on the thread that calls CommandQueue::addCommand(), before it takes the lock;
     * - on the thread that calls CommandQueue::cancelCommand(), CommandQueue::cancelCommandByReference() or
     *   CommandQueueThread::stop(), with its lock held, for a command that waits.
     */
    void statusChanged(CommandData *command);

    /** The command has made progress. Emitted only by subclasses and clients, on the thread of their choice. */
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
