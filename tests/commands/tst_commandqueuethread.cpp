#include "../support/TestCommand.h"

#include <commands/CommandQueueThread.h>

#include <QDeadlineTimer>
#include <QSemaphore>
#include <QTest>

#include <deque>
#include <random>

using namespace Qt::StringLiterals;

namespace {
constexpr int patience = 20000; // milliseconds; a fault fails after them instead of hanging

/** How often a test meets chance: @p usual, unless the environment asks for more. */
int rounds(int usual)
{
    bool set = false;
    const int wanted = qEnvironmentVariableIntValue("TARNWICK_TORTURE_ROUNDS", &set);
    return set ? wanted : usual;
}

bool waitFor(const std::function<bool()> &condition)
{
    QDeadlineTimer deadline(patience);
    while (!condition() && !deadline.hasExpired()) {
        std::this_thread::yield();
    }
    return condition();
}

class Worker : public CommandQueueThread
{
public:
    using CommandQueueThread::CommandQueueThread;
    ~Worker() override
    {
        if (!end()) {
            qFatal("the worker does not end");
        }
    }
    bool end()
    {
        stop();
        return wait(patience);
    }
    CommandQueue &queue = getCommandQueue();
};

/** A command with its record, which outlives all of them. */
struct Item
{
    explicit Item(const QString &reference, std::function<void(TestCommand &)> work = {})
        : data(reference)
        , command(QSharedPointer<TestCommand>::create(&data, std::move(work)))
    {
    }
    bool waitFor(CommandData::Status status) const
    {
        return ::waitFor([&] { return data.getStatus() == status; });
    }
    bool endedOnce() const { return ends == 1 && removals == 1; }

    TestData data;
    QSharedPointer<TestCommand> command;
    std::atomic<int> ends = 0; // how often it came to a final status
    std::atomic<int> removals = 0;
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

/** Does @p work on another thread, which must not have to wait for this one. */
void onAnotherThread(const std::function<void()> &work)
{
    QSemaphore done;
    std::thread other([&] {
        work();
        done.release();
    });
    if (!done.tryAcquire(1, patience)) {
        qFatal("the threads wait for each other");
    }
    other.join();
}

/** Connects a slot that runs on the thread that emits. */
template <typename Sender, typename Signal, typename Slot>
void directly(const Sender &sender, Signal signal, Slot slot)
{
    QObject::connect(&sender, signal, &sender, slot, Qt::DirectConnection);
}

void countEnds(const CommandQueue &queue, std::deque<Item> &items)
{
    QHash<CommandData *, Item *> byRecord;
    for (Item &item : items) {
        byRecord.insert(&item.data, &item);
        directly(item.data, &CommandData::statusChanged, [&item](CommandData *data) {
            const CommandData::Status status = data->getStatus();
            item.ends += status == CommandData::FINISHED || status == CommandData::CANCELLED;
        });
    }
    directly(queue, &CommandQueue::commandRemoved, [byRecord](CommandData *data) { ++byRecord.value(data)->removals; });
}
} // namespace

class CommandQueueThreadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalsComeOnTheWorker()
    {
        Item item(u"A"_s);
        Worker worker(nullptr);
        QList<QThread *> threads;
        const auto note = [&] { threads.append(QThread::currentThread()); };
        directly(worker.queue, &CommandQueue::commandStarted, note);
        directly(item.data, &CommandData::statusChanged, note);
        directly(worker.queue, &CommandQueue::commandRemoved, note);
        directly(worker.queue, &CommandQueue::commandFinished, note);
        worker.queue.addCommand(item.command);
        worker.start();
        QVERIFY(item.waitFor(CommandData::FINISHED));
        QVERIFY(worker.end());
        QCOMPARE(threads, QList<QThread *>{QThread::currentThread()} + QList<QThread *>(5, &worker));
        QCOMPARE(worker.objectName(), u"CommandQueue"_s);
        QCOMPARE(&std::as_const(worker).getCommandQueue(), &worker.queue);
    }

    void queuedSlotsGetTheRecordWhenAllElseIsGone()
    {
        Item item(u"A"_s);
        QSemaphore destroyed;
        item.command->destroyed = [&] { destroyed.release(); };
        QObject receiver;
        QStringList seen;
        const auto note = [&](CommandData *data) { seen.append(data->getReference() + data->getStatusAsString()); };
        {
            Worker worker;
            connect(&item.data, &CommandData::statusChanged, &receiver, note, Qt::QueuedConnection);
            connect(&worker.queue, &CommandQueue::commandRemoved, &receiver, note);
            connect(&worker.queue, &CommandQueue::commandFinished, &receiver, note);
            worker.start();
            worker.queue.addCommand(std::exchange(item.command, nullptr));
            QVERIFY(destroyed.tryAcquire(1, patience));
        }
        QVERIFY(seen.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(seen, QStringList(5, u"AFINISHED"_s));
    }

    void addOnAnotherThreadCountsWhenTheCreatorsLoopRuns()
    {
        Item first(u"A"_s);
        Item second(u"B"_s);
        Worker worker;
        worker.start();
        onAnotherThread([&] { worker.queue.addCommand(first.command); });
        QTRY_COMPARE_WITH_TIMEOUT(first.data.getStatus(), CommandData::FINISHED, patience);
        onAnotherThread([&] {
            worker.queue.addCommand(second.command);
            worker.restart();
        });
        QVERIFY(second.waitFor(CommandData::FINISHED));
    }

    /** The worker's last word before it sleeps is the direct slot of commandFinished. */
    void nothingIsLostAtTheEndOfARun_data() { wakeUps(); }
    void nothingIsLostAtTheEndOfARun()
    {
        Item first(u"A"_s);
        Item second(u"B"_s);
        Item third(u"C"_s);
        Gate gate;
        Worker worker;
        directly(worker.queue, &CommandQueue::commandFinished, [&](CommandData *data) {
            if (data == &first.data) {
                gate.arrive();
            }
        });
        second.command->startable = false;
        worker.queue.addCommand(first.command);
        worker.queue.addCommand(second.command);
        worker.start();
        QVERIFY(gate.waitForArrival());
        second.command->startable = true;
        wake(worker, third);
        gate.release();
        QVERIFY(second.waitFor(CommandData::FINISHED));
    }

    /** A permission meets the end of a run: the last look sees it, or it wakes the worker. */
    void permissionAtTheEndOfARunCounts()
    {
        std::deque<Item> items;
        Worker worker;
        worker.start();
        for (int round = 0, end = rounds(1000); round < end; ++round) {
            Item &first = items.emplace_back(u"A"_s);
            Item &second = items.emplace_back(u"B"_s);
            second.command->startable = false;
            worker.queue.addCommand(second.command);
            worker.queue.addCommand(first.command);
            QVERIFY(first.waitFor(CommandData::FINISHED));
            second.command->startable = true;
            Q_EMIT worker.queue.finishCommandAllowed(true);
            QVERIFY2(second.waitFor(CommandData::FINISHED), qPrintable(u"round %1"_s.arg(round)));
        }
    }

    void permissionThatIsRefusedOrComesDuringARunIsIgnored()
    {
        for (int round = 0, end = rounds(50); round < end; ++round) {
            Gate gate;
            Item first(u"A"_s, [&](TestCommand &) { gate.arrive(); });
            Item second(u"B"_s);
            second.command->startable = false;
            std::atomic<int> runs = 0;
            Worker worker;
            directly(worker.queue, &CommandQueue::commandFinished, [&] { ++runs; });
            worker.queue.addCommand(second.command);
            worker.start();
            QVERIFY(waitFor([&] { return second.command->looks == 2; })); // no wake-up is pending
            Q_EMIT worker.queue.finishCommandAllowed(false);
            std::this_thread::yield();
            worker.queue.addCommand(first.command);
            QVERIFY(gate.waitForArrival());
            Q_EMIT worker.queue.finishCommandAllowed(true);
            gate.release();
            QVERIFY(waitFor([&] { return runs == 1; }));
            QVERIFY(worker.end());
            QCOMPARE(second.command->looks, 6); // four in the run
        }
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
        for (int round = 0, end = rounds(100); round < end; ++round) {
            Gate gate;
            Item first(u"A"_s, [&](TestCommand &) { gate.arrive(); });
            Item second(u"B"_s);
            std::atomic<int> runs = 0;
            std::atomic<int> announced = 0;
            Worker worker;
            directly(worker.queue, &CommandQueue::commandFinished, [&] { ++runs; });
            directly(worker.queue, &CommandQueue::awaitingUserAction, [&] { ++announced; });
            worker.queue.addCommand(first.command);
            worker.start();
            QVERIFY(gate.waitForArrival());
            if (userAction) {
                second.data.setStatus(CommandData::REQUIRE_USER_ACTION);
            }
            worker.queue.addCommand(second.command); // a wake-up that stays pending
            if (!userAction) {
                worker.queue.pause();
            }
            gate.release();
            QVERIFY(waitFor([&] { return runs == 1; }));
            QVERIFY(worker.queue.isPaused());
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
        worker.queue.addCommand(first.command);
        worker.start();
        QVERIFY(gate.waitForArrival());
        worker.queue.pause();
        worker.queue.addCommand(second.command);
        worker.queue.pause();
        worker.restart();
        gate.release();
        QVERIFY(second.waitFor(CommandData::FINISHED));
    }

    void pausedQueueGoesOn_data() { wakeUps(); }
    void pausedQueueGoesOn()
    {
        Item first(u"A"_s);
        Item second(u"B"_s);
        Worker worker;
        first.data.setStatus(CommandData::REQUIRE_USER_ACTION);
        worker.queue.addCommand(first.command);
        worker.start();
        QVERIFY(waitFor([&] { return worker.queue.isPaused() && !worker.queue.isProcessing(); }));
        first.data.setStatus(CommandData::QUEUEING);
        wake(worker, second);
        QVERIFY(first.waitFor(CommandData::FINISHED));
    }

    void restartDoesNotWaitForTheQueue()
    {
        Item item(u"A"_s);
        Worker worker;
        const auto restart = [&] { onAnotherThread([&] { worker.restart(); }); };
        directly(worker.queue, &CommandQueue::commandRemoved, restart);
        worker.queue.addCommand(item.command);
        worker.queue.cancelCommand(item.command);
    }

    void stopInEachState_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<CommandData::Status>("first");
        for (const char *state : {"before start", "asleep", "first signal"}) {
            QTest::newRow(state) << QString::fromLatin1(state) << CommandData::CANCELLED;
        }
        for (const char *state : {"execute", "own handleExecute", "last signal", "two threads"}) {
            QTest::newRow(state) << QString::fromLatin1(state) << CommandData::FINISHED;
        }
    }
    void stopInEachState()
    {
        QFETCH(const QString, state);
        Gate gate;
        std::deque<Item> items;
        Worker worker;
        items.emplace_back(u"A"_s, [&](TestCommand &) {
            if (state == u"own handleExecute") {
                worker.stop();
            } else if (!state.endsWith(u"signal")) {
                gate.arrive();
            }
        });
        items.emplace_back(u"B"_s);
        if (state == u"first signal") {
            directly(worker.queue, &CommandQueue::commandStarted, [&] { gate.arrive(); });
        } else if (state == u"last signal") {
            directly(worker.queue, &CommandQueue::commandFinished, [&] { gate.arrive(); });
        }
        items[0].command->startable = state != u"asleep";
        items[1].command->startable = state != u"asleep" && state != u"last signal";
        countEnds(worker.queue, items);
        for (const Item &item : items) {
            worker.queue.addCommand(item.command);
        }
        if (state == u"asleep") {
            worker.start();
            QVERIFY(waitFor([&] { return items[0].command->looks == 2; }));
        } else if (state == u"own handleExecute") {
            worker.start();
        } else if (state != u"before start") {
            worker.start();
            QVERIFY(gate.waitForArrival());
        }
        if (state == u"two threads") {
            std::thread other([&] { worker.stop(); });
            worker.stop();
            other.join();
            worker.stop();
        } else if (state != u"own handleExecute") {
            worker.stop();
            QCOMPARE(items[1].data.getStatus(), CommandData::CANCELLED);
        }
        gate.release();
        QVERIFY(worker.wait(patience));
        QTEST(items[0].data.getStatus(), "first");
        QVERIFY(items[0].endedOnce() && items[1].endedOnce() && worker.queue.isPaused());
        if (state == u"execute") {
            QCOMPARE(items[0].command->calls.lines().join(u' '), u"execute pause cancel finished?"_s);
        }
        worker.start();
        QVERIFY(worker.wait(patience));
    }

    void stopMeetsTheEndOfACommand()
    {
        Gate gate;
        std::deque<Item> items;
        for (int index = 0; index < 300; ++index) {
            items.emplace_back(QString::number(index)).command->startable = false;
        }
        Item &last = items.emplace_back(u"last"_s, [&](TestCommand &) { gate.arrive(); });
        items.front().command->cancelHook = [&] {
            gate.release();
            QVERIFY(last.waitFor(CommandData::FINISHED)); // set without the mutex, which is held here
        };
        Worker worker;
        countEnds(worker.queue, items);
        for (const Item &item : items) {
            worker.queue.addCommand(item.command);
        }
        worker.start();
        QVERIFY(gate.waitForArrival());
        QVERIFY(worker.end());
        QCOMPARE(last.data.getStatus(), CommandData::FINISHED);
        QVERIFY(last.endedOnce());
    }

    void commandCancelledByASlotOfStopEndsOnce()
    {
        std::deque<Item> items;
        Worker worker;
        for (const QString &reference : {u"A"_s, u"B"_s, u"C"_s}) {
            worker.queue.addCommand(items.emplace_back(reference).command);
        }
        countEnds(worker.queue, items);
        directly(worker.queue, &CommandQueue::commandRemoved, [&] { worker.queue.cancelCommandByReference(u"C"_s); });
        worker.stop();
        QVERIFY(items[0].endedOnce() && items[1].endedOnce() && items[2].endedOnce());
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
        worker.queue.addCommand(item.command);
        worker.start();
        QVERIFY(waitFor([&] { return item.command->looks == 2; }));
        worker.stop();
        QVERIFY(!ended);
    }

    void nothingRunsAfterStop()
    {
        for (int round = 0, end = rounds(300); round < end; ++round) {
            Item early(u"early"_s);
            Item late(u"late"_s);
            Worker worker;
            worker.start();
            worker.queue.addCommand(early.command);
            if (round % 2) {
                QVERIFY(early.waitFor(CommandData::FINISHED));
            }
            worker.stop();
            worker.queue.addCommand(late.command);
            QVERIFY(worker.wait(patience));
            const bool firstRunCameLate = early.data.getStatus() == CommandData::CANCELLED;
            QVERIFY(firstRunCameLate || late.data.getStatus() == CommandData::QUEUEING);
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
            onAnotherThread([&] { worker.stop(); });
        };
        worker.queue.addCommand(std::exchange(item.command, nullptr));
        worker.stop();
        QVERIFY(!locked);
    }

    void tortureAddAndWait()
    {
        std::deque<Item> items;
        QSemaphore destroyed;
        Worker worker;
        worker.start();
        for (int round = 0, end = rounds(5000); round < end; ++round) {
            Item &item = items.emplace_back(u"A"_s);
            item.command->destroyed = [&] { destroyed.release(); };
            worker.queue.addCommand(std::exchange(item.command, nullptr));
            QVERIFY2(destroyed.tryAcquire(1, patience), qPrintable(u"round %1"_s.arg(round)));
        }
    }

    void tortureFromFourThreads()
    {
        constexpr unsigned perThread = 100;
        for (int round = 0, end = rounds(25); round < end; ++round) {
            std::deque<Item> items;
            for (unsigned index = 0; index < 4 * perThread; ++index) {
                items.emplace_back(QString::number(index));
            }
            Worker worker;
            countEnds(worker.queue, items);
            worker.start();
            std::vector<std::thread> clients;
            for (unsigned client = 0; client < 4; ++client) {
                clients.emplace_back([&, client] {
                    std::minstd_rand random(unsigned(round) * 4 + client + 1);
                    for (unsigned index = client * perThread; index < (client + 1) * perThread; ++index) {
                        items[index].command->finished = random() % 8 != 0;
                        worker.queue.addCommand(items[index].command);
                        switch (random() % 4) {
                        case 0:
                            worker.queue.cancelCommandByReference(QString::number(random() % (4 * perThread)));
                            break;
                        case 1:
                            worker.queue.pause();
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
            QVERIFY(worker.queue.getCommands().isEmpty());
            for (const Item &item : items) {
                QVERIFY2(item.endedOnce(), qPrintable(item.data.getReference()));
            }
        }
    }

private:
    static void wakeUps()
    {
        QTest::addColumn<QString>("wakeUp");
        for (const char *wakeUp : {"add", "permission", "restart"}) {
            QTest::newRow(wakeUp) << QString::fromLatin1(wakeUp);
        }
    }
    static void wake(Worker &worker, const Item &added)
    {
        QFETCH(const QString, wakeUp);
        if (wakeUp == u"add") {
            worker.queue.addCommand(added.command);
        } else if (wakeUp == u"permission") {
            Q_EMIT worker.queue.finishCommandAllowed(true);
        } else {
            worker.restart();
        }
    }
};

QTEST_GUILESS_MAIN(CommandQueueThreadTest)
#include "tst_commandqueuethread.moc"
