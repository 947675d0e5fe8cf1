#include "DigestCommand.h"
#include "DigestCommandData.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr int deadline = 60000; // milliseconds; for a hang, not for slowness
constexpr qint64 endless = Q_INT64_C(1) << 33; // bytes of a file that takes seconds to digest

void writeFile(const QString &path, const QByteArray &content, qint64 size = -1)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    QVERIFY(size < 0 || file.resize(size));
}

} // namespace

class FileDigestTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(folder->isValid());
    }

    void endsOnInterrupt()
    {
        writeFile(path(u"1"_s), "done");
        writeFile(path(u"2"_s), {}, endless);
        writeFile(path(u"3"_s), "waits");
        writeFile(path(u"4"_s), "waits");

        QProcess program;
        program.start(QStringLiteral(FILE_DIGEST), {folder->path()});
        QTRY_VERIFY_WITH_TIMEOUT(program.canReadLine(), deadline); // "1" is done, so "2" is under way
        QCOMPARE(::kill(static_cast<pid_t>(program.processId()), SIGINT), 0);
        QVERIFY(program.waitForFinished(deadline));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 130);
        const QByteArray output = program.readAllStandardOutput();
        for (const char *name : {"2", "3", "4"}) {
            QVERIFY2(output.contains('-' + QByteArray(65, ' ') + "CANCELLED  " + name + '\n'), output.constData());
        }
        QVERIFY2(output.contains("\n1 finished, 0 failed, 3 cancelled, "), output.constData());
    }

    // The file is truncated and gets another end while its command is paused, so only a command that resumes where it
    // left off gets the digest of the new content.
    void resumesAfterPause()
    {
        writeFile(path(u"file"_s), {}, endless);
        DigestCommandData data(path(u"file"_s), u"file"_s);
        DigestCommand command(&data);
        connect(&data, &CommandData::progressUpdated, &command, [&command] { command.pause(); });
        command.execute();
        QVERIFY(!command.isFinished());
        const qint64 done = data.getDigestedBytes();
        QVERIFY(done > 0 && done < endless);

        QFile file(path(u"file"_s));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(done) && file.seek(done));
        file.write("the end");
        file.close();
        command.execute();
        QVERIFY(command.isFinished());
        QCOMPARE(data.getDigestedBytes(), done + 7);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCryptographicHash whole(QCryptographicHash::Sha256);
        QVERIFY(whole.addData(&file));
        QCOMPARE(data.getDigest(), whole.result());
    }

private:
    QString path(const QString &name) const { return QDir(folder->path()).filePath(name); }

    std::unique_ptr<QTemporaryDir> folder;
};

QTEST_GUILESS_MAIN(FileDigestTest)
#include "tst_filedigest.moc"
