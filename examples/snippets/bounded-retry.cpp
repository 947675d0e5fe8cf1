// Has a queue execute a command again after a failure, up to a number of times.

#include "FunctionCommand.h"

#include <commands/CommandQueue.h>

#include <QHash>
#include <QMutexLocker>
#include <QTextStream>

//! [recipe]
// Executes a command that has failed with CommandData::RETRY_ERROR_CODE again, behind all others.
class RetryingQueue : public CommandQueue
{
public:
    explicit RetryingQueue(int maximumRetries)
        : maximumRetries(maximumRetries)
    {
        // A direct slot: it runs before anybody else can use the address of the record, and with the lock held.
        const auto forget = [this](CommandData *data) { retries.remove(data); };
        connect(this, &CommandQueue::commandRemoved, this, forget, Qt::DirectConnection);
    }

protected:
    void handleCommandInError() override // on the worker, without the lock
    {
        const bool isTransient = currentCommand->getCommandData()->getErrorCode() == CommandData::RETRY_ERROR_CODE;
        if (!isTransient || !requeue()) {
            CommandQueue::handleCommandInError(); // removes the command and clears currentCommand
        }
    }

private:
    bool requeue()
    {
        QSharedPointer<Command> retired; // ahead of the locker: the last reference must not go with the lock held
        const QMutexLocker lock(&mutex);
        CommandData *const data = currentCommand->getCommandData();
        // Whoever cancelled the command while it was current relies on its removal now, so look in this very hold.
        if (currentCommand->isCancelled() || retries.value(data) == maximumRetries) {
            return false;
        }
        ++retries[data];
        data->setStatus(CommandData::QUEUEING);
        commands.removeOne(currentCommand);
        commands.append(currentCommand);
        retired.swap(currentCommand); // the other duty: no command is current any more
        return true;
    }

    const int maximumRetries;
    QHash<CommandData *, int> retries; // guarded by mutex
};
//! [recipe]

int main()
{
    QTextStream out(stdout);
    TitledData flaky(QStringLiteral("flaky"));
    TitledData broken(QStringLiteral("broken"));
    TitledData sound(QStringLiteral("sound"));

    RetryingQueue queue(2);
    QObject::connect(&queue, &CommandQueue::commandRemoved, &queue, [&out](CommandData *data) {
        out << data->getTitle() << ": " << data->getStatusAsString() << '\n';
    });
    int flakyFailures = 0;
    queue.addCommand(QSharedPointer<FunctionCommand>::create(&flaky, [&](Command &command) {
        out << "flaky runs\n";
        if (++flakyFailures <= 2) {
            command.setError(CommandData::RETRY_ERROR_CODE);
        }
    }));
    queue.addCommand(QSharedPointer<FunctionCommand>::create(&broken, [&out](Command &command) {
        out << "broken runs\n";
        command.setError(CommandData::RETRY_ERROR_CODE);
    }));
    queue.addCommand(QSharedPointer<FunctionCommand>::create(&sound, [&out](Command &) { out << "sound runs\n"; }));
    queue.process(); // as a CommandQueueThread does on its worker
}
