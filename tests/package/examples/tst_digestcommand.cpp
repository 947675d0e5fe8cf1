#include "DigestCommand.h"
#include "DigestCommandData.h"

#include <QCryptographicHash>
#include <QTemporaryFile>
#include <QTest>

class DigestCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The file is truncated and gets another end while its command is paused, so only a command that resumes where it
    // left off gets the digest of the new content.
    void resumesAfterPause()
    {
        constexpr qint64 size = Q_INT64_C(1) << 33; // takes seconds to digest
        QTemporaryFile file;
        QVERIFY(file.open() && file.resize(size));
        DigestCommandData data(file.fileName(), QString());
        DigestCommand command(&data);
        connect(&data, &CommandData::progressUpdated, &command, [&command] { command.pause(); });
        command.execute();
        QVERIFY(!command.isFinished());
        const qint64 done = data.getDigestedBytes();
        QVERIFY(done > 0 && done < size);

        QVERIFY(file.resize(done) && file.seek(done) && file.write("the end") == 7 && file.seek(0));
        command.execute();
        QVERIFY(command.isFinished());
        QCOMPARE(data.getDigestedBytes(), done + 7);
        QCryptographicHash whole(QCryptographicHash::Sha256);
        QVERIFY(whole.addData(&file));
        QCOMPARE(data.getDigest(), whole.result());
    }
};

QTEST_GUILESS_MAIN(DigestCommandTest)
#include "tst_digestcommand.moc"
