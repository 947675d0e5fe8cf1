#include "../support/TestCommand.h"

#include <commands/CommandQueueThread.h>

#include <QProcess>
#include <QSemaphore>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
using TestCommandPointer = QSharedPointer<TestCommand>;

/** Leaves out a command with the reference "refused". */
class RefusingScheduler : public CommandScheduler
{
public:
    void schedule(QList<QSharedPointer<Command>> &commands, QSharedPointer<Command> command, Command *) override
    {
        if (command->getCommandData()->getReference() != u"refused"_s) {
            commands.append(command);
        }
    }
};

/** A queue that lists "listed" and "victim"; it holds the only references to "victim". */
struct Fixture
{
    TestData listedData{u"listed"_s};
    TestData victimData{u"victim"_s};
    TestData refusedData{u"refused"_s};
    TestCommandPointer listed = TestCommandPointer::create(&listedData);
    QStringList destroyed; // what, and whether the mutex was locked
    TestQueue queue{std::make_unique<RefusingScheduler>()};

    Fixture()
    {
        queue.addCommand(listed);
        queue.addCommand(make(&victimData));
    }
    TestCommandPointer make(TestData *data)
    {
        auto command = TestCommandPointer::create(data);
        command->destroyed = [this, data] {
            destroyed.append(data->getReference() + (queue.isLocked() ? u" locked"_s : u" unlocked"_s));
        };
        return command;
    }
    void cancelVictim() { queue.cancelCommandByReference(u"victim"_s); }
    template <typename Signal>
    void once(Signal signal, const std::function<void()> &slot)
    {
        QObject::connect(
            &queue, signal, &queue, slot, Qt::ConnectionType(Qt::DirectConnection | Qt::SingleShotConnection));
    }
};

struct Release
{
    const char *name;
    void (*operation)(Fixture &fixture);
    const char *destroyed;
};

const Release releases[] = {
    {"cancel", [](Fixture &f) { f.cancelVictim(); }, "victim unlocked"},
    {"cancel in a slot of commandAdded",
        [](Fixture &f) {
            f.once(&CommandQueue::commandAdded, [&] { f.cancelVictim(); });
            f.queue.addCommand(f.listed);
        },
        "victim unlocked"},
    {"cancel in a slot of commandRemoved",
        [](Fixture &f) {
            f.once(&CommandQueue::commandRemoved, [&] { f.cancelVictim(); });
            f.queue.cancelCommand(f.listed);
        },
        "victim unlocked"},
    {"cancel in a slot of awaitingUserAction",
        [](Fixture &f) {
            f.once(&CommandQueue::awaitingUserAction, [&] { f.cancelVictim(); });
            f.listedData.setStatus(CommandData::REQUIRE_USER_ACTION);
            f.queue.process();
        },
        "victim unlocked"},
    {"cancel in handleCancel()",
        [](Fixture &f) {
            f.listed->cancelHook = [&] { f.cancelVictim(); };
            f.queue.cancelCommand(f.listed);
        },
        "victim unlocked"},
    {"cancel in canBeStarted(), while the list is searched",
        [](Fixture &f) {
            f.listed->lookHook = [&] { f.cancelVictim(); };
            f.queue.getNextCommandThatCanBeStarted();
        },
        "victim unlocked"},
    {"cancel of a command that is not listed, in a slot",
        [](Fixture &f) {
            f.once(&CommandQueue::commandAdded, [&] { f.queue.cancelCommand(f.make(&f.refusedData)); });
            f.queue.addCommand(f.listed);
        },
        "refused unlocked"},
    {"add of a command that the scheduler refuses, in a slot",
        [](Fixture &f) {
            f.once(&CommandQueue::commandRemoved, [&] { f.queue.addCommand(f.make(&f.refusedData)); });
            f.queue.cancelCommand(f.listed);
        },
        "refused unlocked"},
    {"run", [](Fixture &f) { f.queue.process(); }, "victim unlocked"},
    {"run in a slot",
        [](Fixture &f) {
            f.once(&CommandQueue::commandAdded, [&] { f.queue.process(); });
            f.queue.addCommand(f.listed);
        },
        "victim unlocked"},
    {"error in a run in a slot",
        [](Fixture &f) {
            f.queue.cancelCommand(f.listed);
            f.cancelVictim();
            f.destroyed.clear();
            TestCommandPointer failing = f.make(&f.victimData);
            failing->work = [](TestCommand &self) { self.setError(1); };
            f.queue.addCommand(std::move(failing));
            f.once(&CommandQueue::commandAdded, [&] { f.queue.process(); });
            f.queue.addCommand(f.make(&f.refusedData));
        },
        "victim unlocked,refused unlocked"},
};

struct ForbiddenCall
{
    const char *name;
    void (*call)();
    const char *message;
};

/** A worker that executes one command, which calls @p work. */
void executeOnWorker(const std::function<void(CommandQueueThread &)> &work)
{
    CommandQueueThread worker;
    TestData data{u"A"_s};
    QSemaphore done;
    worker.getCommandQueue().addCommand(TestCommandPointer::create(&data, [&](TestCommand &) {
        work(worker);
        done.release();
    }));
    worker.start();
    done.acquire();
    worker.stop();
    worker.wait();
}

const ForbiddenCall forbiddenCalls[] = {
    {"stop() in a slot",
        [] {
            CommandQueueThread worker;
            TestData data{u"A"_s};
            QObject::connect(
                &worker.getCommandQueue(), &CommandQueue::commandAdded, &worker, &CommandQueueThread::stop);
            worker.getCommandQueue().addCommand(TestCommandPointer::create(&data));
        },
        "CommandQueueThread::stop: \"called with the queue's lock held\""},
    {"process() in handleExecute()",
        [] { executeOnWorker([](CommandQueueThread &worker) { worker.getCommandQueue().process(); }); },
        "CommandQueue::process: \"called while a run is under way\""},
    {"process() beside the worker's",
        [] {
            executeOnWorker(
                [](CommandQueueThread &worker) { std::thread([&] { worker.getCommandQueue().process(); }).join(); });
        },
        "CommandQueue::process: \"called while a run is under way\""},
    {"add without a record",
        [] { CommandQueue().addCommand(TestCommandPointer::create(nullptr)); },
        "CommandQueue::addCommand: \"the command has no record\""},
    {"cancel without a record",
        [] { CommandQueue().cancelCommand(TestCommandPointer::create(nullptr)); },
        "CommandQueue::cancelCommand: \"the command has no record\""},
    {"question without a record",
        [] { CommandQueue().hasCommand(TestCommandPointer::create(nullptr).data()); },
        "CommandQueue::hasCommand: \"the command has no record\""},
};
} // namespace

/** What happens under the mutex of the queue, and what must not. */
class CommandQueueLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lastReferences_data()
    {
        QTest::addColumn<const Release *>("release");
        for (const Release &release : releases) {
            QTest::newRow(release.name) << &release;
        }
    }
    void lastReferences()
    {
        QFETCH(const Release *, release);
        Fixture fixture;
        release->operation(fixture);
        QCOMPARE(fixture.destroyed.join(u','), QString::fromLatin1(release->destroyed));
    }

    void destructorMayStop()
    {
        CommandQueueThread worker;
        CommandQueue &queue = worker.getCommandQueue();
        TestData waiting{u"waiting"_s};
        TestData added{u"added"_s};
        queue.addCommand(TestCommandPointer::create(&waiting));
        const auto addAndCancel = [&] {
            auto command = TestCommandPointer::create(&added);
            command->destroyed = [&] { worker.stop(); };
            queue.addCommand(std::move(command));
            queue.cancelCommandByReference(u"added"_s);
        };
        connect(&queue,
            &CommandQueue::commandRemoved,
            &queue,
            addAndCancel,
            Qt::ConnectionType(Qt::DirectConnection | Qt::SingleShotConnection));
        worker.stop();
        QCOMPARE(added.getStatusAsString(), u"CANCELLED"_s);
    }

    /** Each row ends a process of its own. */
    void forbiddenCalls_data()
    {
        QTest::addColumn<const ForbiddenCall *>("forbidden");
        for (const ForbiddenCall &forbidden : ::forbiddenCalls) {
            QTest::newRow(forbidden.name) << &forbidden;
        }
    }
    void forbiddenCalls()
    {
#ifdef QT_NO_DEBUG
        QSKIP("a release build does not check them");
#endif
        QFETCH(const ForbiddenCall *, forbidden);
        if (qEnvironmentVariableIsSet("TARNWICK_FORBIDDEN_CALL")) {
            forbidden->call();
            return;
        }
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TARNWICK_FORBIDDEN_CALL"_s, u"1"_s);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(),
            {u"-nocrashhandler"_s, u"forbiddenCalls:"_s + QString::fromLatin1(QTest::currentDataTag())});
        QVERIFY(process.waitForFinished());
        const QByteArray output = process.readAll();
        QVERIFY2(output.contains(forbidden->message), output.constData());
    }
};

Q_DECLARE_METATYPE(const Release *)
Q_DECLARE_METATYPE(const ForbiddenCall *)

QTEST_GUILESS_MAIN(CommandQueueLockTest)
#include "tst_commandqueuelock.moc"
