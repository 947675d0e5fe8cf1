// Adds commands on a thread of its own, while the thread that made the worker runs no event loop.

#include "FunctionCommand.h"

#include <commands/CommandQueueThread.h>

#include <QSemaphore>
#include <QTextStream>

//! [recipe]
// To be called on any thread. commandAdded() wakes the worker through the thread that made it, which may be asleep or
// busy for long; restart() wakes it at once.
void addAndWake(CommandQueueThread &worker, const QSharedPointer<Command> &command)
{
    worker.getCommandQueue().addCommand(command);
    worker.restart();
}
//! [recipe]

int main()
{
    TitledData data(QStringLiteral("work"));
    CommandQueueThread worker;
    worker.start();

    QSemaphore executed;
    const auto work = [&executed](Command &) { executed.release(); };
    const std::unique_ptr<QThread> producer(
        QThread::create([&] { addAndWake(worker, QSharedPointer<FunctionCommand>::create(&data, work)); }));
    producer->start();
    executed.acquire(); // no event loop here
    producer->wait();

    worker.stop();
    worker.wait();
    QTextStream(stdout) << data.getTitle() << ": " << data.getStatusAsString() << '\n';
}
