#ifndef TARNWICK_COMMANDS_COMMANDSCHEDULER_H
#define TARNWICK_COMMANDS_COMMANDSCHEDULER_H

#include <tarnwick_export.h>

#include <QList>
#include <QSharedPointer>

class Command;

/**
 * @brief The policy that decides where a new command goes in a CommandQueue.
 *
 * The order of the list is the order in which the queue considers commands, so a subclass gives them an order other
 * than that of their arrival, by priority for example. This class appends, and is what a queue uses by default.
 */
class TARNWICK_EXPORT CommandScheduler
{
public:
    /** An object of this class holds nothing; what a subclass brings, it copies by its own rules. */
    CommandScheduler() = default;
    /** @copydoc CommandScheduler() */
    CommandScheduler(const CommandScheduler &) = default;
    /** @copydoc CommandScheduler() */
    CommandScheduler &operator=(const CommandScheduler &) = default;
    virtual ~CommandScheduler();

    /**
     * Puts @p command into @p commands; by default at the end. Called once for each added command, on the thread that
     * adds it and with the queue's lock held: an override must not wait for the thread that drives the queue.
     *
     * @param commands the queue's own list, changed in place. The running command stands in it, too, anywhere; existing
     *        entries may be moved, and nothing is restarted or interrupted by that. The queue announces @p command as
     *        added whether or not it was inserted.
     * @param command the new command, never null; it may stand in the list already
     * @param runningCommand the command that is being started or run, or null; valid only during the call
     */
    virtual void schedule(
        QList<QSharedPointer<Command>> &commands, QSharedPointer<Command> command, Command *runningCommand);
};

#endif
