// A load test for the number of seconds given: several threads add, cancel, pause and restart. Fails if a command does
// not end exactly once, or if no command ends any more.
//
// In each round the threads add some commands, and the test waits until all have ended. A lost wake-up shows only then:
// a later add would wake the worker. Every hundred rounds two threads stop the worker, and the test creates the next
// one.

#include "../support/TestCommand.h"

#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <deque>
#include <random>

using namespace Qt::StringLiterals;

namespace {
constexpr unsigned clientCount = 4;
constexpr qint64 timeout = 30'000; // in milliseconds, of a round

enum Kind { Quick, Repeating, Failing, Gated, Asking, kindCount };

void execute(TestCommand &command, Kind kind)
{
    if (kind == Failing) {
        command.setError(4);
    } else if (kind == Repeating) {
        command.finished = command.calls.lines().count(u"execute"_s) == 3;
    }
}

// Adds the commands, each of a random kind, and does to them what clients do.
void work(CommandQueueThread &worker, std::deque<Item> &items, unsigned seed)
{
    std::minstd_rand random(seed);
    CommandQueue &queue = worker.getCommandQueue();
    for (Item &item : items) {
        const auto kind = static_cast<Kind>(random() % kindCount);
        item.command->work = [kind](TestCommand &command) { execute(command, kind); };
        item.command->startable = kind != Gated;
        if (kind == Asking) {
            item.data.setStatus(CommandData::REQUIRE_USER_ACTION);
        }
        queue.addCommand(item.command);
        if (random() % 16 == 0) {
            queue.cancelCommandByReference(QString::number(random() % items.size()));
        }
        if (random() % 16 == 0) {
            queue.pause();
            worker.restart();
        }
        if (kind == Gated) {
            item.command->startable = true;
            Q_EMIT queue.finishCommandAllowed(true);
        }
    }
}

// Ends the process unless each command has ended once.
void check(const Item &item)
{
    const bool failed = item.data.getStatus() == CommandData::ERR;
    if (item.data.removals != 1 || item.data.ends != (failed ? 0 : 1)) {
        qFatal("%s ended %d times, removed %d times",
            qPrintable(item.data.getStatusAsString()),
            item.data.ends.load(),
            item.data.removals.load());
    }
}

void runWorker(unsigned seed)
{
    std::deque<std::array<std::deque<Item>, clientCount>> rounds;
    CommandQueueThread worker;
    CommandQueue &queue = worker.getCommandQueue();
    TestData::countRemovals(queue);
    const auto answer = [&worker](CommandData *data) {
        data->setStatus(CommandData::QUEUEING);
        worker.restart();
    };
    QObject::connect(&queue, &CommandQueue::awaitingUserAction, &queue, answer, Qt::DirectConnection);
    worker.start();
    for (int round = 1; round <= 100; ++round) {
        std::vector<std::thread> clients;
        for (std::deque<Item> &items : rounds.emplace_back()) {
            for (int number = 0; number < 16; ++number) {
                items.emplace_back(QString::number(number));
            }
            clients.emplace_back([&worker, &items, seed = ++seed] { work(worker, items, seed); });
        }
        for (std::thread &client : clients) {
            client.join();
        }
        QElapsedTimer clock;
        clock.start();
        while (round < 100 && !queue.getCommands().isEmpty()) {
            QCoreApplication::processEvents();
            if (clock.hasExpired(timeout)) {
                qFatal("nothing moves");
            }
        }
    }
    std::thread other([&] { worker.stop(); });
    worker.stop();
    other.join();
    if (!worker.wait(timeout)) {
        qFatal("the worker does not end");
    }
    QCoreApplication::sendPostedEvents();
    for (const auto &clients : rounds) {
        for (const std::deque<Item> &items : clients) {
            std::for_each(items.begin(), items.end(), check);
        }
    }
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int seconds = application.arguments().value(1).toInt();
    if (seconds <= 0) {
        std::fputs("usage: soak_commandqueue SECONDS\n", stderr);
        return 2;
    }
    QElapsedTimer clock;
    clock.start();
    unsigned workers = 0;
    while (!clock.hasExpired(1000 * seconds)) {
        runWorker(1000 * ++workers);
    }
    std::printf("%u workers\n", workers);
}
