#include "DigestCommand.h"
#include "DigestCommandData.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <filesystem>
#include <fstream>

using namespace Qt::StringLiterals;

namespace {

constexpr int deadline = 60000; // milliseconds; for a hang, not for slowness
constexpr qint64 endless = Q_INT64_C(1) << 36; // bytes of a sparse file that takes minutes to digest

void writeFile(const QString &path, const QByteArray &content, qint64 size = -1)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    QVERIFY(size < 0 || file.resize(size));
}

QByteArrayList linesOf(const QByteArray &text)
{
    QByteArrayList lines = text.split('\n');
    lines.removeLast();
    return lines;
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

    void cleanup()
    {
        // Qt leaves alone what it cannot name.
        std::filesystem::remove_all(QFile::encodeName(folder->path()).toStdString());
    }

    void agreesWithSha256sum()
    {
        QVERIFY(QDir(folder->path()).mkpath(u"deep/er"_s));
        writeFile(path(u"empty"_s), {});
        writeFile(path(u".hidden"_s), "hidden");
        writeFile(path(u"deep/er/chunks"_s), QByteArray(3 * 65536 + 1, 'x'));
        writeFile(path(u"deep/ blank"_s), QByteArray(65536, 'y'));
        writeFile(path(u"deep/line\nfeed, \\ and \r"_s), "named");
        writeFile(path(u"deep/K\u00e4fer"_s), "umlaut");
        std::ofstream(QFile::encodeName(path(u"not UTF-8 "_s)).toStdString() + '\xff') << "no way to it";
        QVERIFY(QFile::link(folder->path(), path(u"circle"_s)));
        QVERIFY(QFile::link(path(u"empty"_s), path(u"link"_s)));

        QProcess oracle;
        oracle.setWorkingDirectory(folder->path());
        oracle.start(u"sh"_s,
            {u"-c"_s, u"find . -type f ! -name 'not UTF-8*' -printf '%P\\0' | sort -z | xargs -0 sha256sum"_s});
        QVERIFY(oracle.waitForFinished(deadline));
        QByteArrayList sums = linesOf(oracle.readAllStandardOutput());
        if (sums.size() != 6) {
            QSKIP("Needs sha256sum", ""); // Clang misses an empty "..."
        }

        QProcess program;
        program.start(QStringLiteral(FILE_DIGEST), {folder->path()});
        QVERIFY(program.waitForFinished(deadline));
        QCOMPARE(program.exitCode(), 1);
        QByteArrayList rows = linesOf(program.readAllStandardOutput());
        const QByteArray summary = rows.takeLast();
        QVERIFY2(summary.startsWith("6 finished, 1 failed, 0 cancelled, 262162 bytes, "), summary.constData());

        QVERIFY(rows.removeOne('-' + QByteArray(65, ' ') + "ERR        not UTF-8 \xef\xbf\xbd"));
        for (QByteArray &row : rows) {
            row.replace("  FINISHED   ", "  ");
        }
        std::sort(rows.begin(), rows.end());
        std::sort(sums.begin(), sums.end());
        QCOMPARE(rows, sums);
        QVERIFY(program.readAllStandardError().contains("No such file or directory"));
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

    void refusesMissingFolder()
    {
        QProcess program;
        program.start(QStringLiteral(FILE_DIGEST), {path(u"missing"_s)});
        QVERIFY(program.waitForFinished(deadline));
        QCOMPARE(program.exitCode(), 2);
        QVERIFY(program.readAllStandardError().contains("no such folder: " + path(u"missing"_s).toUtf8()));
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
    }

    // The endless file is cut and given another end while its command is paused: only one that resumes where it left
    // off comes to the digest of what stands there now.
    void goesOnAfterPause()
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
