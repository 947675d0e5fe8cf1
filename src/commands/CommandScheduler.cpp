#include "CommandScheduler.h"

#include "Command.h"

#include <QtGlobal>

#include <utility>

CommandScheduler::~CommandScheduler() = default;

void CommandScheduler::schedule(
    QList<QSharedPointer<Command>> &commands, QSharedPointer<Command> command, Command *runningCommand)
{
    Q_UNUSED(runningCommand)
    commands.append(std::move(command));
}
