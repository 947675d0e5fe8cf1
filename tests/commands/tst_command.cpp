#include "../support/TestCommand.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
// Notes each code with the status of that moment.
class NotingData : public TestData
{
public:
    using TestData::TestData;
    void setErrorCode(int errorCode) override
    {
        log.add(u"code %1 in %2"_s.arg(errorCode).arg(getStatusAsString()));
        CommandData::setErrorCode(errorCode);
    }
    Log log;
};

// Has a record of its own, which Command does not know.
class OwningCommand : public TestCommand
{
public:
    OwningCommand()
        : TestCommand(nullptr)
    {
        callHook = [this](const QString &call) { record.log.add(call); };
    }
    CommandData *getCommandData() override { return &record; }
    NotingData record{u"own"_s};
};
} // namespace

class CommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newCommand()
    {
        TestData record(u"a"_s);
        {
            TestCommand command(&record);
            QCOMPARE(command.getCommandData(), &record);
            QCOMPARE(command.isPaused(), false);
            QCOMPARE(command.isCancelled(), false);
            QCOMPARE(command.Command::isFinished(), true);
            QVERIFY(QMetaType::fromName("QSharedPointer<Command>").isValid());
        }
        record.setStatus(CommandData::FINISHED); // the record outlives its command
    }

    // Each call of a hook comes with the flags that it sees.
    void flagsAndHooks_data()
    {
        using Operations = QList<void (Command::*)()>;
        QTest::addColumn<Operations>("operations");
        QTest::addColumn<QString>("calls");
        QTest::newRow("pause") << Operations{&Command::pause, &Command::pause} << "pause (paused), pause (paused)";
        QTest::newRow("cancel") << Operations{&Command::cancel, &Command::cancel}
                                << "cancel (cancelled), cancel (cancelled)";
        QTest::newRow("resume") << Operations{&Command::resume} << "resume";
        QTest::newRow("pause, resume") << Operations{&Command::pause, &Command::resume} << "pause (paused), resume";
        QTest::newRow("pause, execute") << Operations{&Command::pause, &Command::execute} << "pause (paused), execute";
        QTest::newRow("cancel, execute") << Operations{&Command::cancel, &Command::execute}
                                         << "cancel (cancelled), execute (cancelled)";
        QTest::newRow("pause, cancel, resume") << Operations{&Command::pause, &Command::cancel, &Command::resume}
                                               << "pause (paused), cancel (paused) (cancelled), resume (cancelled)";
    }
    void flagsAndHooks()
    {
        QFETCH(const QList<void (Command::*)()>, operations);
        TestData record(u"a"_s);
        TestCommand command(&record);
        QStringList calls;
        command.callHook = [&](const QString &call) {
            calls.append(call + (command.isPaused() ? u" (paused)"_s : QString())
                + (command.isCancelled() ? u" (cancelled)"_s : QString()));
        };
        for (const auto operation : operations) {
            (command.*operation)();
        }
        QTEST(calls.join(u", "), "calls");
        QCOMPARE(record.getStatus(), CommandData::OTHER);
    }

    void pauseDuringExecuteRemains()
    {
        TestData record(u"a"_s);
        TestCommand command(&record, [](TestCommand &self) { self.pause(); });
        command.execute();
        QCOMPARE(command.isPaused(), true);
    }

    void errorSetsStatusThenCodeThenCallsHook()
    {
        OwningCommand command;
        command.record.setStatus(CommandData::PROCESSING);
        command.setError(0);
        QCOMPARE(command.record.log.text(), u"code 0 in ERR, error"_s);
    }
};

QTEST_GUILESS_MAIN(CommandTest)
#include "tst_command.moc"
