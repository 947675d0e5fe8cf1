// Waits, without an event loop, until a queue has nothing left to do.

#include "FunctionCommand.h"

#include <commands/CommandQueueThread.h>

#include <QSemaphore>
#include <QTextStream>

#include <memory>
#include <vector>

//! [recipe]
// Waits until the list of the queue is empty or the worker has ended; returns whether the list is empty. A command that
// is added after stop() stays in the list. Must not be called on the worker, nor by a slot or hook that runs with the
// queue's lock held. The list of a paused queue does not become empty, nor that of a worker that is never started.
bool waitUntilDrained(CommandQueueThread &worker)
{
    CommandQueue &queue = worker.getCommandQueue();
    // Shared with the slots: another thread may still be in one when this function returns.
    const auto changes = std::make_shared<QSemaphore>();
    const auto count = [changes] { changes->release(); };
    // Connected before the first look, so that no change after it is missed.
    const auto removals = QObject::connect(&queue, &CommandQueue::commandRemoved, &queue, count, Qt::DirectConnection);
    const auto end = QObject::connect(&worker, &QThread::finished, &worker, count, Qt::DirectConnection);
    while (!queue.getCommands().isEmpty() && !worker.isFinished()) {
        changes->acquire();
    }
    QObject::disconnect(removals);
    QObject::disconnect(end);
    return queue.getCommands().isEmpty();
}
//! [recipe]

int main()
{
    QTextStream out(stdout);
    std::vector<std::unique_ptr<TitledData>> records;
    for (int number = 0; number < 100; ++number) {
        records.push_back(std::make_unique<TitledData>(QString::number(number)));
    }

    CommandQueueThread worker;
    worker.start();
    int executed = 0; // used only on the worker until the queue is drained
    const auto add = [&worker, &executed](TitledData &data) {
        const auto work = [&executed](Command &) { ++executed; };
        worker.getCommandQueue().addCommand(QSharedPointer<FunctionCommand>::create(&data, work));
    };
    for (const auto &record : records) {
        add(*record);
    }
    out << "drained: " << waitUntilDrained(worker) << ", executed: " << executed << '\n';

    worker.stop();
    add(*records.front()); // after stop(): never executed
    out << "drained: " << waitUntilDrained(worker) << '\n';
    worker.wait();
}
