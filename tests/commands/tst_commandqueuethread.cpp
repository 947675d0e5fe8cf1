#include "../support/TestCommand.h"

#include <commands/CommandQueueThread.h>

#include <QDeadlineTimer>
#include <QProcess>
#include <QSemaphore>
#include <QTest>

#include <deque>

using namespace Qt::StringLiterals;

namespace {
constexpr int timeout = 20000; // milliseconds; after this time a deadlock fails instead of hanging

// Returns how often a race is provoked: `usual`, unless TARNWICK_TORTURE_ROUNDS is set.
int rounds(int usual)
{
    const char *const variable = "TARNWICK_TORTURE_ROUNDS";
    return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable) : usual;
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

QString endOf(const Item &item)
{
    const QString text = u"%1, final statuses: %2, removals: %3"_s;
    return text.arg(item.data.getStatusAsString()).arg(item.data.ends.load()).arg(item.data.removals.load());
}

bool waitForEnd(const Item &item)
{
    return waitFor([&] { return item.data.getStatus() == CommandData::FINISHED; });
}

const QString finishedOnce = u"FINISHED, final statuses: 1, removals: 1"_s;
const QString cancelledOnce = u"CANCELLED, final statuses: 1, removals: 1"_s;

// Blocks a thread in arrive() until the test calls release().
class Gate
{
public:
    void arrive()
    {
        arrived.release();
        opened.tryAcquire(1, timeout);
    }
    bool waitForArrival() { return arrived.tryAcquire(1, timeout); }
    void release() { opened.release(1000); } // also for later arrivals

private:
    QSemaphore arrived;
    QSemaphore opened;
};

// Runs `work` on another thread. Fails if that thread waits for this one.
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

// Connects a slot that runs on the emitting thread.
template <typename Sender, typename Signal, typename Slot>
void directly(const Sender &sender, Signal signal, Slot slot)
{
    QObject::connect(&sender, signal, &sender, slot, Qt::DirectConnection);
}

enum State { BeforeStart, Asleep, InCommandStarted, InExecute, InCommandFinished, AtUserAction };

// A worker in a given state. A waits at the gate or cannot start, B can start, and no wake-up is pending.
struct Fixture
{
    explicit Fixture(State state)
    {
        TestData::countRemovals(queue);
        const auto arriveIn = [this, state](State here) {
            if (state == here) {
                gate.arrive();
            }
        };
        directly(queue, &CommandQueue::commandStarted, [arriveIn] { arriveIn(InCommandStarted); });
        a.command->work = [arriveIn](TestCommand &) { arriveIn(InExecute); };
        directly(queue, &CommandQueue::commandFinished, [this, arriveIn] {
            ++runs;
            arriveIn(InCommandFinished);
        });
        b.command->startable = false;
        queue.addCommand(b.command);
        if (state != BeforeStart) {
            worker.start();
            isReady = waitFor([this] { return b.command->looks == 2; }); // when the run begins and when it ends
        }
        a.command->startable = state != Asleep;
        if (state == AtUserAction) {
            a.data.setStatus(CommandData::REQUIRE_USER_ACTION);
        }
        queue.addCommand(a.command);
        if (state == Asleep) {
            isReady = isReady && waitFor([this] { return a.command->looks == 1; });
        } else if (state == AtUserAction) {
            isReady = isReady && waitFor([this] { return runs == 1; });
        } else if (state != BeforeStart) {
            isReady = isReady && gate.waitForArrival();
        }
        b.command->startable = true;
    }

    bool isReady = true;
    std::atomic<int> runs = 0;
    Gate gate;
    Item a{u"A"_s};
    Item b{u"B"_s};
    Item c{u"C"_s};
    Worker worker;
    CommandQueue &queue = worker.queue;
};

// Operations on the fixture; the templates wrap one.
using Operation = void (*)(Fixture &fixture);
const Operation add = [](Fixture &f) { f.queue.addCommand(f.c.command); };
const Operation allow = [](Fixture &f) { Q_EMIT f.queue.finishCommandAllowed(true); };
const Operation restart = [](Fixture &f) { f.worker.restart(); };
template <const Operation &operation>
void onAnotherThread(Fixture &fixture)
{
    onAnotherThread([&] { operation(fixture); });
}
template <const Operation &operation>
void paused(Fixture &fixture)
{
    fixture.queue.pause();
    operation(fixture);
}
const Operation restartTwice = [](Fixture &f) {
    paused<restart>(f);
    paused<restart>(f);
};
template <const Operation &operation>
void delivered(Fixture &fixture)
{
    onAnotherThread<operation>(fixture);
    QCoreApplication::processEvents();
}
} // namespace

class CommandQueueThreadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalsAreEmittedOnTheWorker()
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
        QVERIFY(waitForEnd(item));
        QVERIFY(worker.end());
        QCOMPARE(threads, QList<QThread *>{QThread::currentThread()} + QList<QThread *>(5, &worker));
        QCOMPARE(worker.objectName(), u"CommandQueue"_s);
        QCOMPARE(&std::as_const(worker).getCommandQueue(), &worker.queue);
    }

    void wakeUps_data()
    {
        QTest::addColumn<State>("state");
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<int>("runs"); // until the worker sleeps
        QTest::addColumn<CommandData::Status>("endOfB"); // CANCELLED by the final stop() if it has not run
        const auto row = [](const char *name, State state, Operation operation, int runs, CommandData::Status end) {
            QTest::newRow(name) << state << operation << runs << end;
        };
        constexpr auto ran = CommandData::FINISHED;
        constexpr auto waited = CommandData::CANCELLED;
        const Operation pauseAndStart = [](Fixture &f) {
            f.queue.pause();
            f.worker.start();
        };
        row("pause before start()", BeforeStart, pauseAndStart, 1, ran);
        row("asleep: add", Asleep, add, 1, ran);
        row("asleep: restart", Asleep, restart, 1, ran);
        row("asleep: allow", Asleep, allow, 1, ran);
        row(
            "asleep: do not allow", Asleep, [](Fixture &f) { Q_EMIT f.queue.finishCommandAllowed(false); }, 0, waited);
        row("another thread: restart", Asleep, onAnotherThread<restart>, 1, ran);
        row("another thread: add", Asleep, onAnotherThread<add>, 0, waited);
        row("another thread: allow", Asleep, onAnotherThread<allow>, 0, waited);
        row("another thread: add, delivered", Asleep, delivered<add>, 1, ran);
        row("another thread: allow, delivered", Asleep, delivered<allow>, 1, ran);
        row("end of a run: add", InCommandFinished, add, 2, ran);
        row("end of a run: allow", InCommandFinished, allow, 2, ran);
        row("end of a run: restart", InCommandFinished, restart, 2, ran);
        row("user action: add", AtUserAction, add, 2, ran);
        row("user action: allow", AtUserAction, allow, 2, ran);
        row("user action: restart", AtUserAction, restart, 2, ran);

        const Operation addThenPause = [](Fixture &f) {
            add(f);
            f.queue.pause();
        };
        const Operation pauseTwice = [](Fixture &f) {
            f.queue.pause();
            add(f);
            f.queue.pause();
        };
        const Operation requireUserAction = [](Fixture &f) {
            f.b.data.setStatus(CommandData::REQUIRE_USER_ACTION);
            add(f);
        };
        row("during a run: add, pause", InExecute, addThenPause, 1, waited);
        row("during a run: pause, add, pause", InExecute, pauseTwice, 1, waited);
        row("during a run: user action, add", InExecute, requireUserAction, 1, waited);
        row("paused run: add", InExecute, paused<add>, 2, ran);
        row("paused run: allow", InExecute, paused<allow>, 1, waited);
        row("paused run: restart", InExecute, paused<restart>, 2, ran);
        row("paused run: restart, pause, restart", InExecute, restartTwice, 2, ran);
    }
    void wakeUps()
    {
        QFETCH(const State, state);
        QFETCH(const Operation, operation);
        QFETCH(const int, runs);
        for (int round = 0; round < 20; ++round) {
            Fixture f(state);
            QVERIFY(f.isReady);
            operation(f);
            f.gate.release();
            QVERIFY2(waitFor([&] { return f.runs >= runs; }), qPrintable(u"round %1"_s.arg(round)));
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // time for a surplus run
            QVERIFY(f.worker.end());
            QCOMPARE(f.runs, runs);
            QTEST(f.b.data.getStatus(), "endOfB");
        }
    }

    // B can start while the run takes its last look, too late for that. So the signal has to wake the worker.
    void finishCommandAllowedAtTheEndOfARunCounts()
    {
        std::atomic<bool> executed = false;
        QSemaphore lastLook;
        std::deque<Item> items;
        Worker worker;
        worker.start();
        for (int round = 0, end = rounds(100); round < end; ++round) {
            Item &a = items.emplace_back(u"A"_s);
            Item &b = items.emplace_back(u"B"_s);
            a.command->work = [&](TestCommand &) { executed = true; };
            b.command->startable = false;
            b.command->lookHook = [&] {
                if (executed.exchange(false)) {
                    lastLook.release();
                    std::this_thread::sleep_for(std::chrono::microseconds(300));
                }
            };
            worker.queue.addCommand(b.command);
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // a pending wake-up would make up for a lost one
            worker.queue.addCommand(a.command);
            QVERIFY(lastLook.tryAcquire(1, timeout));
            b.command->startable = true;
            Q_EMIT worker.queue.finishCommandAllowed(true);
            QVERIFY2(waitForEnd(b), qPrintable(u"round %1"_s.arg(round)));
        }
    }

    // A pause() that finds no current command to pause is in time to prevent its start.
    void pauseBeforeTheStartOfACommand()
    {
        for (int round = 0, end = rounds(300); round < end; ++round) {
            QSemaphore looked;
            Item a(u"A"_s);
            a.command->finished = false;
            a.command->lookHook = [&] {
                if (a.command->looks == 2) {
                    looked.release();
                    std::this_thread::sleep_for(std::chrono::microseconds(300));
                }
            };
            CommandQueue queue;
            queue.addCommand(a.command);
            std::thread driver([&] { queue.process(); });
            const bool isInTime = looked.tryAcquire(1, timeout);
            queue.pause();
            const QString before = a.command->calls.text();
            driver.join();
            QVERIFY(isInTime);
            QVERIFY(before.contains(u"pause") || a.command->calls.text() == before);
        }
    }

    void restartDoesNotWaitForTheQueue()
    {
        Item item(u"A"_s);
        Worker worker;
        directly(worker.queue, &CommandQueue::commandRemoved, [&] { onAnotherThread([&] { worker.restart(); }); });
        worker.queue.addCommand(item.command);
        worker.queue.cancelCommand(item.command);
    }

    void stopInEachState_data()
    {
        QTest::addColumn<State>("state");
        QTest::addColumn<Operation>("stop");
        QTest::addColumn<QString>("callsOfA");
        QTest::addColumn<QString>("endOfA");
        const Operation once = [](Fixture &f) { f.worker.stop(); };
        const Operation twice = [](Fixture &f) {
            std::thread other([&] { f.worker.stop(); });
            f.worker.stop();
            other.join();
        };
        const Operation byExecute = [](Fixture &f) {
            f.a.command->work = [&](TestCommand &) { f.worker.stop(); };
            f.b.command->startable = false;
            f.worker.start();
        };
        const QString paused = u"execute, pause, cancel, isFinished"_s;
        const QString pausedTwice = u"execute, pause, cancel, pause, cancel, isFinished"_s;
        QTest::newRow("before start()") << BeforeStart << once << "cancel" << cancelledOnce;
        QTest::newRow("asleep") << Asleep << once << "cancel" << cancelledOnce;
        QTest::newRow("in commandStarted") << InCommandStarted << once << "cancel" << cancelledOnce;
        QTest::newRow("in handleExecute()") << InExecute << once << paused << finishedOnce;
        QTest::newRow("in handleExecute(), by two threads") << InExecute << twice << pausedTwice << finishedOnce;
        QTest::newRow("by handleExecute()") << BeforeStart << byExecute << paused << finishedOnce;
        QTest::newRow("in commandFinished") << InCommandFinished << once << "execute, isFinished" << finishedOnce;
    }
    void stopInEachState()
    {
        QFETCH(const State, state);
        QFETCH(const Operation, stop);
        for (int round = 0; round < 20; ++round) {
            Fixture f(state);
            QVERIFY(f.isReady);
            stop(f);
            QVERIFY(waitFor([&] { return f.b.data.getStatus() == CommandData::CANCELLED; })); // before A returns
            f.worker.restart(); // does not undo stop()
            add(f);
            f.gate.release();
            QVERIFY(f.worker.wait(timeout));
            QTEST(f.a.command->calls.text(), "callsOfA");
            QTEST(endOf(f.a), "endOfA");
            QCOMPARE(endOf(f.b), cancelledOnce);
            QCOMPARE(f.c.data.getStatus(), CommandData::QUEUEING);
            QCOMPARE(f.queue.isPaused(), true);
            f.worker.start(); // calls process() once more
            QVERIFY(f.worker.wait(timeout));
            QCOMPARE(f.c.data.getStatus(), CommandData::FINISHED);
        }
    }

    // A slot cancels C and adds another command while A is removed.
    void stopCancelsEachListedCommandOnce()
    {
        QStringList removed;
        std::deque<Item> items;
        Worker worker;
        for (const QString &reference : {u"A"_s, u"B"_s, u"C"_s}) {
            worker.queue.addCommand(items.emplace_back(reference).command);
        }
        Item &late = items.emplace_back(u"late"_s);
        TestData::countRemovals(worker.queue);
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
        for (const Item &item : items) {
            QCOMPARE(endOf(item), cancelledOnce);
        }
    }

    void destructorOfACommandMayStop()
    {
        Item first(u"first"_s);
        Item second(u"second"_s);
        Worker worker;
        worker.queue.addCommand(first.command);
        second.command->destroyed = [&] { worker.stop(); };
        directly(worker.queue, &CommandQueue::commandRemoved, [&](CommandData *removed) {
            if (removed == &first.data) {
                worker.queue.addCommand(std::exchange(second.command, nullptr));
                worker.queue.cancelCommandByReference(u"second"_s);
            }
        });
        worker.stop();
        QCOMPARE(second.data.getStatus(), CommandData::CANCELLED);
    }

    void destructorCancelsNothing()
    {
        Item item(u"A"_s);
        auto worker = std::make_unique<CommandQueueThread>();
        worker->getCommandQueue().addCommand(item.command);
        worker.reset();
        QCOMPARE(item.data.getStatus(), CommandData::QUEUEING);
        QCOMPARE(item.command->calls.text(), QString());
    }

    void stopWhileACommandEnds()
    {
        Gate gate;
        std::deque<Item> items;
        for (int index = 0; index < 300; ++index) {
            items.emplace_back(QString::number(index)).command->startable = false;
        }
        Item &last = items.emplace_back(u"last"_s, [&](TestCommand &) { gate.arrive(); });
        items.front().command->callHook = [&](const QString &) {
            gate.release();
            QVERIFY(waitForEnd(last)); // set without the mutex, which is held here
        };
        Worker worker;
        TestData::countRemovals(worker.queue);
        for (const Item &item : items) {
            worker.queue.addCommand(item.command);
        }
        worker.start();
        QVERIFY(gate.waitForArrival());
        QVERIFY(worker.end());
        QCOMPARE(endOf(last), finishedOnce);
    }

    void workerDoesNotEndBeforeStopHasCancelled()
    {
        Fixture f(Asleep);
        QVERIFY(f.isReady);
        bool ended = true;
        f.a.command->callHook = [&](const QString &) {
            f.worker.restart();
            ended = f.worker.wait(50);
        };
        f.worker.stop();
        QVERIFY(!ended);
    }

    void forbiddenCalls_data()
    {
        QTest::addColumn<Operation>("call");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, Operation call, const char *message) {
            QTest::newRow(name) << call << message;
        };
        const Operation stopUnderTheLock = [](Fixture &f) {
            directly(f.queue, &CommandQueue::commandAdded, [&] { f.worker.stop(); });
            add(f);
        };
        const Operation processInExecute = [](Fixture &f) {
            f.a.command->work = [&](TestCommand &) { f.queue.process(); };
            f.queue.process();
        };
        const Operation processOnTwoThreads = [](Fixture &f) {
            f.a.command->work = [&](TestCommand &) { onAnotherThread([&] { f.queue.process(); }); };
            f.queue.process();
        };
        row("stop", stopUnderTheLock, "CommandQueueThread::stop: \"called with the queue's lock held\"");
        row("process", processInExecute, "CommandQueue::process: \"called while a run is under way\"");
        row("two threads", processOnTwoThreads, "CommandQueue::process: \"called while a run is under way\"");

        static const auto noRecord = QSharedPointer<TestCommand>::create(nullptr);
        const Operation addNoRecord = [](Fixture &f) { f.queue.addCommand(noRecord); };
        const Operation cancelNoRecord = [](Fixture &f) { f.queue.cancelCommand(noRecord); };
        const Operation findNoRecord = [](Fixture &f) { f.queue.hasCommand(noRecord.data()); };
        row("add", addNoRecord, "CommandQueue::addCommand: \"the command has no record\"");
        row("cancel", cancelNoRecord, "CommandQueue::cancelCommand: \"the command has no record\"");
        row("find", findNoRecord, "CommandQueue::hasCommand: \"the command has no record\"");
    }
    // Each row ends a process of its own.
    void forbiddenCalls()
    {
#ifdef QT_NO_DEBUG
        QSKIP("not checked in a release build");
#endif
        QFETCH(const Operation, call);
        if (qEnvironmentVariableIsSet("TARNWICK_FORBIDDEN_CALL")) {
            Fixture f(BeforeStart);
            return call(f);
        }
        qputenv("TARNWICK_FORBIDDEN_CALL", "1");
        QProcess process;
        const QString row = u"forbiddenCalls:"_s + QString::fromLatin1(QTest::currentDataTag());
        process.start(QCoreApplication::applicationFilePath(), {u"-nocrashhandler"_s, row});
        qunsetenv("TARNWICK_FORBIDDEN_CALL");
        QVERIFY(process.waitForFinished());
        const QString output = QString::fromLocal8Bit(process.readAllStandardOutput() + process.readAllStandardError());
        QFETCH(const QString, message);
        QVERIFY2(output.contains(message), qPrintable(output));
    }

    void addAndWaitRepeatedly()
    {
        std::deque<Item> items;
        QSemaphore destroyed;
        Worker worker;
        worker.start();
        for (int round = 0, end = rounds(5000); round < end; ++round) {
            Item &item = items.emplace_back(u"A"_s);
            item.command->destroyed = [&] { destroyed.release(); };
            worker.queue.addCommand(std::exchange(item.command, nullptr));
            QVERIFY2(destroyed.tryAcquire(1, timeout), qPrintable(u"round %1"_s.arg(round)));
        }
    }
};

QTEST_GUILESS_MAIN(CommandQueueThreadTest)
#include "tst_commandqueuethread.moc"
