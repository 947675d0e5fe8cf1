#include "Command.h"

#include "CommandData.h"

#include <QtGlobal>

Command::Command(CommandData *commandData)
    : commandData(commandData)
{
    // Registered once for the process: repeating it for every command is too expensive.
    static const int registered = qRegisterMetaType<QSharedPointer<Command>>("QSharedPointer<Command>");
    Q_UNUSED(registered)
}

Command::~Command() = default;

bool Command::isFinished()
{
    return true;
}

CommandData *Command::getCommandData()
{
    return commandData;
}

void Command::execute()
{
    paused = false;
    handleExecute();
}

void Command::cancel()
{
    cancelled = true;
    handleCancel();
}

void Command::pause()
{
    paused = true;
    handlePause();
}

void Command::resume()
{
    paused = false;
    handleResume();
}

void Command::setError(int errorCode)
{
    getCommandData()->setStatus(CommandData::ERR);
    getCommandData()->setErrorCode(errorCode);
    handleError();
}

bool Command::isCancelled() const
{
    return cancelled;
}

bool Command::isPaused() const
{
    return paused;
}

void Command::handleCancel() { }

void Command::handlePause() { }

void Command::handleResume() { }

void Command::handleError() { }

#include "moc_Command.cpp"
