#include "TestCommand.h"

#include <QMetaEnum>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
struct Logged
{
    QString text;
    QtMsgType type = QtDebugMsg;
    bool hasPlace = false;
    QByteArray category;
};

QList<Logged> messages;
CommandData *recordReadByHandler = nullptr;

void collectMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (recordReadByHandler) {
        recordReadByHandler->getErrorMessage(); // would wait for ever if the record held its lock here
    }
    messages.append({text, type, context.file || context.line || context.function, context.category});
}
} // namespace

class CommandDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newRecord()
    {
        const TestData record(u"some/Reference "_s);
        QCOMPARE(record.getReference(), u"some/Reference "_s);
        QCOMPARE(record.getStatus(), CommandData::OTHER);
        QCOMPARE(record.getErrorCode(), 0);
        QVERIFY(record.getErrorMessage().isNull());
        QVERIFY(!record.pendingAllowed());
        QCOMPARE(record.parent(), nullptr);
    }

    void emptyReferenceBecomesUuid()
    {
        const TestData fromNull{QString()};
        const TestData fromEmpty(u""_s);
        QVERIFY(fromNull.getReference() != fromEmpty.getReference());
        for (const QString &reference : {fromNull.getReference(), fromEmpty.getReference()}) {
            QCOMPARE(reference.size(), 38);
            QVERIFY(reference.startsWith(u'{') && reference.endsWith(u'}'));
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

    void statusTexts_data()
    {
        QTest::addColumn<qint32>("value");
        QTest::addColumn<QString>("text");
        const QStringList names{u"QUEUEING"_s,
            u"PROCESSING"_s,
            u"FINISHED"_s,
            u"CANCELLED"_s,
            u"ERR"_s,
            u"OTHER"_s,
            u"REQUIRE_USER_ACTION"_s,
            u"PAUSED"_s};
        for (int value = 0; value < names.size(); ++value) {
            QTest::addRow("%d", value) << value << names.at(value);
        }
        QTest::newRow("8") << 8 << u"ERROR: Not into one of the defined statuses"_s;
        QTest::newRow("-1") << -1 << u"ERROR: Not into one of the defined statuses"_s;
    }
    void statusTexts()
    {
        QFETCH(const qint32, value);
        TestData record(u"a"_s);
        record.setStatus(CommandData::Status(value));
        QTEST(record.getStatusAsString(), "text");
    }

    void setStatusEmitsOnlyAfterAChange()
    {
        TestData record(u"a"_s);
        QList<CommandData::Status> seen;
        connect(&record, &CommandData::statusChanged, this, [&](CommandData *data) {
            QCOMPARE(data, &record);
            seen.append(data->getStatus());
        });
        record.setStatus(CommandData::OTHER);
        record.setStatus(CommandData::ERR);
        record.setStatus(CommandData::ERR);
        record.setErrorCode(3);
        record.setPendingAllowed(true);
        QCOMPARE(seen, QList{CommandData::ERR});
        QVERIFY(record.pendingAllowed());
    }

    void oneOfTwoThreadsAnnouncesAStatus()
    {
        constexpr int rounds = 3000;
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
        QTest::addColumn<QString>("line");
        const QString start = u"CommandData failed: Error for: "_s;
        QTest::newRow("no code") << u"copy"_s << u"disk full"_s << 0 << start + u"copy, error message: disk full"_s;
        QTest::newRow("negative code") << u"copy"_s << u""_s << -1 << start + u"copy, error message: , error code -1"_s;
        QTest::newRow("format characters")
            << u"50%s"_s << u"%n%d"_s << 7 << start + u"50%s, error message: %n%d, error code 7"_s;
        QTest::newRow("%2 in the description") << u"<%2>"_s << u"m"_s << 0 << start + u"<m>, error message: m"_s;
        QTest::newRow("%1 in the description") << u"<%1>"_s << u"m"_s << 0 << start + u"<m>, error message: %2"_s;
        QTest::newRow("%1 in the message") << u"d"_s << u"%1"_s << 5 << start + u"d, error message: %1, error code 5"_s;
    }
    void errorMessageLine()
    {
        QFETCH(const QString, description);
        QFETCH(const QString, message);
        QFETCH(const int, code);
        TestData record(u"a"_s, description);
        const QSignalSpy statusSpy(&record, &CommandData::statusChanged);
        record.setErrorCode(code);

        messages.clear();
        recordReadByHandler = &record;
        const QtMessageHandler previous = qInstallMessageHandler(collectMessage);
        record.setErrorMessage(message);
        qInstallMessageHandler(previous);

        QCOMPARE(messages.size(), 1);
        QTEST(messages.first().text, "line");
        QCOMPARE(messages.first().type, QtWarningMsg);
        QVERIFY(!messages.first().hasPlace);
        QCOMPARE(messages.first().category, "default"_ba);
        QCOMPARE(record.getErrorMessage(), message);
        QCOMPARE(record.getStatus(), CommandData::OTHER);
        QCOMPARE(statusSpy.size(), 0);
    }
};

QTEST_GUILESS_MAIN(CommandDataTest)
#include "tst_commanddata.moc"
