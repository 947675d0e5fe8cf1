#include "../support/TestCommand.h"

#include <QTest>

using namespace Qt::StringLiterals;

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
            QVERIFY(!command.isPaused() && !command.isCancelled() && command.Command::isFinished());
            QVERIFY(QMetaType::fromName("QSharedPointer<Command>").isValid());
        }
        record.setStatus(CommandData::FINISHED); // the record outlives its command
    }

    void flagsAndHooks()
    {
        const QHash<QString, void (Command::*)()> byName{{u"pause"_s, &Command::pause},
            {u"cancel"_s, &Command::cancel},
            {u"resume"_s, &Command::resume},
            {u"execute"_s, &Command::execute}};
        for (const QString &operations :
            u"pause pause|cancel cancel|resume|pause resume|pause execute|cancel execute"_s.split(u'|')) {
            const bool cancelled = operations.startsWith(u"cancel");
            TestData record(u"a"_s);
            TestCommand command(&record, [&](TestCommand &self) {
                QVERIFY(!self.isPaused());
                QCOMPARE(self.isCancelled(), cancelled);
            });
            for (const QString &operation : operations.split(u' ')) {
                (command.*byName.value(operation))();
            }
            QCOMPARE(command.calls.lines().join(u' '), operations);
            QCOMPARE(command.isPaused(), operations == u"pause pause");
            QCOMPARE(command.isCancelled(), cancelled);
            QCOMPARE(record.getStatus(), CommandData::OTHER);
        }
    }

    void errorSetsStatusThenCodeThenCallsHook()
    {
        TestData record(u"a"_s);
        TestCommand command(&record);
        record.setErrorCode(1);
        int codeSeenWithStatus = 0;
        connect(&record, &CommandData::statusChanged, this, [&] { codeSeenWithStatus = record.getErrorCode(); });
        command.setError(0);
        QCOMPARE(record.getStatus(), CommandData::ERR);
        QCOMPARE(codeSeenWithStatus, 1);
        QCOMPARE(command.calls.lines(), QStringList{u"error 0"_s});
    }
};

QTEST_GUILESS_MAIN(CommandTest)
#include "tst_command.moc"
