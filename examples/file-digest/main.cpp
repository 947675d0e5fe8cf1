// Prints the SHA-256 digests of all files under a folder, computed one after another by a CommandQueueThread.
//
// usage: file-digest [FOLDER]    without one: the current folder
// exit code: 0 if every file was read, 1 if one or a folder was not, 2 if there is no such folder, 130 after Ctrl+C

#include "DigestCommand.h"
#include "DigestCommandData.h"
#include "DigestReport.h"
#include "FolderListing.h"
#include "InterruptNotifier.h"

#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

constexpr int readFailure = 1;
constexpr int usageFailure = 2;
constexpr int interruptedByUser = 130; // 128 and the number of SIGINT, as a shell gives it

bool isStandardOutputTerminal()
{
#ifdef Q_OS_UNIX
    return isatty(STDOUT_FILENO) != 0;
#else
    return false;
#endif
}

int digestFiles(const QString &folder)
{
    const FolderListing listing = listFiles(folder);
    for (const QString &failure : listing.failures) {
        std::fprintf(stderr, "file-digest: %s\n", qUtf8Printable(failure));
    }

    // The records outlive the worker and its queue, see DigestReport.
    DigestReport report(isStandardOutputTerminal());
    CommandQueueThread worker;
    CommandQueue &queue = worker.getCommandQueue();
    InterruptNotifier interrupt;
    bool interrupted = false;

    report.follow(queue);
    QObject::connect(&report, &DigestReport::allReported, &worker, &CommandQueueThread::stop);
    QObject::connect(&interrupt, &InterruptNotifier::interrupted, &worker, [&worker, &interrupted] {
        interrupted = true;
        worker.stop();
    });
    // Posted by the ended worker, this comes behind every signal of its queue.
    QObject::connect(&worker, &QThread::finished, qApp, &QCoreApplication::quit);

    const QDir root(folder);
    for (const QString &path : listing.files) {
        queue.addCommand(QSharedPointer<DigestCommand>::create(report.addRecord(root.filePath(path), path)));
    }
    worker.start();
    if (listing.files.empty()) {
        worker.stop();
    }
    QCoreApplication::exec();
    worker.wait();

    report.printSummary();
    if (interrupted) {
        return interruptedByUser;
    }
    return report.hasFailures() || !listing.failures.empty() ? readFailure : 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 2) {
        std::fputs("usage: file-digest [FOLDER]\n", stderr);
        return usageFailure;
    }
    const QString folder = arguments.value(1, QStringLiteral("."));
    if (!QFileInfo(folder).isDir()) {
        std::fprintf(stderr, "file-digest: no such folder: %s\n", qUtf8Printable(folder));
        return usageFailure;
    }
    return digestFiles(folder);
}
