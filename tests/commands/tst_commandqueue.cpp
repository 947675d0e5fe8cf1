#include "../support/TestCommand.h"

#include <QMetaMethod>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
using TestCommandPointer = QSharedPointer<TestCommand>;

/** Retries a command in error as often as it is told to, and clears under the mutex what it is done with. */
class RetryQueue : public TestQueue
{
public:
    int retries = -1; // errors are handled as by default

protected:
    void handleCommandInError() override
    {
        if (retries < 0) {
            TestQueue::handleCommandInError();
            return;
        }
        const QMutexLocker lock(&mutex);
        if (retries == 0) {
            removeCommand(currentCommand);
        }
        --retries;
        currentCommand.clear();
    }
};

/** Records and commands A and B, their queue, and a log of all their signals. */
struct Scene
{
    TestData a{u"A"_s};
    TestData b{u"B"_s};
    TestCommandPointer commandA = TestCommandPointer::create(&a);
    TestCommandPointer commandB = TestCommandPointer::create(&b);
    RetryQueue queue;
    Log log;

    void addBoth()
    {
        queue.addCommand(commandA);
        queue.addCommand(commandB);
        log.follow(&queue, {&a, &b});
    }
    QStringList listed() const
    {
        QStringList references;
        for (const QSharedPointer<Command> &command : queue.getCommands()) {
            references.append(command->getCommandData()->getReference());
        }
        return references;
    }
};

class FrontScheduler : public CommandScheduler
{
public:
    void schedule(
        QList<QSharedPointer<Command>> &commands, QSharedPointer<Command> command, Command *runningCommand) override
    {
        running.append(runningCommand);
        if (command->getCommandData()->getReference() != u"refused") {
            commands.prepend(command);
        }
    }

    QList<Command *> running;
};

} // namespace

class CommandQueueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void metaObject()
    {
        const QMetaObject &meta = CommandQueue::staticMetaObject;
        QByteArrayList names;
        for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
            names.append(meta.method(index).name());
        }
        QCOMPARE(names.join(' '),
            "commandAdded commandRemoved awaitingUserAction commandStarted commandFinished "
            "finishCommandAllowed startNextCommand"_ba);
    }

    /** What becomes of a command in a run, by what it did; the next one follows in each case. */
    void runs_data()
    {
        QTest::addColumn<QString>("endOfA");
        QTest::newRow("finished") << u"A FINISHED|removed A"_s;
        QTest::newRow("finished, cancelled") << u"A FINISHED|removed A"_s;
        QTest::newRow("unfinished, cancelled") << u"A CANCELLED|removed A"_s;
        QTest::newRow("finished, error") << u"A ERR|removed A"_s;
        QTest::newRow("unfinished, error") << u"A ERR|removed A"_s;
        QTest::newRow("finished, cancelled, error") << u"A ERR|A CANCELLED|removed A"_s;
        QTest::newRow("unfinished") << u"A QUEUEING"_s;
    }
    void runs()
    {
        QFETCH(const QString, endOfA);
        const QString way = QString::fromLatin1(QTest::currentDataTag());
        Scene scene;
        scene.addBoth();
        scene.commandA->finished = way.startsWith(u"finished");
        scene.commandA->work = [&](TestCommand &self) {
            if (way.contains(u"cancelled")) {
                scene.queue.cancelCommand(scene.commandA);
            }
            if (way.contains(u"error")) {
                self.setError(4);
            }
            self.startable = false;
        };
        scene.queue.process();
        QCOMPARE(scene.log.lines().join(u'|'),
            u"run begins A|A PROCESSING|%1|B PROCESSING|B FINISHED|removed B|run ends A"_s.arg(endOfA));
        QCOMPARE(scene.listed(), way == u"unfinished" ? QStringList{u"A"_s} : QStringList());
        QCOMPARE(scene.commandA->calls.lines().count(u"finished?"_s), 1);
        QVERIFY(scene.queue.currentCommand.isNull());
    }

    void runStopsForUserAction()
    {
        Scene scene;
        TestData twin(u"A"_s);
        TestCommand twinCommand(&twin);
        QVERIFY(!scene.queue.hasCommand(&twinCommand));
        scene.a.setStatus(CommandData::REQUIRE_USER_ACTION);
        scene.addBoth();
        QVERIFY(scene.queue.hasCommand(&twinCommand)); // by its reference
        scene.queue.process();
        scene.queue.process();
        QCOMPARE(
            scene.log.lines().join(u'|'), u"run begins A|awaiting A|run ends A|run begins A|awaiting A|run ends A"_s);
        QCOMPARE(scene.listed(), (QStringList{u"A"_s, u"B"_s}));
        scene.queue.cancelCommand(scene.commandA);
        QVERIFY(scene.queue.isPaused());
        scene.queue.process();
        QCOMPARE(scene.b.getStatus(), CommandData::FINISHED);
    }

    void messageHandlerMayUseWhatLogs()
    {
        TestQueue queue;
        TestData record(u"A"_s);
        bool locked = false;
        static std::function<void()> use;
        use = [&] {
            locked = locked || queue.isLocked();
            record.setErrorMessage(u"handled"_s); // to Qt's own handler, which steps in for one that is busy
        };
        const auto previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { use(); });
        queue.startNextCommand();
        QCOMPARE(record.getErrorMessage(), u"handled"_s);
        record.setErrorMessage(u"first"_s);
        qInstallMessageHandler(previous);
        QCOMPARE(record.getErrorMessage(), u"handled"_s);
        QVERIFY(!locked);
    }

    void nothingToStart()
    {
        TestQueue queue(nullptr);
        Log log;
        log.follow(&queue, {});
        queue.addCommand({});
        queue.cancelCommand({});
        queue.process();
        QVERIFY(log.lines().isEmpty() && !queue.hasCommand(nullptr) && queue.getNextCommandThatCanBeStarted().isNull());
        QTest::ignoreMessage(QtWarningMsg, "there are no commands left to process");
        queue.startNextCommand();
        QVERIFY(!queue.isProcessing());
    }

    void schedulerPlacesCommands()
    {
        auto scheduler = std::make_unique<FrontScheduler>();
        const QList<Command *> &running = scheduler->running;
        TestQueue queue(std::move(scheduler));
        TestData a(u"A"_s);
        TestData b(u"B"_s);
        TestData refused(u"refused"_s);
        QStringList added;
        connect(&queue, &CommandQueue::commandAdded, this, [&](const QSharedPointer<Command> &command) {
            added.append(command->getCommandData()->getReference());
        });
        const auto commandA = TestCommandPointer::create(&a, [&](TestCommand &) {
            queue.addCommand(TestCommandPointer::create(&b));
            queue.addCommand(TestCommandPointer::create(&refused));
            QCOMPARE(queue.getCommands().size(), 2);
            QCOMPARE(queue.getCommands().first()->getCommandData(), &b);
        });
        queue.addCommand(commandA);
        queue.process();
        QCOMPARE(running, (QList<Command *>{nullptr, commandA.data(), commandA.data()}));
        QCOMPARE(added, (QStringList{u"A"_s, u"B"_s, u"refused"_s}));
        QCOMPARE(b.getStatus(), CommandData::FINISHED);
        QCOMPARE(refused.getStatus(), CommandData::QUEUEING);
    }

    /** Which signals and hooks come with the mutex held, and what isProcessing() says in them. */
    void lockAndStateInSignals()
    {
        Scene scene;
        const auto note = [&](const QString &what) {
            scene.log.add(what + (scene.queue.isLocked() ? u" locked"_s : u" unlocked"_s)
                + (scene.queue.isProcessing() ? u" processing"_s : u""_s));
        };
        CommandQueue &queue = scene.queue;
        connect(&queue, &CommandQueue::commandAdded, this, [&] { note(u"added"_s); });
        connect(&queue, &CommandQueue::commandRemoved, this, [&] { note(u"removed"_s); });
        connect(&queue, &CommandQueue::awaitingUserAction, this, [&] { note(u"awaiting"_s); });
        connect(&queue, &CommandQueue::commandStarted, this, [&] { note(u"begins"_s); });
        connect(&queue, &CommandQueue::commandFinished, this, [&] { note(u"ends"_s); });
        for (const TestData *data : {&scene.a, &scene.b}) {
            connect(data, &CommandData::statusChanged, this, [&](CommandData *changed) {
                note(changed->getReference() + u' ' + changed->getStatusAsString());
            });
        }
        scene.commandA->work = [&](TestCommand &) { note(u"work"_s); };
        queue.addCommand(scene.commandA);
        queue.process();
        scene.b.setStatus(CommandData::REQUIRE_USER_ACTION);
        scene.commandB->lookHook = [&] { note(u"look"_s); };
        scene.commandB->cancelHook = [&] { note(u"cancel"_s); };
        queue.addCommand(scene.commandB);
        queue.process();
        queue.cancelCommand(scene.commandB);
        QCOMPARE(scene.log.lines().join(u'|'),
            u"A QUEUEING unlocked|added locked|begins unlocked processing|A PROCESSING unlocked processing|"
            "work unlocked processing|A FINISHED unlocked processing|removed locked processing|ends unlocked|"
            "B REQUIRE_USER_ACTION unlocked|added locked|look locked|begins unlocked processing|"
            "look locked processing|look locked processing|awaiting locked processing|look locked|"
            "ends unlocked|cancel locked|B CANCELLED locked|removed locked"_s);
    }

    void lastReferenceGoesWithoutTheMutex_data()
    {
        QTest::addColumn<QString>("way");
        QTest::newRow("run") << u"run"_s;
        QTest::newRow("cancelled") << u"cancelled"_s;
        QTest::newRow("cancelled while asked whether it can start") << u"asked"_s;
        QTest::newRow("left behind by an error handler") << u"left behind"_s;
        QTest::newRow("left behind, then user action") << u"left behind, user action"_s;
        QTest::newRow("error") << u"error"_s;
        QTest::newRow("error handler that clears under the mutex") << u"error handler"_s;
    }
    void lastReferenceGoesWithoutTheMutex()
    {
        QFETCH(const QString, way);
        Scene scene;
        scene.addBoth();
        scene.commandA->destroyed = [&] { scene.log.add(u"gone "_s + (scene.queue.isLocked() ? u'1' : u'0')); };
        if (way == u"asked") {
            scene.commandA->startable = false;
            scene.commandA->lookHook = [&] { scene.queue.cancelCommandByReference(u"A"_s); };
        } else if (way.startsWith(u"error")) {
            scene.queue.retries = way == u"error" ? -1 : 2;
            scene.queue.cancelCommandByReference(u"B"_s); // which would take the place of A
            scene.commandA->work = [&](TestCommand &self) {
                scene.log.add(u"tried"_s);
                self.setError(1);
            };
        } else if (way.startsWith(u"left behind")) {
            scene.queue.currentCommand = scene.commandA;
            scene.queue.removeCommand(scene.commandA);
        }
        scene.commandA.reset();
        if (way.endsWith(u"user action")) {
            scene.b.setStatus(CommandData::REQUIRE_USER_ACTION);
        }
        if (way == u"cancelled") {
            scene.queue.cancelCommandByReference(u"A"_s);
        } else {
            scene.queue.process();
        }
        QCOMPARE(scene.log.lines().filter(u"gone"_s), QStringList{u"gone 0"_s});
        QCOMPARE(scene.log.lines().count(u"tried"_s), way == u"error" ? 1 : way == u"error handler" ? 3 : 0);
        if (way == u"run") {
            QCOMPARE(scene.log.lines().mid(scene.log.lines().size() - 2).join(u'|'), u"run ends A|gone 0"_s);
        }
    }
};

QTEST_GUILESS_MAIN(CommandQueueTest)
#include "tst_commandqueue.moc"
