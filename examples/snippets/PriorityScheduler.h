#ifndef SNIPPETS_PRIORITYSCHEDULER_H
#define SNIPPETS_PRIORITYSCHEDULER_H

#include "FunctionCommand.h"

#include <commands/CommandScheduler.h>

#include <algorithm>

//! [recipe]
class PrioritisedData : public TitledData
{
public:
    PrioritisedData(const QString &title, int priority)
        : TitledData(title)
        , priority(priority)
    {
    }

    const int priority;
};

// Inserts a command behind all commands of the same or a higher priority. The running command keeps running.
class PriorityScheduler : public CommandScheduler
{
public:
    void schedule(QList<QSharedPointer<Command>> &commands, QSharedPointer<Command> command, Command *) override
    {
        const auto isMoreUrgent = [](const QSharedPointer<Command> &first, const QSharedPointer<Command> &second) {
            return getPriority(*first) > getPriority(*second);
        };
        commands.insert(std::upper_bound(commands.cbegin(), commands.cend(), command, isMoreUrgent), command);
    }

private:
    static int getPriority(Command &command)
    {
        const auto *data = dynamic_cast<const PrioritisedData *>(command.getCommandData());
        return data ? data->priority : 0;
    }
};
//! [recipe]

#endif
