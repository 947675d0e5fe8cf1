#include "../support/LogRecorder.h"
#include "../support/TestCommand.h"

#include <QMetaMethod>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
struct Fixture;
using Step = std::function<void(Fixture &)>;
using Steps = QList<Step>;

class TestScheduler : public CommandScheduler
{
public:
    void schedule(
        QList<QSharedPointer<Command>> &commands, QSharedPointer<Command> command, Command *runningCommand) override
    {
        running.append(runningCommand);
        if (prepends) {
            commands.prepend(command);
        } else if (!refuses) {
            CommandScheduler::schedule(commands, std::move(command), runningCommand);
        }
    }
    bool prepends = false;
    bool refuses = false;
    QList<Command *> running; // at each call
};

// Handles an error by default, unless the hook has cleared the current command.
class ErrorQueue : public TestQueue
{
public:
    using CommandQueue::mutex;
    using TestQueue::TestQueue;
    std::function<void()> errorHook;

protected:
    void handleCommandInError() override
    {
        errorHook();
        if (currentCommand) {
            TestQueue::handleCommandInError();
        }
    }
};

// A queue that lists A; beside it B and T, a twin with the reference of A; and a log of all signals and hooks.
struct Fixture
{
    explicit Fixture(bool showsState)
        : showsState(showsState)
    {
        queue.addCommand(a.command);
        queue.errorHook = [this] { happen(u"handleCommandInError"_s); };
        follow(queue, [this](const QString &event, const CommandData *data) { happen(event + u' ' + nameOf(data)); });
        for (Item *item : {&a, &b, &twin}) {
            const QChar name = nameOf(&item->data);
            QObject::connect(&item->data, &CommandData::statusChanged, [this, name](CommandData *data) {
                happen(name + u' ' + data->getStatusAsString());
            });
            item->command->callHook = [this, name](const QString &call) { happen(call + u' ' + name); };
        }
    }

    // Logs an event, then does what is to be done during it.
    void happen(const QString &event)
    {
        if (showsState) {
            log.add(event + (queue.isLocked() ? u" locked"_s : QString()) + state());
        } else if (!event.startsWith(u"isFinished")) {
            log.add(event);
        }
        if (a.command && log.lines().size() > 99) {
            a.command->startable = false; // ends an endless run
        }
        take(reactions.take(event));
    }
    void take(const Steps &steps)
    {
        for (const Step &step : steps) {
            step(*this);
        }
    }
    // Returns the fixture's reference to A; none is left here.
    QSharedPointer<Command> takeCommand()
    {
        a.command->destroyed = [this] { happen(u"destroyed A"_s); };
        return std::exchange(a.command, nullptr);
    }
    Item &item(char name) { return name == 'A' ? a : name == 'B' ? b : twin; }
    QChar nameOf(const CommandData *data) const { return data == &a.data ? u'A' : data == &b.data ? u'B' : u'T'; }
    QString state() const
    {
        return (queue.isProcessing() ? u" processing"_s : QString()) + (queue.isPaused() ? u" paused"_s : QString());
    }
    QString listed() const
    {
        QString names;
        for (const QSharedPointer<Command> &command : queue.getCommands()) {
            names += nameOf(command->getCommandData());
        }
        return names;
    }

    Item a{u"A"_s};
    Item b{u"B"_s};
    Item twin{u"A"_s};
    Log log;
    QHash<QString, Steps> reactions;
    const bool showsState; // each event tells whether the mutex is locked, and the state of the queue
    TestScheduler *const scheduler = new TestScheduler;
    ErrorQueue queue{std::unique_ptr<CommandScheduler>(scheduler)};
};

const auto process = [](Fixture &f) { f.queue.process(); };
const auto pause = [](Fixture &f) { f.queue.pause(); };
const auto showListed = [](Fixture &f) { f.log.add(u"listed: "_s + f.listed()); };
const auto leaveCurrent = [](Fixture &f) { f.queue.currentCommand = f.a.command; };
const auto removeCurrent = [](Fixture &f) { f.queue.removeCommand(f.queue.currentCommand); };
const auto clearCurrent = [](Fixture &f) {
    const QMutexLocker lock(&f.queue.mutex);
    f.queue.currentCommand.clear();
};
const auto retry = [](Fixture &f) { f.queue.currentCommand->setError(CommandData::RETRY_ERROR_CODE); };
const auto error = [](Fixture &f) { f.queue.currentCommand->setError(4); };
const auto finished = [](Fixture &f) { f.a.command->finished = true; };
const auto unfinished = [](Fixture &f) { f.a.command->finished = false; };
const auto notStartable = [](Fixture &f) { f.a.command->startable = false; };
// Leaves the last reference to the queue.
const auto release = [](Fixture &f) { f.takeCommand(); };
const auto cancelListed = [](Fixture &f) {
    f.takeCommand();
    f.queue.cancelCommandByReference(u"A"_s);
};
const auto cancelUnlisted = [](Fixture &f) {
    f.queue.removeCommand(f.a.command);
    f.queue.cancelCommand(f.takeCommand());
};
const auto addRefused = [](Fixture &f) {
    f.queue.removeCommand(f.a.command);
    f.scheduler->refuses = true;
    f.queue.addCommand(f.takeCommand());
};

const auto add = [](char name) { return Step([=](Fixture &f) { f.queue.addCommand(f.item(name).command); }); };
const auto showLooks = [](char name) {
    return Step(
        [=](Fixture &f) { f.item(name).command->lookHook = [=, &f] { f.happen(u"look "_s + QLatin1Char(name)); }; });
};
const auto cancel = [](char name) { return Step([=](Fixture &f) { f.queue.cancelCommand(f.item(name).command); }); };
const auto cancelReference = [](const QString &reference) {
    return Step([=](Fixture &f) { f.queue.cancelCommandByReference(reference); });
};
const auto removeOne = [](char name) { return Step([=](Fixture &f) { f.queue.removeCommand(f.item(name).command); }); };
const auto requireUserAction = [](char name) {
    return Step([=](Fixture &f) { f.item(name).data.setStatus(CommandData::REQUIRE_USER_ACTION); });
};
const auto hasCommand = [](char name) {
    return Step([=](Fixture &f) { f.log.add(f.queue.hasCommand(f.item(name).command.data()) ? u"yes"_s : u"no"_s); });
};
// Takes `steps` within the slot or hook that logs `event` next.
const auto during = [](const char *event, const Steps &steps) {
    return Step([=](Fixture &f) { f.reactions.insert(QString::fromLatin1(event), steps); });
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

    // Which events follow the steps, in this order, and what is listed in the end. At first A is.
    void rules_data()
    {
        addColumns();

        // The end of a command.
        row("finished", {process}, "begin A, A PROCESSING, execute A, A FINISHED, removed A, end A");
        row("finished, cancelled",
            {during("execute A", {cancel('A')}), process},
            "begin A, A PROCESSING, execute A, cancel A, A FINISHED, removed A, end A");
        row("unfinished, cancelled",
            {unfinished, during("execute A", {cancel('A')}), process},
            "begin A, A PROCESSING, execute A, cancel A, A CANCELLED, removed A, end A");
        row("unfinished, cancelled late",
            {unfinished, during("A QUEUEING", {cancel('A')}), process},
            "begin A, A PROCESSING, execute A, A QUEUEING, cancel A, A CANCELLED, removed A, end A");
        row("unfinished, error with the code for a retry",
            {unfinished, during("execute A", {retry}), process},
            "begin A, A PROCESSING, execute A, A ERR, error A, handleCommandInError, removed A, end A");
        row("error in isFinished()",
            {during("isFinished A", {error}), process},
            "begin A, A PROCESSING, execute A, A ERR, error A, handleCommandInError, removed A, end A");
        row("finished, cancelled, error",
            {during("execute A", {cancel('A'), error}), process},
            "begin A, A PROCESSING, execute A, cancel A, A ERR, error A, A CANCELLED, removed A, end A");
        row("error, executed again by a handler",
            {during("execute A", {error, during("execute A", {error})}),
                during("handleCommandInError", {clearCurrent}),
                process},
            "begin A, A PROCESSING, execute A, A ERR, error A, handleCommandInError, A PROCESSING, execute A, "
            "A ERR, error A, handleCommandInError, removed A, end A");
        row("unfinished, then finished; keeps its place",
            {add('B'), unfinished, during("A QUEUEING", {showListed, finished}), process},
            "B QUEUEING, added B, begin A, A PROCESSING, execute A, A QUEUEING, listed: AB, A PROCESSING, "
            "execute A, A FINISHED, removed A, B PROCESSING, execute B, B FINISHED, removed B, end A");
        row("what commandRemoved finds: not listed, but current",
            {during("removed A", {showListed, cancel('A'), pause}), process},
            "begin A, A PROCESSING, execute A, A FINISHED, removed A, listed: , cancel A, pause A, end A, left paused");

        // Pauses.
        row("pause without a run", {pause}, "left A paused");
        row("nothing can start, the pause remains", {notStartable, pause, process}, "left A paused");
        row("add to a paused queue", {pause, add('B')}, "B QUEUEING, added B, left AB paused");
        row("pause as a run begins", {during("begin A", {pause}), process}, "begin A, end A, left A paused");
        row("pause of a command that finishes; add and second pause",
            {during("execute A", {pause, add('B'), pause}), process},
            "begin A, A PROCESSING, execute A, pause A, B QUEUEING, added B, pause A, A FINISHED, removed A, end A, "
            "left B paused");
        row("pause of an unfinished command; next run",
            {unfinished, during("execute A", {pause}), process, finished, process},
            "begin A, A PROCESSING, execute A, pause A, A QUEUEING, end A, begin A, A PROCESSING, execute A, "
            "A FINISHED, removed A, end A");

        // User action.
        row("user action, still required, cancelled",
            {add('B'), requireUserAction('A'), process, process, cancel('A')},
            "B QUEUEING, added B, A REQUIRE_USER_ACTION, begin A, awaiting A, end A, begin A, awaiting A, end A, "
            "cancel A, A CANCELLED, removed A, left B paused");
        row("what awaitingUserAction finds: listed and current",
            {requireUserAction('A'), during("awaiting A", {showListed, cancel('A'), pause}), process},
            "A REQUIRE_USER_ACTION, begin A, awaiting A, listed: A, cancel A, pause A, end A, left A paused");
        row("user action required by the running command",
            {during("execute A", {requireUserAction('A')}), process},
            "begin A, A PROCESSING, execute A, A REQUIRE_USER_ACTION, A FINISHED, removed A, end A");

        // Cancels.
        row("cancel of a waiting command", {cancel('A')}, "cancel A, A CANCELLED, removed A");
        row("cancel of a command that is not listed", {cancel('B')}, "cancel B, B CANCELLED, removed B, left A");
        row("cancel of the running command's twin",
            {during("execute A", {add('T'), cancel('T')}), process},
            "begin A, A PROCESSING, execute A, T QUEUEING, added T, cancel T, T CANCELLED, removed T, A FINISHED, "
            "removed A, end A");
        row("cancel by the reference of two",
            {add('T'), cancelReference(u"A"_s)},
            "T QUEUEING, added T, cancel A, A CANCELLED, removed A, left T");
        row("cancel by other references",
            {cancelReference(u"a"_s), cancelReference(u"A "_s), cancelReference({})},
            "left A");
        row("added again after a cancel",
            {cancel('A'), add('A'), unfinished, process},
            "cancel A, A CANCELLED, removed A, A QUEUEING, added A, begin A, A PROCESSING, execute A, A CANCELLED, "
            "removed A, end A");
        row("a later command is cancelled while an earlier one is asked",
            {add('B'), notStartable, showLooks('A'), during("look A", {cancel('B')}), process},
            "B QUEUEING, added B, look A, cancel B, B CANCELLED, removed B, begin B, look A, end B, left A");

        // The list.
        row("the same command twice", {add('A')}, "added A, left AA");
        row("one of two entries is cancelled",
            {add('B'), add('A'), cancel('A')},
            "B QUEUEING, added B, added A, cancel A, A CANCELLED, removed A, left BA");
        row("a command that is not listed is removed", {removeOne('T')}, "removed T, left A");
        row("the first command cannot start",
            {notStartable, add('B'), process},
            "B QUEUEING, added B, begin B, B PROCESSING, execute B, B FINISHED, removed B, end B, left A");
        row("hasCommand() of the running command, its twin and another",
            {during("execute A", {hasCommand('A'), hasCommand('T'), hasCommand('B')}), process, hasCommand('A')},
            "begin A, A PROCESSING, execute A, yes, yes, no, A FINISHED, removed A, end A, no");
    }
    void rules() { compare(false); }

    // Which events come with the mutex locked, and the state of the queue in them.
    void lockAndState_data()
    {
        addColumns();
        row("add and cancel",
            {add('B'), cancel('B')},
            "B QUEUEING, added B locked, cancel B locked, B CANCELLED locked, removed B locked, left A");
        row("finished",
            {process},
            "begin A processing, A PROCESSING processing, execute A processing, isFinished A processing, "
            "A FINISHED processing, removed A locked processing, end A");
        row("cancelled and paused",
            {unfinished, during("execute A", {cancel('A'), pause}), process},
            "begin A processing, A PROCESSING processing, execute A processing, cancel A locked processing, "
            "pause A locked processing paused, isFinished A processing paused, A CANCELLED processing paused, "
            "removed A locked processing paused, end A paused, left paused");
        row("unfinished",
            {unfinished, during("execute A", {notStartable}), process},
            "begin A processing, A PROCESSING processing, execute A processing, isFinished A processing, "
            "A QUEUEING processing, end A, left A");
        row("error",
            {during("execute A", {error}), process},
            "begin A processing, A PROCESSING processing, execute A processing, A ERR processing, "
            "error A processing, isFinished A processing, handleCommandInError processing, "
            "removed A locked processing, end A");
        row("user action",
            {requireUserAction('A'), showLooks('A'), process},
            "A REQUIRE_USER_ACTION, look A locked, begin A processing, look A locked processing, "
            "look A locked processing, awaiting A locked processing paused, look A locked paused, end A paused, "
            "left A paused");
    }
    void lockAndState() { compare(true); }

    // The last reference to A is released once, when the mutex is unlocked.
    void lastReference_data()
    {
        addColumns();
        const Steps afterB{add('B'), add('A'), removeOne('A')};
        row("run", {release, process}, "destroyed A");
        row("second in the run", afterB + Steps{release, process}, "destroyed A processing");
        row("left behind by an error handler",
            {leaveCurrent, removeOne('A'), release, add('B'), process},
            "destroyed A processing");
        row("left behind, then user action",
            {leaveCurrent, removeOne('A'), release, requireUserAction('B'), add('B'), process},
            "destroyed A paused");
        row("error", afterB + Steps{during("execute A", {error}), release, process}, "destroyed A processing");
        row("error, cleared under the mutex",
            afterB
                + Steps{during("execute A", {error}),
                    during("handleCommandInError", {removeCurrent, clearCurrent}),
                    release,
                    process},
            "destroyed A processing");
        row("run in added B", {release, during("added B", {process}), add('B')}, "destroyed A");
        row("error in added B",
            {during("execute A", {error}), release, during("added B", {process}), add('B')},
            "destroyed A");

        const std::pair<const char *, Step> operations[] = {
            {"cancel listed", cancelListed},
            {"cancel unlisted", cancelUnlisted},
            {"add refused", addRefused},
        };
        const std::pair<const char *, const char *> places[] = {
            {"added B", "destroyed A"},
            {"look B", "destroyed A processing"},
            {"awaiting B", "destroyed A paused"},
            {"cancel B", "destroyed A paused"},
            {"removed B", "destroyed A paused"},
        };
        for (const auto &[name, operation] : operations) {
            row(name, {operation}, "destroyed A");
            for (const auto &[place, destruction] : places) {
                const Steps all{during(place, {operation}), add('B'), requireUserAction('B'), process, cancel('B')};
                QTest::addRow("%s in %s", name, place) << afterB + Steps{showLooks('B')} + all << destruction;
            }
        }
    }
    void lastReference()
    {
        QFETCH(const Steps, steps);
        Fixture fixture(true);
        fixture.take(steps);
        QTEST(fixture.log.lines().filter(u"destroyed"_s).join(u", "), "events");
    }

    // Of all statuses, only a request for user action outlasts addCommand() and keeps a run from executing.
    void statuses_data()
    {
        QTest::addColumn<CommandData::Status>("status");
        for (int status = CommandData::QUEUEING; status <= CommandData::PAUSED + 1; ++status) {
            QTest::addRow("%d", status) << CommandData::Status(status);
        }
    }
    void statuses()
    {
        QFETCH(const CommandData::Status, status);
        const bool remains = status == CommandData::REQUIRE_USER_ACTION;
        Item item(u"A"_s);
        CommandQueue queue;
        item.data.setStatus(status);
        queue.addCommand(item.command);
        QCOMPARE(item.data.getStatus(), remains ? status : CommandData::QUEUEING);
        item.data.setStatus(status);
        item.command->work = [&](TestCommand &) { QCOMPARE(item.data.getStatus(), CommandData::PROCESSING); };
        queue.process();
        QCOMPARE(item.data.getStatus(), remains ? status : CommandData::FINISHED);
        QCOMPARE(item.command->calls.text(), remains ? QString() : u"execute, isFinished"_s);
    }

    void isActive()
    {
        Fixture fixture(false);
        QCOMPARE(fixture.queue.isActive(), true); // without a run, too
        fixture.queue.pause();
        QCOMPARE(fixture.queue.isActive(), false);
        fixture.queue.process();
        QCOMPARE(fixture.queue.isPaused(), false);
        QCOMPARE(fixture.queue.isActive(), false);
    }

    void onlyAStepWithoutCommandWarns()
    {
        TestQueue queue(nullptr);
        const LogRecorder recorder;
        queue.process();
        QCOMPARE(LogRecorder::getLines(), QStringList());
        queue.startNextCommand();
        QCOMPARE(LogRecorder::getLines(), QStringList{u"1 default there are no commands left to process"_s});
        queue.pause();
        queue.startNextCommand();
        QCOMPARE(LogRecorder::getLines().size(), 1);
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

    void nullIsNoCommand()
    {
        TestQueue queue;
        connect(&queue, &CommandQueue::commandAdded, this, [] { QFAIL("commandAdded"); });
        connect(&queue, &CommandQueue::commandRemoved, this, [] { QFAIL("commandRemoved"); });
        queue.addCommand({});
        queue.cancelCommand({});
        QCOMPARE(queue.getCommands().size(), 0);
        QCOMPARE(queue.hasCommand(nullptr), false);
        QCOMPARE(queue.getNextCommandThatCanBeStarted(), nullptr);
    }

    void schedulerPlacesCommands()
    {
        Fixture f(false);
        f.a.command->work = [&](TestCommand &) {
            f.scheduler->prepends = true;
            f.queue.addCommand(f.b.command);
            f.scheduler->prepends = false;
            f.scheduler->refuses = true;
            f.queue.addCommand(f.twin.command);
            f.log.add(u"listed: "_s + f.listed());
        };
        f.queue.startNextCommand();
        QCOMPARE(f.log.text(),
            u"A PROCESSING, execute A, B QUEUEING, added B, T QUEUEING, added T, listed: BA, A FINISHED, removed A"_s);
        Command *const a = f.a.command.data();
        QCOMPARE(f.scheduler->running, (QList<Command *>{nullptr, a, a}));
    }

private:
    static void addColumns()
    {
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<QString>("events"); // and what is listed in the end
    }
    static void row(const char *name, const Steps &steps, const char *events)
    {
        QTest::newRow(name) << steps << events;
    }
    static void compare(bool showsState)
    {
        QFETCH(const Steps, steps);
        Fixture fixture(showsState);
        fixture.take(steps);
        if (const QString left = fixture.listed() + fixture.state(); !left.isEmpty()) {
            fixture.log.add(u"left "_s + left.trimmed());
        }
        QTEST(fixture.log.text(), "events");
        QVERIFY(fixture.queue.currentCommand.isNull());
    }
};

QTEST_GUILESS_MAIN(CommandQueueTest)
#include "tst_commandqueue.moc"
