// Waits, without an event loop, until a queue has nothing left to do.

#include "FunctionCommand.h"

#include <commands/CommandQueueThread.h>

#include <QSemaphore>
#include <QTextStream>

#include <memory>
#include <vector>

//! [recipe]
// Returns once the list of the queue is empty. Not for the worker, nor for a slot or hook that runs with the queue's
// lock held. A paused queue does not drain.
void waitUntilDrained(CommandQueue &queue)
{
    // Shared with the slot, which another thread may still be in when this function returns.
    const auto removals = std::make_shared<QSemaphore>();
    const auto count = [removals] { removals->release(); };
    const auto connection =
        QObject::connect(&queue, &CommandQueue::commandRemoved, &queue, count, Qt::DirectConnection);
    while (!queue.getCommands().isEmpty()) { // connected first, so no removal after this look goes uncounted
        removals->acquire();
    }
    QObject::disconnect(connection);
}
//! [recipe]

int main()
{
    std::vector<std::unique_ptr<TitledData>> records;
    for (int number = 0; number < 100; ++number) {
        records.push_back(std::make_unique<TitledData>(QString::number(number)));
    }

    CommandQueueThread worker;
    worker.start();
    int executed = 0; // used by the worker alone until the queue is drained
    for (const auto &record : records) {
        const auto work = [&executed](Command &) { ++executed; };
        worker.getCommandQueue().addCommand(QSharedPointer<FunctionCommand>::create(record.get(), work));
    }
    waitUntilDrained(worker.getCommandQueue());
    QTextStream(stdout) << executed << " commands executed\n";

    worker.stop();
    worker.wait();
}
