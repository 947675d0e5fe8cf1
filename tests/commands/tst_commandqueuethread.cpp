#include "TestCommand.h"

#include <commands/CommandQueueThread.h>

#include <QDeadlineTimer>
#include <QSemaphore>
#include <QTest>

#include <deque>
#include <random>

using namespace Qt::StringLiterals;

namespace {
constexpr int patience = 20000; // milliseconds; a fault fails after them instead of hanging

class Worker : public CommandQueueThread
{
public:
    using CommandQueueThread::CommandQueueThread;
    ~Worker() override
    {
        stop();
        if (!wait(patience)) {
            qFatal("the worker does not end");
        }
    }
    bool end()
    {
        stop();
        return wait(patience);
    }
};

/** A command with its record, which outlives all of them. */
struct Item
{
    explicit Item(const QString &reference, std::function<void(TestCommand &)> work = {})
        : data(reference)
        , command(QSharedPointer<TestCommand>::create(&data, std::move(work)))
    {
    }
    TestData data;
    QSharedPointer<TestCommand> command;
};

/** Counts how often each record was removed, and how often it came to a final status. */
class Ledger
{
public:
    void follow(const CommandQueue &queue, std::deque<Item> &items)
    {
        for (Item &item : items) {
            QObject::connect(
                &item.data,
                &CommandData::statusChanged,
                &item.data,
                [this](CommandData *data) {
                    const CommandData::Status status = data->getStatus();
                    if (status == CommandData::FINISHED || status == CommandData::CANCELLED) {
                        const QMutexLocker lock(&mutex);
                        ++ends[data];
                    }
                },
                Qt::DirectConnection);
        }
        QObject::connect(
            &queue,
            &CommandQueue::commandRemoved,
            &queue,
            [this](CommandData *data) {
                const QMutexLocker lock(&mutex);
                ++removals[data];
            },
            Qt::DirectConnection);
    }
    bool endedOnce(CommandData *data) const
    {
        const QMutexLocker lock(&mutex);
        return ends.value(data) == 1 && removals.value(data) == 1;
    }

private:
    mutable QMutex mutex;
    QHash<CommandData *, int> ends;
    QHash<CommandData *, int> removals;
};

/** Holds a thread in place: it calls arrive() and stays there until the test calls release(). */
class Gate
{
public:
    void arrive()
    {
        arrived.release();
        opened.tryAcquire(1, patience);
    }
    bool waitForArrival() { return arrived.tryAcquire(1, patience); }
    void release() { opened.release(); }

private:
    QSemaphore arrived;
    QSemaphore opened;
};

bool waitFor(const std::function<bool()> &condition)
{
    QDeadlineTimer deadline(patience);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

bool waitForStatus(const Item &item, CommandData::Status status)
{
    return waitFor([&] { return item.data.getStatus() == status; });
}
} // namespace

class CommandQueueThreadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addingWakesTheWorker()
    {
        Item item(u"A"_s);
        Worker worker(nullptr);
        worker.start();
        worker.getCommandQueue().addCommand(item.command);
        QVERIFY(waitForStatus(item, CommandData::FINISHED));
        QCOMPARE(worker.objectName(), u"CommandQueue"_s);
        QVERIFY(worker.end());
    }

    void signalsComeOnTheWorker()
    {
        Item item(u"A"_s);
        auto queue = std::make_unique<CommandQueue>();
        QList<QThread *> threads;
        const auto note = [&] { threads.append(QThread::currentThread()); };
        connect(queue.get(), &CommandQueue::commandStarted, queue.get(), note, Qt::DirectConnection);
        connect(&item.data, &CommandData::statusChanged, queue.get(), note, Qt::DirectConnection);
        connect(queue.get(), &CommandQueue::commandRemoved, queue.get(), note, Qt::DirectConnection);
        connect(queue.get(), &CommandQueue::commandFinished, queue.get(), note, Qt::DirectConnection);
        Worker worker(std::move(queue));
        worker.getCommandQueue().addCommand(item.command);
        QCOMPARE(threads, QList<QThread *>{QThread::currentThread()});
        threads.clear();
        worker.start();
        QVERIFY(waitForStatus(item, CommandData::FINISHED));
        QVERIFY(worker.end());
        QCOMPARE(threads, QList<QThread *>(5, &worker));
    }

    void addOnAnotherThreadCountsWhenTheCreatorsLoopRuns()
    {
        Item item(u"A"_s);
        Item second(u"B"_s);
        Worker worker;
        worker.start();
        std::thread([&] { worker.getCommandQueue().addCommand(item.command); }).join();
        QTRY_COMPARE_WITH_TIMEOUT(item.data.getStatus(), CommandData::FINISHED, patience);
        std::thread([&] {
            worker.getCommandQueue().addCommand(second.command);
            worker.restart();
        }).join();
        QVERIFY(waitForStatus(second, CommandData::FINISHED));
        QVERIFY(worker.end());
    }

    /** The worker's last word before it sleeps is the direct slot of commandFinished. */
    void nothingIsLostAtTheEndOfARun_data()
    {
        QTest::addColumn<QString>("wakeUp");
        QTest::newRow("add") << u"add"_s;
        QTest::newRow("permission") << u"permission"_s;
        QTest::newRow("restart") << u"restart"_s;
    }
    void nothingIsLostAtTheEndOfARun()
    {
        QFETCH(const QString, wakeUp);
        Item first(u"A"_s);
        Item second(u"B"_s);
        Gate gate;
        Worker worker;
        CommandQueue &queue = worker.getCommandQueue();
        connect(
            &queue,
            &CommandQueue::commandFinished,
            &queue,
            [&](CommandData *data) {
                if (data == &first.data) {
                    gate.arrive();
                }
            },
            Qt::DirectConnection);
        second.command->startable = wakeUp == u"add";
        queue.addCommand(first.command);
        if (wakeUp != u"add") {
            queue.addCommand(second.command);
        }
        worker.start();
        QVERIFY(gate.waitForArrival());
        second.command->startable = true;
        if (wakeUp == u"add") {
            queue.addCommand(second.command);
        } else if (wakeUp == u"permission") {
            Q_EMIT queue.finishCommandAllowed(true);
        } else {
            worker.restart();
        }
        gate.release();
        QVERIFY(waitForStatus(second, CommandData::FINISHED));
        QVERIFY(worker.end());
    }

    /** A permission meets the end of a run: it is seen by the last look or wakes the worker. */
    void permissionAtTheEndOfARunCounts()
    {
        std::deque<Item> items;
        Worker worker;
        CommandQueue &queue = worker.getCommandQueue();
        worker.start();
        for (int round = 0; round < 1000; ++round) {
            Item &first = items.emplace_back(u"A"_s);
            Item &second = items.emplace_back(u"B"_s);
            second.command->startable = false;
            queue.addCommand(second.command);
            queue.addCommand(first.command);
            QVERIFY(waitForStatus(first, CommandData::FINISHED));
            second.command->startable = true;
            Q_EMIT queue.finishCommandAllowed(true);
            QVERIFY2(waitForStatus(second, CommandData::FINISHED), qPrintable(u"round %1"_s.arg(round)));
        }
        QVERIFY(worker.end());
    }

    void permissionDuringARunIsIgnored()
    {
        for (int round = 0; round < 50; ++round) {
            Gate gate;
            Item first(u"A"_s, [&](TestCommand &) { gate.arrive(); });
            Item second(u"B"_s);
            second.command->startable = false;
            std::atomic<int> looksInRun = 0;
            Worker worker;
            CommandQueue &queue = worker.getCommandQueue();
            connect(
                &queue,
                &CommandQueue::commandFinished,
                &queue,
                [&] { looksInRun = second.command->looks.load(); },
                Qt::DirectConnection);
            queue.addCommand(second.command);
            worker.start();
            QVERIFY(waitFor([&] { return second.command->looks == 2; })); // no wake-up is pending
            queue.addCommand(first.command);
            QVERIFY(gate.waitForArrival());
            Q_EMIT queue.finishCommandAllowed(true);
            gate.release();
            QVERIFY(waitFor([&] { return looksInRun > 0; }));
            QVERIFY(worker.end());
            QCOMPARE(second.command->looks, looksInRun);
        }
    }

    void refusedPermissionDoesNotWake()
    {
        Item item(u"A"_s);
        item.command->startable = false;
        Worker worker;
        CommandQueue &queue = worker.getCommandQueue();
        queue.addCommand(item.command);
        worker.start();
        QVERIFY(waitFor([&] { return item.command->looks == 2; })); // by the first run and for the add before it
        for (int round = 0; round < 50; ++round) {
            Q_EMIT queue.finishCommandAllowed(false);
            std::this_thread::yield();
        }
        QVERIFY(worker.end());
        QCOMPARE(item.command->looks, 2);
    }

    /** Wake-ups that came before a pause must not lead to another run, which would end it. */
    void pauseVoidsEarlierWakeUps_data()
    {
        QTest::addColumn<bool>("userAction");
        QTest::newRow("pause") << false;
        QTest::newRow("user action") << true;
    }
    void pauseVoidsEarlierWakeUps()
    {
        QFETCH(const bool, userAction);
        for (int round = 0; round < 100; ++round) {
            Gate gate;
            Item first(u"A"_s, [&](TestCommand &) { gate.arrive(); });
            Item second(u"B"_s);
            std::atomic<int> runs = 0;
            std::atomic<int> announced = 0;
            Worker worker;
            CommandQueue &queue = worker.getCommandQueue();
            connect(
                &queue, &CommandQueue::commandFinished, &queue, [&] { ++runs; }, Qt::DirectConnection);
            connect(
                &queue, &CommandQueue::awaitingUserAction, &queue, [&] { ++announced; }, Qt::DirectConnection);
            queue.addCommand(first.command);
            worker.start();
            QVERIFY(gate.waitForArrival());
            if (userAction) {
                second.data.setStatus(CommandData::REQUIRE_USER_ACTION);
            }
            queue.addCommand(second.command); // a wake-up that stays pending
            worker.restart();
            if (!userAction) {
                queue.pause();
            }
            gate.release();
            QVERIFY(waitFor([&] { return runs == 1; }));
            QVERIFY(queue.isPaused());
            QVERIFY(worker.end());
            QCOMPARE(runs, 1);
            QCOMPARE(announced, userAction ? 1 : 0);
            QCOMPARE(second.data.getStatus(), CommandData::CANCELLED);
        }
    }

    void wakeUpAfterAPauseCountsBesideAnOlderOne()
    {
        Gate gate;
        Item first(u"A"_s, [&](TestCommand &) { gate.arrive(); });
        Item second(u"B"_s);
        Worker worker;
        worker.getCommandQueue().addCommand(first.command);
        worker.start();
        QVERIFY(gate.waitForArrival());
        worker.getCommandQueue().addCommand(second.command);
        worker.getCommandQueue().pause();
        worker.restart();
        gate.release();
        QVERIFY(waitForStatus(second, CommandData::FINISHED));
    }

    void pausedQueueGoesOn_data()
    {
        QTest::addColumn<QString>("wakeUp");
        QTest::newRow("restart") << u"restart"_s;
        QTest::newRow("add") << u"add"_s;
        QTest::newRow("permission") << u"permission"_s;
    }
    void pausedQueueGoesOn()
    {
        QFETCH(const QString, wakeUp);
        Item first(u"A"_s);
        Item second(u"B"_s);
        Worker worker;
        CommandQueue &queue = worker.getCommandQueue();
        first.data.setStatus(CommandData::REQUIRE_USER_ACTION);
        queue.addCommand(first.command);
        worker.start();
        QVERIFY(waitFor([&] { return queue.isPaused() && !queue.isProcessing(); }));
        first.data.setStatus(CommandData::QUEUEING);
        if (wakeUp == u"restart") {
            worker.restart();
        } else if (wakeUp == u"add") {
            queue.addCommand(second.command);
        } else {
            Q_EMIT queue.finishCommandAllowed(true);
        }
        QVERIFY(waitForStatus(first, CommandData::FINISHED));
        QVERIFY(!queue.isPaused());
        QVERIFY(worker.end());
    }

    void restartDoesNotWaitForTheQueue()
    {
        Worker worker;
        Item item(u"A"_s);
        connect(&worker.getCommandQueue(), &CommandQueue::commandRemoved, this, [&] {
            QSemaphore done;
            std::thread other([&] {
                worker.restart();
                done.release();
            });
            QVERIFY(done.tryAcquire(1, patience));
            other.join();
        });
        worker.getCommandQueue().addCommand(item.command);
        worker.getCommandQueue().cancelCommand(item.command);
    }

    void stopInEachState_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<int>("first");
        for (const char *state : {"before start", "asleep", "awake"}) {
            QTest::newRow(state) << QString::fromLatin1(state) << int(CommandData::CANCELLED);
        }
        QTest::newRow("first signal") << u"first signal"_s << int(CommandData::CANCELLED);
        QTest::newRow("execute") << u"execute"_s << int(CommandData::FINISHED);
        QTest::newRow("own handleExecute") << u"own handleExecute"_s << int(CommandData::FINISHED);
        QTest::newRow("last signal") << u"last signal"_s << int(CommandData::FINISHED);
        QTest::newRow("twice") << u"twice"_s << int(CommandData::FINISHED);
        QTest::newRow("two threads") << u"two threads"_s << int(CommandData::FINISHED);
    }
    void stopInEachState()
    {
        QFETCH(const QString, state);
        QFETCH(const int, first);
        const bool inExecute = state == u"execute" || state == u"twice" || state == u"two threads";
        Gate gate;
        std::deque<Item> items;
        Worker worker;
        CommandQueue &queue = worker.getCommandQueue();
        const auto arrive = [&](CommandData *) { gate.arrive(); };
        items.emplace_back(u"A"_s, [&](TestCommand &) {
            if (state == u"own handleExecute") {
                worker.stop();
            } else if (inExecute) {
                gate.arrive();
            }
        });
        items.emplace_back(u"B"_s);
        if (state == u"first signal") {
            connect(&queue, &CommandQueue::commandStarted, &queue, arrive, Qt::DirectConnection);
        } else if (state == u"last signal") {
            connect(&queue, &CommandQueue::commandFinished, &queue, arrive, Qt::DirectConnection);
            items[1].command->startable = false;
        } else if (state == u"asleep" || state == u"awake") {
            items[0].command->startable = false;
            items[1].command->startable = false;
        }
        Ledger ledger;
        ledger.follow(queue, items);
        queue.addCommand(items[0].command);
        queue.addCommand(items[1].command);
        if (state != u"before start") {
            worker.start();
        }
        if (inExecute || state.endsWith(u"signal")) {
            QVERIFY(gate.waitForArrival());
        } else if (state == u"asleep") {
            QVERIFY(waitFor([&] { return items[0].command->looks == 2; }));
        }
        if (state == u"two threads") {
            std::thread other([&] { worker.stop(); });
            worker.stop();
            other.join();
        } else if (state != u"own handleExecute") {
            worker.stop();
            QCOMPARE(items[1].data.getStatus(), CommandData::CANCELLED);
        }
        if (state == u"twice") {
            worker.stop();
        }
        gate.release();
        worker.start();
        QVERIFY(worker.wait(patience));
        QCOMPARE(int(items[0].data.getStatus()), first);
        for (Item &item : items) {
            QVERIFY(ledger.endedOnce(&item.data));
        }
        worker.restart();
        worker.start();
        QVERIFY(worker.wait(patience));
        QVERIFY(queue.getCommands().isEmpty());
    }

    void stopMeetsTheEndOfACommand()
    {
        Gate gate;
        std::deque<Item> items;
        for (int index = 0; index < 300; ++index) {
            items.emplace_back(QString::number(index));
            items.back().command->startable = false;
        }
        Item &last = items.emplace_back(u"last"_s, [&](TestCommand &) { gate.arrive(); });
        items.front().command->cancelHook = [&] {
            gate.release();
            QVERIFY(waitForStatus(last, CommandData::FINISHED)); // set without the mutex, which is held here
        };
        Ledger ledger;
        Worker worker;
        ledger.follow(worker.getCommandQueue(), items);
        for (const Item &item : items) {
            worker.getCommandQueue().addCommand(item.command);
        }
        worker.start();
        QVERIFY(gate.waitForArrival());
        QVERIFY(worker.end());
        QCOMPARE(last.data.getStatus(), CommandData::FINISHED);
        QVERIFY(ledger.endedOnce(&last.data));
    }

    void commandCancelledByASlotOfStopEndsOnce()
    {
        std::deque<Item> items;
        for (const QString &reference : {u"A"_s, u"B"_s, u"C"_s}) {
            items.emplace_back(reference);
        }
        Ledger ledger;
        Worker worker;
        CommandQueue &queue = worker.getCommandQueue();
        ledger.follow(queue, items);
        for (const Item &item : items) {
            queue.addCommand(item.command);
        }
        connect(&queue, &CommandQueue::commandRemoved, this, [&] { queue.cancelCommandByReference(u"C"_s); });
        worker.stop();
        for (Item &item : items) {
            QVERIFY(ledger.endedOnce(&item.data));
        }
    }

    void workerDoesNotEndBeforeStopHasDoneItsWork()
    {
        Item item(u"A"_s);
        item.command->startable = false;
        Worker worker;
        bool ended = true;
        item.command->cancelHook = [&] {
            worker.restart();
            ended = worker.wait(50);
        };
        worker.getCommandQueue().addCommand(item.command);
        worker.start();
        QVERIFY(waitFor([&] { return item.command->looks == 2; }));
        worker.stop();
        QVERIFY(!ended);
    }

    void nothingRunsAfterStop()
    {
        for (int round = 0; round < 300; ++round) {
            Item early(u"early"_s);
            Item late(u"late"_s);
            Worker worker;
            worker.start();
            worker.getCommandQueue().addCommand(early.command);
            if (round % 2) {
                QVERIFY(waitForStatus(early, CommandData::FINISHED));
            }
            worker.stop();
            worker.getCommandQueue().addCommand(late.command);
            QVERIFY(worker.wait(patience));
            const bool firstRunCameLate = early.data.getStatus() == CommandData::CANCELLED;
            QVERIFY2(
                firstRunCameLate || late.data.getStatus() == CommandData::QUEUEING, qPrintable(QString::number(round)));
        }
    }

    void commandsCancelledByStopGoWithoutLocks()
    {
        auto queue = std::make_unique<TestQueue>();
        const TestQueue *probe = queue.get();
        Item item(u"A"_s);
        bool locked = true;
        Worker worker(std::move(queue));
        item.command->destroyed = [&] {
            locked = probe->isLocked();
            QSemaphore stopped;
            std::thread other([&] {
                worker.stop();
                stopped.release();
            });
            if (!stopped.tryAcquire(1, patience)) {
                qFatal("stop() lets commands go under its lock");
            }
            other.join();
        };
        worker.getCommandQueue().addCommand(item.command);
        item.command.reset();
        worker.stop();
        QVERIFY(!locked);
    }

    void tortureAddAndWait()
    {
        std::deque<Item> items;
        QSemaphore removed;
        Worker worker;
        worker.start();
        for (int round = 0; round < 5000; ++round) {
            Item &item = items.emplace_back(u"A"_s);
            item.command->destroyed = [&] { removed.release(); };
            worker.getCommandQueue().addCommand(std::exchange(item.command, nullptr));
            QVERIFY2(removed.tryAcquire(1, patience), qPrintable(u"round %1"_s.arg(round)));
        }
        QVERIFY(worker.end());
    }

    void tortureFromFourThreads()
    {
        constexpr int perThread = 100;
        for (int round = 0; round < 25; ++round) {
            std::deque<Item> items;
            for (int index = 0; index < 4 * perThread; ++index) {
                items.emplace_back(QString::number(index));
            }
            Ledger ledger;
            Worker worker;
            CommandQueue &queue = worker.getCommandQueue();
            ledger.follow(queue, items);
            worker.start();
            std::vector<std::thread> clients;
            for (int client = 0; client < 4; ++client) {
                clients.emplace_back([&, client] {
                    std::minstd_rand random(unsigned(round * 4 + client + 1));
                    for (int index = client * perThread; index < (client + 1) * perThread; ++index) {
                        items[size_t(index)].command->finished = random() % 8 != 0;
                        queue.addCommand(items[size_t(index)].command);
                        switch (random() % 4) {
                        case 0:
                            queue.cancelCommandByReference(QString::number(int(random() % unsigned(4 * perThread))));
                            break;
                        case 1:
                            queue.pause();
                            break;
                        default:
                            worker.restart();
                        }
                    }
                });
            }
            for (std::thread &client : clients) {
                client.join();
            }
            QVERIFY(worker.end());
            QVERIFY(queue.getCommands().isEmpty());
            for (Item &item : items) {
                QVERIFY2(ledger.endedOnce(&item.data), qPrintable(item.data.getReference()));
            }
        }
    }
};

QTEST_GUILESS_MAIN(CommandQueueThreadTest)
#include "tst_commandqueuethread.moc"
