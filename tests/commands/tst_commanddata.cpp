#include "../support/LogRecorder.h"
#include "../support/TestCommand.h"

#include <QMetaEnum>
#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {
// Shows another message than it stores.
class ShowingData : public TestData
{
public:
    using TestData::TestData;
    QString getErrorMessage() const override { return u"shown"_s; }
};
} // namespace

class CommandDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newRecord()
    {
        const TestData record(u" "_s); // not empty
        QCOMPARE(record.getReference(), u" "_s);
        QCOMPARE(record.getStatus(), CommandData::OTHER);
        QCOMPARE(record.getErrorCode(), 0);
        QVERIFY(record.getErrorMessage().isNull());
        QCOMPARE(record.pendingAllowed(), true);
    }

    void emptyReferenceBecomesUuid()
    {
        const TestData fromNull{QString()};
        const TestData fromEmpty(u""_s);
        QCOMPARE_NE(fromNull.getReference(), fromEmpty.getReference());
        for (const QString &reference : {fromNull.getReference(), fromEmpty.getReference()}) {
            QVERIFY(!QUuid(reference).isNull());
            QCOMPARE(reference, QUuid(reference).toString(QUuid::WithBraces));
        }
    }

    void constants()
    {
        QCOMPARE(QMetaEnum::fromType<CommandData::Status>().keyCount(), 8);
        const int &bound = CommandData::RETRY_ERROR_CODE;
        QCOMPARE(bound, -1);
    }

    void statusTexts_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0 << "QUEUEING";
        QTest::newRow("1") << 1 << "PROCESSING";
        QTest::newRow("2") << 2 << "FINISHED";
        QTest::newRow("3") << 3 << "CANCELLED";
        QTest::newRow("4") << 4 << "ERR";
        QTest::newRow("5") << 5 << "OTHER";
        QTest::newRow("6") << 6 << "REQUIRE_USER_ACTION";
        QTest::newRow("7") << 7 << "PAUSED";
        QTest::newRow("8") << 8 << "ERROR: Not into one of the defined statuses";
        QTest::newRow("-1") << -1 << "ERROR: Not into one of the defined statuses";
    }
    void statusTexts()
    {
        QFETCH(const int, status);
        TestData record(u"a"_s);
        record.setStatus(CommandData::Status(status));
        QCOMPARE(record.getStatus(), CommandData::Status(status));
        QTEST(record.getStatusAsString(), "text");
    }

    void onlyAChangeOfStatusIsAnnounced()
    {
        TestData record(u"a"_s);
        QStringList seen;
        connect(&record, &CommandData::statusChanged, this, [&](CommandData *data) {
            QCOMPARE(data, &record);
            seen.append(data->getStatusAsString());
        });
        record.setStatus(CommandData::OTHER);
        record.setErrorCode(3);
        record.setPendingAllowed(false);
        record.setStatus(CommandData::ERR);
        record.setStatus(CommandData::ERR);
        record.setStatus(CommandData::QUEUEING);
        QCOMPARE(seen.join(u", "), u"ERR, QUEUEING"_s);
        QCOMPARE(record.getErrorCode(), 3); // kept by a new status
        QCOMPARE(record.pendingAllowed(), false);
    }

    void oneOfTwoThreadsAnnouncesAStatus()
    {
        constexpr int rounds = 20000;
        TestData record(u"a"_s);
        std::atomic<int> emitted = 0;
        std::atomic<int> arrivals = 0;
        connect(
            &record, &CommandData::statusChanged, this, [&] { ++emitted; }, Qt::DirectConnection);
        const auto set = [&] {
            for (int round = 1; round <= rounds; ++round) {
                ++arrivals;
                while (arrivals < 2 * round) {
                    std::this_thread::yield();
                }
                record.setStatus(CommandData::Status(round + 100));
            }
        };
        std::thread other(set);
        set();
        other.join();
        QCOMPARE(emitted, rounds);
    }

    void errorMessageLine_data()
    {
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("line"); // after the common beginning
        const auto row =
            [](const char *name, const char *description, const char *message, int code, const char *line) {
                QTest::newRow(name) << description << message << code << line;
            };
        row("no code", "copy", "disk full", 0, "copy, error message: disk full");
        row("negative code", "copy", "", -1, "copy, error message: , error code -1");
        row("format", "50%s", "%n%d", 7, "50%s, error message: %n%d, error code 7");
        row("marker of the message", "<%2>", "m", 0, "<m>, error message: m");
        row("marker of the description", "<%1>", "m", 0, "<m>, error message: %2");
        row("marker in the message", "d", "%1", 5, "d, error message: %1, error code 5");
    }
    void errorMessageLine()
    {
        QFETCH(const QString, description);
        QFETCH(const QString, message);
        QFETCH(const int, code);
        QFETCH(const QString, line);
        ShowingData record(u"a"_s, description);
        record.setErrorCode(code);
        {
            const LogRecorder recorder;
            record.setErrorMessage(message);
        }
        QCOMPARE(LogRecorder::getLines(), QStringList{u"1 default CommandData failed: Error for: "_s + line});
        QCOMPARE(record.CommandData::getErrorMessage(), message);
        QCOMPARE(record.getStatus(), CommandData::OTHER);
    }
};

QTEST_GUILESS_MAIN(CommandDataTest)
#include "tst_commanddata.moc"
