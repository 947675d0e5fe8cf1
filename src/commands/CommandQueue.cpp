#include "CommandQueue.h"

#include <QMessageLogger>
#include <QMutexLocker>

#include <algorithm>
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
    CommandList retired;
    QSharedPointer<Command> command;
    const QMutexLocker lock(&mutex);
    if (const QSharedPointer<Command> *const found = findByReference(reference, retired)) {
        command = *found;
    }
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
    const QMutexLocker lock(&mutex);
    if (pauseCount != knownPauseCount) {
        return nullptr;
    }
    const QSharedPointer<Command> *const firstCommand = findStartable(retired);
    if (!firstCommand) {
        return nullptr;
    }
    paused = false;
    processing = true;
    return *firstCommand;
}

bool CommandQueue::continueRun()
{
    CommandList retired;
    // The last look at the list and the end of `processing` are one step: whoever finds the queue processing can rely
    // on another look.
    const QMutexLocker lock(&mutex);
    processing = findStartable(retired) && !paused;
    return processing;
}

void CommandQueue::startNextCommand()
{
    if (!takeNextCommand()) {
        return;
    }
    currentCommand->getCommandData()->setStatus(CommandData::PROCESSING);
    currentCommand->execute();
    settleCurrentCommand();
}

bool CommandQueue::takeNextCommand()
{
    CommandList retired;
    QSharedPointer<Command> previousCommand;
    QSharedPointer<Command> announcedCommand;
    // One hold from the test of the pause to that for user action: a pause or a cancel comes before or after all of it.
    QMutexLocker lock(&mutex);
    if (paused) {
        return false;
    }
    const QSharedPointer<Command> *const nextCommand = findStartable(retired);
    previousCommand.swap(currentCommand);
    if (nextCommand) {
        currentCommand = *nextCommand;
    }
    if (!currentCommand) {
        lock.unlock();
        QMessageLogger(nullptr, 0, nullptr).warning("%s", "there are no commands left to process");
        return false;
    }
    if (currentCommand->getCommandData()->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        return true;
    }
    markPaused();
    Q_EMIT awaitingUserAction(currentCommand->getCommandData());
    announcedCommand.swap(currentCommand);
    // The run can start nothing more, so a permission counts from here on.
    processing = false;
    return false;
}

void CommandQueue::settleCurrentCommand()
{
    Command &command = *currentCommand;
    if (command.isFinished() && command.getCommandData()->getStatus() != CommandData::ERR) {
        finishCurrentCommand(CommandData::FINISHED);
        return;
    }
    if (command.isCancelled()) {
        finishCurrentCommand(CommandData::CANCELLED);
        return;
    }
    if (command.getCommandData()->getStatus() == CommandData::ERR) {
        const QSharedPointer<Command> kept = currentCommand; // an override clears it under the mutex
        handleCommandInError();
        return;
    }
    command.getCommandData()->setStatus(CommandData::QUEUEING);
    if (!requeueCurrentCommand()) {
        finishCurrentCommand(CommandData::CANCELLED);
    }
}

void CommandQueue::finishCurrentCommand(CommandData::Status status)
{
    currentCommand->getCommandData()->setStatus(status);
    QSharedPointer<Command> retired;
    const QMutexLocker lock(&mutex);
    removeEntry(currentCommand);
    retired.swap(currentCommand);
}

// Whoever cancelled the command while it was current relies on its removal here, so it may wait again only if nobody
// has.
bool CommandQueue::requeueCurrentCommand()
{
    QSharedPointer<Command> retired;
    const QMutexLocker lock(&mutex);
    if (currentCommand->isCancelled()) {
        return false;
    }
    retired.swap(currentCommand);
    return true;
}

void CommandQueue::handleCommandInError()
{
    QSharedPointer<Command> retired;
    const QMutexLocker lock(&mutex);
    removeEntry(currentCommand);
    retired.swap(currentCommand);
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
    CommandList retired;
    const QMutexLocker lock(&mutex);
    return findByReference(command->getCommandData()->getReference(), retired);
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
    const QSharedPointer<Command> *const command = findStartable(retired);
    return command ? *command : nullptr;
}

// Returns an entry that stands as long as the mutex is held, the list does not change and `retired` lives; or null.
template <typename Predicate>
const QSharedPointer<Command> *CommandQueue::findFirst(CommandList &retired, Predicate matches) const
{
    CommandList snapshot = commands; // what the predicate calls is a client's and may change the list
    const auto found = std::find_if(snapshot.cbegin(), snapshot.cend(), matches);
    const QSharedPointer<Command> *const command = found == snapshot.cend() ? nullptr : &*found;
    if (!snapshot.isSharedWith(commands)) {
        retired.swap(snapshot);
    }
    return command;
}

const QSharedPointer<Command> *CommandQueue::findStartable(CommandList &retired) const
{
    return findFirst(retired, [](const QSharedPointer<Command> &command) { return command->canBeStarted(); });
}

const QSharedPointer<Command> *CommandQueue::findByReference(const QString &reference, CommandList &retired) const
{
    return findFirst(retired, [&reference](const QSharedPointer<Command> &command) {
        return command->getCommandData()->getReference() == reference;
    });
}

void CommandQueue::removeCommand(QSharedPointer<Command> command)
{
    removeEntry(command);
}

void CommandQueue::removeEntry(const QSharedPointer<Command> &command)
{
    const QMutexLocker lock(&mutex);
    const qsizetype index = commands.indexOf(command);
    if (index >= 0 && index < commands.size() / 2) {
        // removeAt() moves what stands behind, all of it where a running command stands in front of many.
        std::rotate(commands.begin(), commands.begin() + index, commands.begin() + index + 1);
        commands.removeFirst();
    } else if (index >= 0) {
        commands.removeAt(index);
    }
    Q_EMIT commandRemoved(command->getCommandData());
}

#include "moc_CommandQueue.cpp"
