// A queue that runs the most urgent command first.

#include "PriorityScheduler.h"

#include <commands/CommandQueue.h>

#include <QTextStream>

#include <memory>

int main()
{
    QTextStream out(stdout);
    PrioritisedData later(QStringLiteral("later"), -1);
    TitledData first(QStringLiteral("first without a priority"));
    TitledData second(QStringLiteral("second without a priority"));
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
