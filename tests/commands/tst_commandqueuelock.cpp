#include "../support/TestCommand.h"

#include <commands/CommandQueueThread.h>

#include <QProcess>
#include <QSemaphore>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
using TestCommandPointer = QSharedPointer<TestCommand>;

/** Does not list commands with the reference "refused". */
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

void noRecord(void (*call)(CommandQueue &queue, const TestCommandPointer &command))
{
    CommandQueue queue;
    call(queue, TestCommandPointer::create(nullptr));
}

/** Starts a worker whose only command calls @p work. */
void executeOnWorker(void (*work)(CommandQueueThread &worker))
{
    CommandQueueThread worker;
    TestData data{u"A"_s};
    worker.getCommandQueue().addCommand(TestCommandPointer::create(&data, [&](TestCommand &) { work(worker); }));
    worker.start();
    worker.wait();
}

struct ForbiddenCall
{
    const char *name;
    void (*call)();
    const char *message;
};

const ForbiddenCall forbiddenCallList[] = {
    {"stop() under the lock",
        [] {
            CommandQueueThread worker;
            CommandQueue &queue = worker.getCommandQueue();
            TestData data{u"A"_s};
            QObject::connect(&queue, &CommandQueue::commandAdded, &worker, &CommandQueueThread::stop);
            queue.addCommand(TestCommandPointer::create(&data));
        },
        "CommandQueueThread::stop: \"called with the queue's lock held\""},
    {"process() in handleExecute()",
        [] { executeOnWorker([](CommandQueueThread &worker) { worker.getCommandQueue().process(); }); },
        "CommandQueue::process: \"called while a run is under way\""},
    {"process() on two threads",
        [] {
            executeOnWorker([](CommandQueueThread &worker) {
                std::thread([&worker] { worker.getCommandQueue().process(); }).join();
            });
        },
        "CommandQueue::process: \"called while a run is under way\""},
    {"addCommand() without a record",
        [] { noRecord([](auto &queue, auto &command) { queue.addCommand(command); }); },
        "CommandQueue::addCommand: \"the command has no record\""},
    {"cancelCommand() without a record",
        [] { noRecord([](auto &queue, auto &command) { queue.cancelCommand(command); }); },
        "CommandQueue::cancelCommand: \"the command has no record\""},
    {"hasCommand() without a record",
        [] { noRecord([](auto &queue, auto &command) { queue.hasCommand(command.data()); }); },
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
        QTest::addColumn<QString>("place");
        QTest::addColumn<QString>("operation");
        const char *const places[] = {"nowhere", "added", "removed", "awaiting", "handleCancel", "canBeStarted"};
        for (const char *place : places) {
            for (const char *operation : {"cancel listed", "cancel unlisted", "add refused"}) {
                QTest::addRow("%s in %s", operation, place)
                    << QString::fromLatin1(place) << QString::fromLatin1(operation);
            }
        }
        QTest::newRow("run in added") << u"added"_s << u"run"_s;
        QTest::newRow("error in added") << u"added"_s << u"error"_s;
    }
    /** The queue has the last references to a command, and @p operation drops them in @p place. */
    void lastReferences()
    {
        QFETCH(const QString, place);
        QFETCH(const QString, operation);
        TestData data{u"data"_s};
        TestData victimData{operation.endsWith(u"refused") ? u"refused"_s : u"victim"_s};
        TestQueue queue(std::make_unique<RefusingScheduler>());
        const auto command = TestCommandPointer::create(&data);
        auto victim = TestCommandPointer::create(&victimData);
        QStringList destroyed;
        victim->destroyed = [&] { destroyed.append(queue.isLocked() ? u"locked"_s : u"unlocked"_s); };
        if (operation == u"error") {
            victim->work = [](TestCommand &self) { self.setError(1); };
        }
        queue.addCommand(command);
        if (operation == u"cancel listed" || operation == u"run" || operation == u"error") {
            queue.addCommand(std::exchange(victim, nullptr));
        }
        const auto dropIn = [&](const char *here) {
            return [&, here] {
                if (place != QLatin1String(here)) {
                    return;
                }
                if (operation == u"cancel listed") {
                    queue.cancelCommandByReference(u"victim"_s);
                } else if (operation == u"cancel unlisted") {
                    queue.cancelCommand(std::exchange(victim, nullptr));
                } else if (operation == u"add refused") {
                    queue.addCommand(std::exchange(victim, nullptr));
                } else if (!queue.isProcessing()) {
                    queue.process();
                }
            };
        };
        connect(&queue, &CommandQueue::commandAdded, &queue, dropIn("added"));
        connect(&queue, &CommandQueue::commandRemoved, &queue, dropIn("removed"));
        connect(&queue, &CommandQueue::awaitingUserAction, &queue, dropIn("awaiting"));
        command->cancelHook = dropIn("handleCancel");
        command->lookHook = dropIn("canBeStarted");

        dropIn("nowhere")();
        queue.addCommand(command);
        data.setStatus(CommandData::REQUIRE_USER_ACTION);
        queue.process();
        queue.cancelCommand(command);
        QCOMPARE(destroyed, QStringList{u"unlocked"_s});
    }

    void destructorMayStop()
    {
        CommandQueueThread worker;
        CommandQueue &queue = worker.getCommandQueue();
        TestData waiting{u"waiting"_s};
        TestData added{u"added"_s};
        queue.addCommand(TestCommandPointer::create(&waiting));
        connect(&queue, &CommandQueue::commandRemoved, &queue, [&](CommandData *removed) {
            if (removed == &waiting) {
                auto command = TestCommandPointer::create(&added);
                command->destroyed = [&] { worker.stop(); };
                queue.addCommand(std::move(command));
                queue.cancelCommandByReference(u"added"_s);
            }
        });
        worker.stop();
        QCOMPARE(added.getStatus(), CommandData::CANCELLED);
    }

    /** Each row ends a process of its own. */
    void forbiddenCalls_data()
    {
        QTest::addColumn<int>("index");
        for (int index = 0; index < int(std::size(forbiddenCallList)); ++index) {
            QTest::newRow(forbiddenCallList[index].name) << index;
        }
    }
    void forbiddenCalls()
    {
#ifdef QT_NO_DEBUG
        QSKIP("not checked in a release build");
#endif
        QFETCH(const int, index);
        if (qEnvironmentVariableIsSet("TARNWICK_FORBIDDEN_CALL")) {
            forbiddenCallList[index].call();
            return;
        }
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TARNWICK_FORBIDDEN_CALL"_s, u"1"_s);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(),
            {u"-nocrashhandler"_s, u"forbiddenCalls:"_s + QString::fromLatin1(QTest::currentDataTag())});
        QVERIFY(process.waitForFinished());
        const QByteArray output = process.readAllStandardOutput() + process.readAllStandardError();
        QVERIFY2(output.contains(forbiddenCallList[index].message), output.constData());
    }
};

QTEST_GUILESS_MAIN(CommandQueueLockTest)
#include "tst_commandqueuelock.moc"
