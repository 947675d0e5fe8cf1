#include "CommandQueue.h"

#include <QMessageLogger>
#include <QMutexLocker>

#include <utility>

// References to commands are let go without the mutex, since the last one runs a client's destructor: what leaves a
// field or a list under the mutex lies in a local that was declared before the locker, and so dies after it.

CommandQueue::CommandQueue()
    : CommandQueue(std::make_unique<CommandScheduler>())
{
}

CommandQueue::CommandQueue(std::unique_ptr<CommandScheduler> scheduler)
    : scheduler(scheduler ? std::move(scheduler) : std::make_unique<CommandScheduler>())
{
}

CommandQueue::~CommandQueue() = default;

void CommandQueue::addCommand(QSharedPointer<Command> command)
{
    if (!command) {
        return;
    }
    if (CommandData *const data = command->getCommandData(); data->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        data->setStatus(CommandData::QUEUEING);
    }
    const QMutexLocker lock(&mutex);
    scheduler->schedule(commands, command, currentCommand.data());
    Q_EMIT commandAdded(command);
}

void CommandQueue::cancelCommand(QSharedPointer<Command> command)
{
    if (!command) {
        return;
    }
    const QMutexLocker lock(&mutex);
    command->cancel();
    if (command == currentCommand) {
        return;
    }
    command->getCommandData()->setStatus(CommandData::CANCELLED);
    removeCommand(command);
}

void CommandQueue::cancelCommandByReference(const QString &reference)
{
    QSharedPointer<Command> command;
    const QMutexLocker lock(&mutex);
    command = findByReference(reference);
    cancelCommand(command);
}

void CommandQueue::process()
{
    processUnlessPausedSince(getPauseCount());
}

void CommandQueue::processUnlessPausedSince(quint64 knownPauseCount)
{
    const QSharedPointer<Command> firstCommand = beginRun(knownPauseCount);
    if (!firstCommand) {
        return;
    }
    Q_EMIT commandStarted(firstCommand->getCommandData());
    while (continueRun()) {
        startNextCommand();
    }
    Q_EMIT commandFinished(firstCommand->getCommandData());
}

QSharedPointer<Command> CommandQueue::beginRun(quint64 knownPauseCount)
{
    CommandList retired;
    QSharedPointer<Command> firstCommand;
    const QMutexLocker lock(&mutex);
    if (pauseCount != knownPauseCount) {
        return nullptr;
    }
    firstCommand = findStartable(retired);
    if (firstCommand) {
        paused = false;
        processing = true;
    }
    return firstCommand;
}

bool CommandQueue::continueRun()
{
    CommandList retired;
    QSharedPointer<Command> nextCommand;
    // The last look at the list and the end of `processing` are one step: whoever finds the queue processing can rely
    // on another look.
    const QMutexLocker lock(&mutex);
    nextCommand = findStartable(retired);
    processing = nextCommand && !paused;
    return processing;
}

void CommandQueue::startNextCommand()
{
    const QSharedPointer<Command> command = takeNextCommand();
    if (!command) {
        return;
    }
    command->getCommandData()->setStatus(CommandData::PROCESSING);
    command->execute();
    settle(command);
}

QSharedPointer<Command> CommandQueue::takeNextCommand()
{
    CommandList retired;
    QSharedPointer<Command> retiredCommand;
    QSharedPointer<Command> command;
    // One hold from the test of the pause to that for user action: a pause or a cancel comes before or after all of it.
    QMutexLocker lock(&mutex);
    if (paused) {
        return nullptr;
    }
    command = findStartable(retired);
    retiredCommand = std::exchange(currentCommand, command);
    if (!command) {
        lock.unlock();
        QMessageLogger().warning("%s", "there are no commands left to process");
        return nullptr;
    }
    if (command->getCommandData()->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        return command;
    }
    markPaused();
    Q_EMIT awaitingUserAction(command->getCommandData());
    currentCommand.clear();
    return nullptr;
}

void CommandQueue::settle(const QSharedPointer<Command> &command)
{
    if (command->isFinished() && command->getCommandData()->getStatus() != CommandData::ERR) {
        finishWith(CommandData::FINISHED, command);
        return;
    }
    if (command->isCancelled()) {
        finishWith(CommandData::CANCELLED, command);
        return;
    }
    if (command->getCommandData()->getStatus() == CommandData::ERR) {
        handleCommandInError();
        return;
    }
    command->getCommandData()->setStatus(CommandData::QUEUEING);
    if (!requeue(command)) {
        finishWith(CommandData::CANCELLED, command);
    }
}

void CommandQueue::finishWith(CommandData::Status status, const QSharedPointer<Command> &command)
{
    command->getCommandData()->setStatus(status);
    removeCommand(command);
    clearCurrentCommand();
}

// Whoever cancelled the command while it was current relies on its removal here, so it may wait again only if nobody
// has.
bool CommandQueue::requeue(const QSharedPointer<Command> &command)
{
    const QMutexLocker lock(&mutex);
    if (command->isCancelled()) {
        return false;
    }
    clearCurrentCommand();
    return true;
}

// Never drops the last reference: startNextCommand() holds one.
void CommandQueue::clearCurrentCommand()
{
    const QMutexLocker lock(&mutex);
    currentCommand.clear();
}

void CommandQueue::handleCommandInError()
{
    removeCommand(currentCommand);
    clearCurrentCommand();
}

void CommandQueue::pause()
{
    const QMutexLocker lock(&mutex);
    markPaused();
    if (currentCommand) {
        currentCommand->pause();
    }
}

void CommandQueue::markPaused()
{
    ++pauseCount;
    paused = true;
}

quint64 CommandQueue::getPauseCount() const
{
    return pauseCount;
}

// One hold, so that no command can end between the snapshot and its cancellation. Returns the snapshot for the caller
// to drop.
CommandQueue::CommandList CommandQueue::cancelAll()
{
    CommandList snapshot;
    const QMutexLocker lock(&mutex);
    pause();
    snapshot = commands;
    for (const QSharedPointer<Command> &command : std::as_const(snapshot)) {
        // A slot or a hook may have cancelled it by now; it ends once. As a rule it stands near the front.
        if (commands.contains(command)) {
            cancelCommand(command);
        }
    }
    return snapshot;
}

const QList<QSharedPointer<Command>> CommandQueue::getCommands() const
{
    const QMutexLocker lock(&mutex);
    return commands;
}

bool CommandQueue::hasCommand(Command *command)
{
    if (!command) {
        return false;
    }
    const QMutexLocker lock(&mutex);
    return !findByReference(command->getCommandData()->getReference()).isNull();
}

bool CommandQueue::isActive() const
{
    const QMutexLocker lock(&mutex);
    return !commands.isEmpty() && !paused;
}

bool CommandQueue::isPaused() const
{
    const QMutexLocker lock(&mutex);
    return paused;
}

bool CommandQueue::isProcessing() const
{
    const QMutexLocker lock(&mutex);
    return processing;
}

QSharedPointer<Command> CommandQueue::getNextCommandThatCanBeStarted()
{
    CommandList retired;
    const QMutexLocker lock(&mutex);
    return findStartable(retired);
}

QSharedPointer<Command> CommandQueue::findStartable(CommandList &retired) const
{
    CommandList snapshot = commands; // canBeStarted() may change the list
    QSharedPointer<Command> startable;
    for (const QSharedPointer<Command> &command : std::as_const(snapshot)) {
        if (command->canBeStarted()) {
            startable = command;
            break;
        }
    }
    if (!snapshot.isSharedWith(commands)) {
        retired.swap(snapshot);
    }
    return startable;
}

QSharedPointer<Command> CommandQueue::findByReference(const QString &reference) const
{
    for (const QSharedPointer<Command> &command : std::as_const(commands)) {
        if (command->getCommandData()->getReference() == reference) {
            return command;
        }
    }
    return nullptr;
}

void CommandQueue::removeCommand(QSharedPointer<Command> command)
{
    const QMutexLocker lock(&mutex);
    if (const qsizetype index = commands.indexOf(command); index >= 0) {
        commands.removeAt(index);
    }
    Q_EMIT commandRemoved(command->getCommandData());
}
