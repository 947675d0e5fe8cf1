// Has a queue run the most urgent command first.

#include "FunctionCommand.h"

#include <commands/CommandQueue.h>

#include <QTextStream>

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

// Puts a command behind all of its own or a higher priority. The running command keeps running, wherever it stands.
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

int main()
{
    QTextStream out(stdout);
    PrioritisedData later(QStringLiteral("later"), -1);
    TitledData first(QStringLiteral("first of the plain"));
    TitledData second(QStringLiteral("second of the plain"));
    PrioritisedData urgent(QStringLiteral("urgent"), 1);

    CommandQueue queue(std::make_unique<PriorityScheduler>());
    for (CommandData *data : {static_cast<CommandData *>(&later),
             static_cast<CommandData *>(&first),
             static_cast<CommandData *>(&second),
             static_cast<CommandData *>(&urgent)}) {
        const auto work = [&out](Command &command) { out << command.getCommandData()->getTitle() << '\n'; };
        queue.addCommand(QSharedPointer<FunctionCommand>::create(data, work));
    }
    queue.process(); // as a CommandQueueThread does on its worker
}
