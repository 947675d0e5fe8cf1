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
            return [&, isHere = place == QLatin1String(here)] {
                if (!isHere) {
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
        const auto dropInCancel = dropIn("handleCancel");
        command->callHook = [&](const QString &) { dropInCancel(); };
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

    void forbiddenCalls_data()
    {
        QTest::addColumn<QString>("message");
        QTest::newRow("stop() under the lock") << "CommandQueueThread::stop: \"called with the queue's lock held\"";
        QTest::newRow("process() in handleExecute()") << "CommandQueue::process: \"called while a run is under way\"";
        QTest::newRow("process() on two threads") << "CommandQueue::process: \"called while a run is under way\"";
        QTest::newRow("addCommand()") << "CommandQueue::addCommand: \"the command has no record\"";
        QTest::newRow("cancelCommand()") << "CommandQueue::cancelCommand: \"the command has no record\"";
        QTest::newRow("hasCommand()") << "CommandQueue::hasCommand: \"the command has no record\"";
    }
    /** Each row ends a process of its own. */
    void forbiddenCalls()
    {
#ifdef QT_NO_DEBUG
        QSKIP("not checked in a release build");
#endif
        const QString call = QString::fromLatin1(QTest::currentDataTag());
        if (qEnvironmentVariableIsSet("TARNWICK_FORBIDDEN_CALL")) {
            return make(call);
        }
        qputenv("TARNWICK_FORBIDDEN_CALL", "1");
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {u"-nocrashhandler"_s, u"forbiddenCalls:"_s + call});
        qunsetenv("TARNWICK_FORBIDDEN_CALL");
        QVERIFY(process.waitForFinished());
        const QString output = QString::fromLocal8Bit(process.readAllStandardOutput() + process.readAllStandardError());
        QFETCH(const QString, message);
        QVERIFY2(output.contains(message), qPrintable(output));
    }

private:
    static void make(const QString &call)
    {
        TestData data{u"A"_s};
        CommandQueueThread worker;
        CommandQueue &queue = worker.getCommandQueue();
        const auto noRecord = TestCommandPointer::create(nullptr);
        const auto command = TestCommandPointer::create(&data, [&](TestCommand &) {
            if (call.endsWith(u"threads")) {
                std::thread([&] { queue.process(); }).join();
            } else {
                queue.process();
            }
        });
        if (call.startsWith(u"stop()")) {
            connect(&queue, &CommandQueue::commandAdded, &worker, &CommandQueueThread::stop);
            queue.addCommand(command);
        } else if (call.startsWith(u"process()")) {
            queue.addCommand(command);
            queue.process();
        } else if (call == u"addCommand()") {
            queue.addCommand(noRecord);
        } else if (call == u"cancelCommand()") {
            queue.cancelCommand(noRecord);
        } else {
            queue.hasCommand(noRecord.data());
        }
    }
};

QTEST_GUILESS_MAIN(CommandQueueLockTest)
#include "tst_commandqueuelock.moc"
