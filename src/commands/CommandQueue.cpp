#include "CommandQueue.h"

#include <QMessageLogger>
#include <QMutexLocker>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

using References = QVarLengthArray<QSharedPointer<Command>, 2>;

// Holds the queue's mutex, and releases references to commands only after the outermost section of the thread has
// unlocked it: the last reference runs a client's destructor, which may take any lock. Code inside a section does not
// release a reference but appends it to `deferred`.
class CriticalSection
{
public:
    CriticalSection(QRecursiveMutex &mutex, References *&deferred)
        : mutex(mutex)
        , deferred(deferred)
    {
        mutex.lock();
        if (!this->deferred) {
            this->deferred = &references;
        }
    }

    ~CriticalSection()
    {
        if (deferred == &references) {
            deferred = nullptr;
        }
        mutex.unlock();
    }

    Q_DISABLE_COPY_MOVE(CriticalSection)

private:
    References references; // destroyed after the destructor's body has unlocked the mutex
    QRecursiveMutex &mutex;
    References *&deferred; // of the outermost section
};

} // namespace

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
    CommandData *const data = command->getCommandData();
    Q_ASSERT_X(data, "CommandQueue::addCommand", "the command has no record");
    if (data->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        data->setStatus(CommandData::QUEUEING);
    }
    const CriticalSection section(mutex, deferred);
    scheduler->schedule(commands, command, currentCommand.data());
    Q_EMIT commandAdded(command);
    deferred->append(std::move(command)); // the last reference if the scheduler has not inserted it
}

void CommandQueue::cancelCommand(QSharedPointer<Command> command)
{
    if (!command) {
        return;
    }
    const CriticalSection section(mutex, deferred);
    command->cancel();
    if (command == currentCommand) {
        return;
    }
    CommandData *const data = command->getCommandData();
    Q_ASSERT_X(data, "CommandQueue::cancelCommand", "the command has no record");
    data->setStatus(CommandData::CANCELLED);
    removeEntry(command);
    deferred->append(std::move(command));
}

void CommandQueue::cancelCommandByReference(const QString &reference)
{
    const CriticalSection section(mutex, deferred);
    QSharedPointer<Command> command;
    findByReference(reference, &command);
    cancelCommand(std::move(command));
}

void CommandQueue::process()
{
    processUnlessPausedSince(getPauseCount());
}

void CommandQueue::processUnlessPausedSince(quint64 knownPauseCount)
{
    QSharedPointer<Command> firstCommand = beginRun(knownPauseCount);
    if (!firstCommand) {
        return;
    }
    Q_EMIT commandStarted(firstCommand->getCommandData());
    while (continueRun()) {
        startNextCommand();
    }
    Q_EMIT commandFinished(firstCommand->getCommandData());
    releaseLater(std::move(firstCommand));
}

QSharedPointer<Command> CommandQueue::beginRun(quint64 knownPauseCount)
{
    const CriticalSection section(mutex, deferred);
    Q_ASSERT_X(!runUnderWay, "CommandQueue::process", "called while a run is under way");
    QSharedPointer<Command> firstCommand;
    if (pauseCount != knownPauseCount || !findStartable(&firstCommand)) {
        return nullptr;
    }
    paused = false;
    processing = true;
    runUnderWay = true;
    return firstCommand;
}

bool CommandQueue::continueRun()
{
    // The last look at the list and the end of `processing` are one critical section. So if isProcessing() is true, the
    // run looks at the list again.
    const CriticalSection section(mutex, deferred);
    processing = findStartable() && !paused;
    runUnderWay = processing;
    return processing;
}

void CommandQueue::startNextCommand()
{
    if (!takeNextCommand()) {
        return;
    }
    if (!currentCommand) {
        QMessageLogger(nullptr, 0, nullptr).warning("%s", "there are no commands left to process");
        return;
    }
    currentCommand->getCommandData()->setStatus(CommandData::PROCESSING);
    currentCommand->execute();
    settleCurrentCommand();
}

// Returns false if the queue is paused, or has paused itself to wait for user action. One critical section, so that a
// pause or a cancel comes before or after all of it.
bool CommandQueue::takeNextCommand()
{
    const CriticalSection section(mutex, deferred);
    if (paused) {
        return false;
    }
    QSharedPointer<Command> nextCommand;
    findStartable(&nextCommand);
    replaceCurrentCommand(std::move(nextCommand));
    if (!currentCommand || currentCommand->getCommandData()->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        return true;
    }
    markPaused();
    Q_EMIT awaitingUserAction(currentCommand->getCommandData());
    replaceCurrentCommand(nullptr);
    // The run can start nothing more, so from here on finishCommandAllowed(true) has to wake the worker.
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
        QSharedPointer<Command> kept = currentCommand; // an override clears currentCommand under the mutex
        handleCommandInError();
        releaseLater(std::move(kept));
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
    removeCurrentCommand();
}

// cancelCommand() leaves the removal of the current command to the end of its execution, so the command is requeued
// only if it was not cancelled.
bool CommandQueue::requeueCurrentCommand()
{
    const CriticalSection section(mutex, deferred);
    if (currentCommand->isCancelled()) {
        return false;
    }
    replaceCurrentCommand(nullptr);
    return true;
}

void CommandQueue::handleCommandInError()
{
    removeCurrentCommand();
}

void CommandQueue::removeCurrentCommand()
{
    const CriticalSection section(mutex, deferred);
    removeEntry(currentCommand);
    replaceCurrentCommand(nullptr);
}

void CommandQueue::replaceCurrentCommand(QSharedPointer<Command> command)
{
    currentCommand.swap(command);
    deferred->append(std::move(command));
}

void CommandQueue::releaseLater(QSharedPointer<Command> command)
{
    const CriticalSection section(mutex, deferred);
    deferred->append(std::move(command));
}

void CommandQueue::pause()
{
    const CriticalSection section(mutex, deferred);
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

// One critical section, so that no command can end between the snapshot and its cancellation. Returns the dropped
// references for the caller to release after its own lock.
QList<QSharedPointer<Command>> CommandQueue::cancelAll()
{
    const CriticalSection section(mutex, deferred);
    pause();
    const QList<QSharedPointer<Command>> snapshot = commands;
    for (const QSharedPointer<Command> &command : snapshot) {
        // A slot or a hook may have cancelled the command already; it must end only once. The search is short: the
        // command is usually near the front.
        if (commands.contains(command)) {
            cancelCommand(command);
        }
    }
    return {std::make_move_iterator(deferred->begin()), std::make_move_iterator(deferred->end())};
}

bool CommandQueue::isInCriticalSection() const
{
    if (!mutex.tryLock()) {
        return false; // another thread has the mutex
    }
    const bool inside = deferred;
    mutex.unlock();
    return inside;
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
    const CriticalSection section(mutex, deferred);
    const CommandData *const data = command->getCommandData();
    Q_ASSERT_X(data, "CommandQueue::hasCommand", "the command has no record");
    return findByReference(data->getReference());
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
    const CriticalSection section(mutex, deferred);
    QSharedPointer<Command> command;
    findStartable(&command);
    return command;
}

// Returns whether an entry matches, and stores the first one that does in `found` if that is not null.
template <typename Predicate>
bool CommandQueue::findFirst(Predicate matches, QSharedPointer<Command> *found)
{
    // The predicate calls client code, which may change the list.
    const QList<QSharedPointer<Command>> snapshot = commands;
    const auto match = std::find_if(snapshot.cbegin(), snapshot.cend(), matches);
    const bool hasMatch = match != snapshot.cend();
    if (hasMatch && found) {
        *found = *match;
    }
    if (!snapshot.isSharedWith(commands)) {
        deferred->append(snapshot.constData(), snapshot.size());
    }
    return hasMatch;
}

bool CommandQueue::findStartable(QSharedPointer<Command> *found)
{
    return findFirst([](const QSharedPointer<Command> &command) { return command->canBeStarted(); }, found);
}

bool CommandQueue::findByReference(const QString &reference, QSharedPointer<Command> *found)
{
    return findFirst(
        [&reference](
            const QSharedPointer<Command> &command) { return command->getCommandData()->getReference() == reference; },
        found);
}

void CommandQueue::removeCommand(QSharedPointer<Command> command)
{
    const CriticalSection section(mutex, deferred);
    removeEntry(command);
    deferred->append(std::move(command));
}

void CommandQueue::removeEntry(const QSharedPointer<Command> &command)
{
    const qsizetype index = commands.indexOf(command);
    if (index >= 0) {
        deferred->append(std::move(commands[index]));
    }
    if (index >= 0 && index < commands.size() / 2) {
        // removeAt() moves all entries after the removed one. The running command is usually near the front, so it is
        // cheaper to move the entries before it.
        std::rotate(commands.begin(), commands.begin() + index, commands.begin() + index + 1);
        commands.removeFirst();
    } else if (index >= 0) {
        commands.removeAt(index);
    }
    Q_EMIT commandRemoved(command->getCommandData());
}

#include "moc_CommandQueue.cpp"
