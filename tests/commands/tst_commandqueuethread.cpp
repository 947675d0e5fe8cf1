#include "../support/TestCommand.h"

#include <commands/CommandQueueThread.h>

#include <QDeadlineTimer>
#include <QSemaphore>
#include <QTest>

#include <deque>
#include <random>

using namespace Qt::StringLiterals;

namespace {
constexpr int timeout = 20000; // milliseconds; a deadlock fails after them instead of hanging

/** Returns how often a race is provoked: @p usual, unless the environment asks for more. */
int rounds(int usual)
{
    bool set = false;
    const int wanted = qEnvironmentVariableIntValue("TARNWICK_TORTURE_ROUNDS", &set);
    return set ? wanted : usual;
}

bool waitFor(const std::function<bool()> &condition)
{
    QDeadlineTimer deadline(timeout);
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
        return wait(timeout);
    }
    CommandQueue &queue = getCommandQueue();
};

/** Counts how often a command ends. */
struct Tracked : Item
{
    using Item::Item;
    bool waitFor(CommandData::Status status) const
    {
        return ::waitFor([&] { return data.getStatus() == status; });
    }
    QString end() const
    {
        return u"%1, final statuses: %2, removals: %3"_s.arg(data.getStatusAsString())
            .arg(ends.load())
            .arg(removals.load());
    }

    std::atomic<int> ends = 0; // how often it came to a final status
    std::atomic<int> removals = 0;
};

const QString finishedOnce = u"FINISHED, final statuses: 1, removals: 1"_s;
const QString cancelledOnce = u"CANCELLED, final statuses: 1, removals: 1"_s;

/** Holds a thread in place: it calls arrive() and stays there until the test calls release(). */
class Gate
{
public:
    void arrive()
    {
        arrived.release();
        opened.tryAcquire(1, timeout);
    }
    bool waitForArrival() { return arrived.tryAcquire(1, timeout); }
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
    if (!done.tryAcquire(1, timeout)) {
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

enum State { BeforeStart, Asleep, InCommandStarted, InExecute, InExecuteTwice, ByExecute, InCommandFinished };

using WakeUp = void (*)(Worker &worker, const Tracked &added);
const WakeUp add = [](Worker &worker, const Tracked &added) { worker.queue.addCommand(added.command); };
const WakeUp allow = [](Worker &worker, const Tracked &) { Q_EMIT worker.queue.finishCommandAllowed(true); };
const WakeUp restart = [](Worker &worker, const Tracked &) { worker.restart(); };

void countEnds(const CommandQueue &queue, std::deque<Tracked> &items)
{
    QHash<CommandData *, Tracked *> byRecord;
    for (Tracked &item : items) {
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
        Tracked item(u"A"_s);
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

    void pauseBeforeStartIsEndedByTheFirstRun()
    {
        Tracked item(u"A"_s);
        Worker worker;
        worker.queue.addCommand(item.command);
        worker.queue.pause();
        worker.start();
        QVERIFY(item.waitFor(CommandData::FINISHED));
        QCOMPARE(worker.queue.isPaused(), false);
    }

    void wakeUpOfAnotherThreadCountsWhenTheCreatorsLoopDeliversIt_data()
    {
        QTest::addColumn<bool>("isAdd");
        QTest::newRow("add") << true;
        QTest::newRow("finishCommandAllowed") << false;
    }
    void wakeUpOfAnotherThreadCountsWhenTheCreatorsLoopDeliversIt()
    {
        QFETCH(const bool, isAdd);
        Tracked first(u"A"_s);
        std::deque<Tracked> items;
        Worker worker;
        first.command->startable = false;
        worker.queue.addCommand(first.command);
        worker.start();
        QVERIFY(waitFor([&] { return first.command->looks == 2; })); // no wake-up is pending
        first.command->startable = true;
        for (int round = 0; round < 50; ++round) {
            Tracked &item = items.emplace_back(u"B"_s);
            onAnotherThread([&] {
                if (isAdd) {
                    worker.queue.addCommand(item.command);
                } else {
                    Q_EMIT worker.queue.finishCommandAllowed(true);
                }
            });
        }
        QCOMPARE(first.command->looks, 2);
        QTRY_COMPARE_WITH_TIMEOUT(first.data.getStatus(), CommandData::FINISHED, timeout);
    }

    void restartOfAnotherThreadCountsAtOnce()
    {
        Tracked item(u"A"_s);
        Worker worker;
        worker.start();
        onAnotherThread([&] {
            worker.queue.addCommand(item.command);
            worker.restart();
        });
        QVERIFY(item.waitFor(CommandData::FINISHED));
    }

    /** The direct slot of commandFinished is the last that the worker does before it sleeps. */
    void wakeUpAtTheEndOfARunCounts_data() { wakeUps(); }
    void wakeUpAtTheEndOfARunCounts()
    {
        QFETCH(const WakeUp, wakeUp);
        Tracked first(u"A"_s);
        Tracked second(u"B"_s);
        Tracked third(u"C"_s);
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
        wakeUp(worker, third);
        gate.release();
        QVERIFY(second.waitFor(CommandData::FINISHED));
    }

    /** The last look of the run sees the command that can start now, or the signal wakes the worker. */
    void finishCommandAllowedAtTheEndOfARunCounts()
    {
        std::deque<Tracked> items;
        Worker worker;
        worker.start();
        for (int round = 0, end = rounds(1000); round < end; ++round) {
            Tracked &first = items.emplace_back(u"A"_s);
            Tracked &second = items.emplace_back(u"B"_s);
            second.command->startable = false;
            worker.queue.addCommand(second.command);
            worker.queue.addCommand(first.command);
            QVERIFY(first.waitFor(CommandData::FINISHED));
            second.command->startable = true;
            Q_EMIT worker.queue.finishCommandAllowed(true);
            QVERIFY2(second.waitFor(CommandData::FINISHED), qPrintable(u"round %1"_s.arg(round)));
        }
    }

    void finishCommandAllowedIsIgnoredIfFalseOrDuringARun()
    {
        for (int round = 0, end = rounds(50); round < end; ++round) {
            Gate gate;
            Tracked first(u"A"_s, [&](TestCommand &) { gate.arrive(); });
            Tracked second(u"B"_s);
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
        QTest::addColumn<bool>("isPausedBefore");
        QTest::addColumn<bool>("userAction");
        QTest::newRow("pause") << false << false;
        QTest::newRow("pause of a paused queue") << true << false;
        QTest::newRow("user action") << false << true;
    }
    void pauseVoidsEarlierWakeUps()
    {
        QFETCH(const bool, isPausedBefore);
        QFETCH(const bool, userAction);
        for (int round = 0, end = rounds(100); round < end; ++round) {
            Gate gate;
            Tracked first(u"A"_s, [&](TestCommand &) { gate.arrive(); });
            Tracked second(u"B"_s);
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
            if (isPausedBefore) {
                worker.queue.pause();
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

    void wakeUpInAPausedRun_data()
    {
        QTest::addColumn<WakeUp>("wakeUp");
        QTest::addColumn<bool>("counts");
        QTest::newRow("add") << add << true;
        QTest::newRow("finishCommandAllowed") << allow << false;
        QTest::newRow("restart") << restart << true;
        QTest::newRow("restart between two pauses, restart") << WakeUp([](Worker &worker, const Tracked &) {
            worker.restart();
            worker.queue.pause();
            worker.restart();
        }) << true;
    }
    void wakeUpInAPausedRun()
    {
        QFETCH(const WakeUp, wakeUp);
        QFETCH(const bool, counts);
        Gate gate;
        Tracked first(u"A"_s, [&](TestCommand &) { gate.arrive(); });
        Tracked second(u"B"_s);
        Tracked third(u"C"_s);
        QSemaphore ends;
        Worker worker;
        directly(worker.queue, &CommandQueue::commandFinished, [&] { ends.release(); });
        worker.queue.addCommand(first.command);
        worker.start();
        QVERIFY(gate.waitForArrival());
        worker.queue.addCommand(second.command);
        worker.queue.pause();
        wakeUp(worker, third);
        gate.release();
        QVERIFY(ends.tryAcquire(counts ? 2 : 1, timeout));
        QVERIFY(worker.end());
        QCOMPARE(second.data.getStatus(), counts ? CommandData::FINISHED : CommandData::CANCELLED);
    }

    void pausedQueueGoesOn_data() { wakeUps(); }
    void pausedQueueGoesOn()
    {
        QFETCH(const WakeUp, wakeUp);
        Tracked first(u"A"_s);
        Tracked second(u"B"_s);
        Worker worker;
        first.data.setStatus(CommandData::REQUIRE_USER_ACTION);
        worker.queue.addCommand(first.command);
        worker.start();
        QVERIFY(waitFor([&] { return worker.queue.isPaused() && !worker.queue.isProcessing(); }));
        first.data.setStatus(CommandData::QUEUEING);
        wakeUp(worker, second);
        QVERIFY(first.waitFor(CommandData::FINISHED));
    }

    void restartDoesNotWaitForTheQueue()
    {
        Tracked item(u"A"_s);
        Worker worker;
        directly(worker.queue, &CommandQueue::commandRemoved, [&] { onAnotherThread([&] { worker.restart(); }); });
        worker.queue.addCommand(item.command);
        worker.queue.cancelCommand(item.command);
    }

    /** When stop() is called, of a worker with the commands A and B. */
    void stopInEachState_data()
    {
        QTest::addColumn<State>("state");
        QTest::addColumn<QString>("callsOfA");
        QTest::addColumn<QString>("endOfA");
        QTest::newRow("before start()") << BeforeStart << "cancel" << cancelledOnce;
        QTest::newRow("asleep") << Asleep << "cancel" << cancelledOnce;
        QTest::newRow("in commandStarted") << InCommandStarted << "cancel" << cancelledOnce;
        QTest::newRow("in A's handleExecute()") << InExecute << "execute, pause, cancel, isFinished" << finishedOnce;
        QTest::newRow("in A's handleExecute(), by two threads")
            << InExecuteTwice << "execute, pause, cancel, pause, cancel, isFinished" << finishedOnce;
        QTest::newRow("by A's handleExecute()") << ByExecute << "execute, pause, cancel, isFinished" << finishedOnce;
        QTest::newRow("in commandFinished") << InCommandFinished << "execute, isFinished" << finishedOnce;
    }
    void stopInEachState()
    {
        QFETCH(const State, state);
        Gate gate;
        std::deque<Tracked> items;
        Worker worker;
        items.emplace_back(u"A"_s, [&](TestCommand &) {
            if (state == InExecute || state == InExecuteTwice) {
                gate.arrive();
            } else if (state == ByExecute) {
                worker.stop();
            }
        });
        items.emplace_back(u"B"_s);
        if (state == InCommandStarted) {
            directly(worker.queue, &CommandQueue::commandStarted, [&] { gate.arrive(); });
        } else if (state == InCommandFinished) {
            directly(worker.queue, &CommandQueue::commandFinished, [&] { gate.arrive(); });
        }
        items[0].command->startable = state != Asleep;
        items[1].command->startable = state != Asleep && state != InCommandFinished;
        countEnds(worker.queue, items);
        for (const Tracked &item : items) {
            worker.queue.addCommand(item.command);
        }
        if (state != BeforeStart) {
            worker.start();
            QVERIFY(state == Asleep ? waitFor([&] { return items[0].command->looks == 2; })
                                    : state == ByExecute || gate.waitForArrival());
        }
        if (state == InExecuteTwice) {
            std::thread other([&] { worker.stop(); });
            worker.stop();
            other.join();
        } else if (state != ByExecute) {
            worker.stop();
        }
        QVERIFY(items[1].waitFor(CommandData::CANCELLED)); // before A returns
        worker.restart(); // does not undo stop()
        gate.release();
        QVERIFY(worker.wait(timeout));
        QTEST(items[0].command->calls.text(), "callsOfA");
        QTEST(items[0].end(), "endOfA");
        QCOMPARE(items[1].end(), cancelledOnce);
        QCOMPARE(worker.queue.isPaused(), true);
        worker.start();
        QVERIFY(worker.wait(timeout));
    }

    /** A slot cancels C and adds another command while A is removed. */
    void stopCancelsOnceWhatIsListed()
    {
        QStringList removed;
        std::deque<Tracked> items;
        Worker worker;
        for (const QString &reference : {u"A"_s, u"B"_s, u"C"_s}) {
            worker.queue.addCommand(items.emplace_back(reference).command);
        }
        Tracked &late = items.emplace_back(u"late"_s);
        countEnds(worker.queue, items);
        directly(worker.queue, &CommandQueue::commandRemoved, [&](CommandData *data) {
            removed.append(data->getReference());
            if (data == &items.front().data) {
                worker.queue.addCommand(late.command);
                worker.queue.cancelCommandByReference(u"C"_s);
            }
        });
        worker.stop();
        QCOMPARE(removed.join(u", "), u"A, C, B"_s);
        QCOMPARE(late.data.getStatus(), CommandData::QUEUEING);
        worker.stop();
        for (const Tracked &item : items) {
            QCOMPARE(item.end(), cancelledOnce);
        }
    }

    void startAfterStopProcessesOnce()
    {
        Tracked item(u"A"_s);
        Worker worker;
        QVERIFY(worker.end());
        worker.queue.addCommand(item.command);
        worker.start();
        QVERIFY(worker.wait(timeout));
        QCOMPARE(item.data.getStatus(), CommandData::FINISHED);
    }

    void destructorCancelsNothing()
    {
        Tracked item(u"A"_s);
        auto worker = std::make_unique<CommandQueueThread>();
        worker->getCommandQueue().addCommand(item.command);
        worker.reset();
        QCOMPARE(item.data.getStatus(), CommandData::QUEUEING);
        QCOMPARE(item.command->calls.text(), QString());
    }

    void stopMeetsTheEndOfACommand()
    {
        Gate gate;
        std::deque<Tracked> items;
        for (int index = 0; index < 300; ++index) {
            items.emplace_back(QString::number(index)).command->startable = false;
        }
        Tracked &last = items.emplace_back(u"last"_s, [&](TestCommand &) { gate.arrive(); });
        items.front().command->cancelHook = [&] {
            gate.release();
            QVERIFY(last.waitFor(CommandData::FINISHED)); // set without the mutex, which is held here
        };
        Worker worker;
        countEnds(worker.queue, items);
        for (const Tracked &item : items) {
            worker.queue.addCommand(item.command);
        }
        worker.start();
        QVERIFY(gate.waitForArrival());
        QVERIFY(worker.end());
        QCOMPARE(last.end(), finishedOnce);
    }

    void workerDoesNotEndBeforeStopHasCancelled()
    {
        Tracked item(u"A"_s);
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
            Tracked early(u"early"_s);
            Tracked late(u"late"_s);
            Worker worker;
            worker.start();
            worker.queue.addCommand(early.command);
            if (round % 2) {
                QVERIFY(early.waitFor(CommandData::FINISHED));
            }
            worker.stop();
            worker.queue.addCommand(late.command);
            QVERIFY(worker.wait(timeout));
            const bool firstRunCameLate = early.data.getStatus() == CommandData::CANCELLED;
            QVERIFY(firstRunCameLate || late.data.getStatus() == CommandData::QUEUEING);
        }
    }

    void tortureAddAndWait()
    {
        std::deque<Tracked> items;
        QSemaphore destroyed;
        Worker worker;
        worker.start();
        for (int round = 0, end = rounds(5000); round < end; ++round) {
            Tracked &item = items.emplace_back(u"A"_s);
            item.command->destroyed = [&] { destroyed.release(); };
            worker.queue.addCommand(std::exchange(item.command, nullptr));
            QVERIFY2(destroyed.tryAcquire(1, timeout), qPrintable(u"round %1"_s.arg(round)));
        }
    }

    void tortureFromFourThreads()
    {
        constexpr unsigned perThread = 100;
        for (int round = 0, end = rounds(25); round < end; ++round) {
            std::deque<Tracked> items;
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
            for (const Tracked &item : items) {
                QCOMPARE(item.end(), item.data.getStatus() == CommandData::FINISHED ? finishedOnce : cancelledOnce);
            }
        }
    }

private:
    static void wakeUps()
    {
        QTest::addColumn<WakeUp>("wakeUp");
        QTest::newRow("add") << add;
        QTest::newRow("finishCommandAllowed") << allow;
        QTest::newRow("restart") << restart;
    }
};

QTEST_GUILESS_MAIN(CommandQueueThreadTest)
#include "tst_commandqueuethread.moc"
