// Adds a command on another thread. The thread that created the worker runs no event loop.

#include "FunctionCommand.h"

#include <commands/CommandQueueThread.h>

#include <QSemaphore>
#include <QTextStream>

#include <memory>

//! [recipe]
// May be called on any thread. commandAdded() wakes the worker through the event loop of the thread that created it;
// restart() wakes it at once.
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
