#include "../support/LogRecorder.h"
#include "../support/TestCommand.h"

#include <QMetaEnum>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>
#include <QUuid>

#include <tuple>

using namespace Qt::StringLiterals;

class CommandDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyReferenceBecomesUuid()
    {
        const TestData fromNull{QString()};
        const TestData fromEmpty(u""_s);
        QVERIFY(fromNull.getReference() != fromEmpty.getReference());
        for (const QString &reference : {fromNull.getReference(), fromEmpty.getReference()}) {
            QVERIFY(QUuid(reference).toString() == reference && !QUuid(reference).isNull());
        }
    }

    void metaObject()
    {
        const QMetaObject &meta = CommandData::staticMetaObject;
        QCOMPARE(meta.method(meta.methodOffset()).name(), "statusChanged"_ba);
        QCOMPARE(meta.method(meta.methodOffset() + 1).name(), "progressUpdated"_ba);
        QCOMPARE(QMetaEnum::fromType<CommandData::Status>().keyCount(), 8);
        const int &bound = CommandData::RETRY_ERROR_CODE;
        QCOMPARE(bound, -1);
    }

    void statusTexts()
    {
        const auto names = u"QUEUEING|PROCESSING|FINISHED|CANCELLED|ERR|OTHER|REQUIRE_USER_ACTION|PAUSED|"
                           "ERROR: Not into one of the defined statuses"_s.split(u'|'); // of 8 and -1
        TestData record(u"a"_s);
        for (int value = -1; value <= 8; ++value) {
            record.setStatus(CommandData::Status(value));
            QCOMPARE(record.getStatusAsString(), names.at(value < 0 ? 8 : value));
        }
    }

    void setStatusEmitsOnlyAfterAChange()
    {
        TestData record(u"some/Reference "_s);
        QCOMPARE(record.getReference(), u"some/Reference "_s);
        QVERIFY(record.getErrorMessage().isNull() && record.getErrorCode() == 0 && record.pendingAllowed());
        QList<CommandData::Status> seen;
        connect(&record, &CommandData::statusChanged, this, [&](CommandData *data) {
            QCOMPARE(data, &record);
            seen.append(data->getStatus());
        });
        record.setStatus(CommandData::OTHER);
        record.setStatus(CommandData::ERR);
        record.setStatus(CommandData::ERR);
        record.setErrorCode(3);
        record.setPendingAllowed(false);
        QCOMPARE(seen, QList{CommandData::ERR});
        QVERIFY(!record.pendingAllowed());
    }

    void oneOfTwoThreadsAnnouncesAStatus()
    {
        constexpr int rounds = 10000;
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

    void errorMessageLine()
    {
        const std::tuple<QString, QString, int, QString> rows[] = {
            {u"copy"_s, u"disk full"_s, 0, u"copy, error message: disk full"_s},
            {u"copy"_s, u""_s, -1, u"copy, error message: , error code -1"_s},
            {u"50%s"_s, u"%n%d"_s, 7, u"50%s, error message: %n%d, error code 7"_s},
            {u"<%2>"_s, u"m"_s, 0, u"<m>, error message: m"_s},
            {u"<%1>"_s, u"m"_s, 0, u"<m>, error message: %2"_s},
            {u"d"_s, u"%1"_s, 5, u"d, error message: %1, error code 5"_s}};
        for (const auto &[description, message, code, line] : rows) {
            TestData record(u"a"_s, description);
            const QSignalSpy statusSpy(&record, &CommandData::statusChanged);
            record.setErrorCode(code);
            {
                const LogRecorder recorder;
                record.setErrorMessage(message);
            }
            QCOMPARE(LogRecorder::getLines(), QStringList{u"1 default CommandData failed: Error for: "_s + line});
            QCOMPARE(record.getErrorMessage(), message);
            QCOMPARE(statusSpy.size(), 0);
        }
    }
};

QTEST_GUILESS_MAIN(CommandDataTest)
#include "tst_commanddata.moc"
