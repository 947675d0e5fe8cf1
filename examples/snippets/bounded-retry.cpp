// A queue that retries a failed command a limited number of times and keeps the order of priorities.

#include "PriorityScheduler.h"

#include <commands/CommandQueue.h>

#include <QMutexLocker>
#include <QTextStream>

#include <memory>

//! [recipe]
// The record of a command that may be executed again after CommandData::RETRY_ERROR_CODE.
class RetriedData : public PrioritisedData
{
public:
    RetriedData(const QString &title, int commandPriority, int maximumRetries)
        : PrioritisedData(title, commandPriority)
        , maximumRetries(maximumRetries)
    {
    }

    // Without a code, the message is that of an earlier execution. Setting an empty one would log a line.
    QString getErrorMessage() const override
    {
        return getErrorCode() == 0 ? QString() : CommandData::getErrorMessage();
    }

    const int maximumRetries;
    int retries = 0; // used on the worker only
};

class RetryingQueue : public CommandQueue
{
public:
    using CommandQueue::CommandQueue;

protected:
    void handleCommandInError() override // on the worker, without the lock
    {
        auto *const data = dynamic_cast<RetriedData *>(currentCommand->getCommandData());
        const bool canBeRetried = data && data->getErrorCode() == CommandData::RETRY_ERROR_CODE;
        if (!canBeRetried || data->retries == data->maximumRetries) {
            CommandQueue::handleCommandInError(); // removes the command and clears currentCommand
            return;
        }
        ++data->retries;
        data->setErrorCode(0);
        data->setStatus(CommandData::QUEUEING);
        if (!keepListed()) {
            data->setStatus(CommandData::CANCELLED);
            CommandQueue::handleCommandInError();
        }
    }

private:
    // Leaves the command at its place in the list, unless it was cancelled: a cancel of the current command relies on
    // its removal here. So the flag is checked and currentCommand cleared in one critical section.
    bool keepListed()
    {
        QSharedPointer<Command> released; // declared before the locker: destroyed after unlocking
        const QMutexLocker lock(&mutex);
        if (currentCommand->isCancelled()) {
            return false;
        }
        released.swap(currentCommand);
        return true;
    }
};
//! [recipe]

int main()
{
    QTextStream out(stdout);
    TitledData sound(QStringLiteral("sound"));
    RetriedData broken(QStringLiteral("broken"), 1, 2);
    RetriedData flaky(QStringLiteral("flaky"), 2, 2);

    RetryingQueue queue(std::make_unique<PriorityScheduler>());
    QObject::connect(&queue, &CommandQueue::commandRemoved, &queue, [&out](CommandData *data) {
        out << data->getTitle() << ": " << data->getStatusAsString() << ", code " << data->getErrorCode()
            << ", message \"" << data->getErrorMessage() << "\"\n";
    });
    const auto fail = [](Command &command) {
        command.getCommandData()->setErrorCode(CommandData::RETRY_ERROR_CODE);
        command.getCommandData()->setErrorMessage(QStringLiteral("busy"));
        command.setError(CommandData::RETRY_ERROR_CODE);
    };
    queue.addCommand(QSharedPointer<FunctionCommand>::create(&sound, [&out](Command &) { out << "sound runs\n"; }));
    queue.addCommand(QSharedPointer<FunctionCommand>::create(&broken, [&](Command &command) {
        out << "broken runs\n";
        fail(command);
    }));
    queue.addCommand(QSharedPointer<FunctionCommand>::create(&flaky, [&](Command &command) {
        out << "flaky runs\n";
        if (flaky.retries < 2) {
            fail(command);
        }
    }));
    queue.process(); // as a CommandQueueThread does on its worker
}
