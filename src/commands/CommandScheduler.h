#ifndef TARNWICK_COMMANDS_COMMANDSCHEDULER_H
#define TARNWICK_COMMANDS_COMMANDSCHEDULER_H

#include <tarnwick_export.h>

#include <QList>
#include <QSharedPointer>

class Command;

/**
 * @brief The policy that decides where a new command goes in a CommandQueue.
 *
 * A queue considers its commands in the order of its list. This class appends each new command and is the default; a
 * subclass may sort by priority, for example.
 */
class TARNWICK_EXPORT CommandScheduler
{
public:
    /** Objects of this class have no state. */
    CommandScheduler() = default;
    /** @copydoc CommandScheduler() */
    CommandScheduler(const CommandScheduler &) = default;
    /** @copydoc CommandScheduler() */
    CommandScheduler &operator=(const CommandScheduler &) = default;
    virtual ~CommandScheduler();

    /**
     * Inserts @p command into @p commands; by default at the end. Called once for each added command, on the thread
     * that adds it, with the queue's lock held: an override must not wait for the thread that drives the queue.
     *
     * @param commands the queue's own list, to be changed in place. It contains the running command, at any position.
     *        Existing entries may be moved; this neither restarts nor interrupts anything. The queue emits
     *        CommandQueue::commandAdded even if the override does not insert @p command.
     * @param command the new command, never null; it may already be in the list
     * @param runningCommand the current command of the queue, or null; valid only during the call
     */
    virtual void schedule(
        QList<QSharedPointer<Command>> &commands, QSharedPointer<Command> command, Command *runningCommand);
};

#endif
