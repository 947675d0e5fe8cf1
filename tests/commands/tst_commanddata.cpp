#include <commands/CommandData.h>

#include <QTest>

class CommandDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placeholder() { QCOMPARE(int(CommandData::RETRY_ERROR_CODE), -1); }
};

QTEST_GUILESS_MAIN(CommandDataTest)
#include "tst_commanddata.moc"
