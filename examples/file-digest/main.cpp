// Prints the SHA-256 digests of files and of all files in folders. A CommandQueueThread computes them one after
// another.
//
// exit code: 0 if every file was read; 1 if a file or folder was not, or if standard output cannot be written; 2 for an
// unknown option or if a file or folder does not exist; 130 after Ctrl+C

#include "CommandLine.h"
#include "DigestCommand.h"
#include "DigestCommandData.h"
#include "DigestReport.h"
#include "FolderListing.h"
#include "InterruptNotifier.h"
#include "NaturalLocale.h"

#include <commands/CommandQueueThread.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <utility>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr int interruptedByUser = 130; // 128 plus the number of SIGINT, as a shell reports it

bool isStandardOutputTerminal()
{
#ifdef Q_OS_UNIX
    return isatty(STDOUT_FILENO) != 0;
#else
    return false;
#endif
}

int digestFiles(const QStringList &paths, const QStringList &excludedNames)
{
    const FolderListing listing = listFiles(paths, excludedNames);
    for (const QString &message : listing.failures) {
        printError(message);
    }

    // The records outlive the worker and its queue, see DigestReport.
    DigestReport report(isStandardOutputTerminal());
    CommandQueueThread worker;
    CommandQueue &queue = worker.getCommandQueue();
    InterruptNotifier interrupt;
    bool interrupted = false;

    report.follow(queue);
    QObject::connect(&report, &DigestReport::allReported, &worker, &CommandQueueThread::stop);
    QObject::connect(&report, &DigestReport::writeFailed, &worker, &CommandQueueThread::stop);
    QObject::connect(&interrupt, &InterruptNotifier::interrupted, &worker, [&worker, &interrupted] {
        interrupted = true;
        worker.stop();
    });
    // The worker posts this signal at its end, after all signals of its queue.
    QObject::connect(&worker, &QThread::finished, qApp, &QCoreApplication::quit);

    const bool isOneFolder = paths.size() == 1 && QFileInfo(paths.constFirst()).isDir();
    for (const ListedFile &file : listing.files) {
        DigestCommandData *const record = report.addRecord(file.path, isOneFolder ? file.name : file.path);
        queue.addCommand(QSharedPointer<DigestCommand>::create(record));
    }
    worker.start();
    if (listing.files.empty()) {
        worker.stop();
    }
    QCoreApplication::exec();
    worker.wait();

    report.printSummary();
    if (report.hasWriteFailed()) {
        printError(u"standard output cannot be written"_s);
        return failure;
    }
    if (interrupted) {
        return interruptedByUser;
    }
    return report.hasFailures() || !listing.failures.empty() ? failure : 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"file-digest"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Prints the SHA-256 digests of files and of all files in folders."_s);
    parser.addPositionalArgument(u"path"_s, u"A file or folder; the current folder by default."_s, u"[path...]"_s);
    const QCommandLineOption exclude(
        u"exclude"_s, u"Skips files and folders of this name in folders. Can be repeated."_s, u"name"_s);
    parser.addOption(exclude);
    if (const std::optional<int> exitCode = processCommandLine(parser)) {
        return *exitCode;
    }

    QStringList paths = parser.positionalArguments();
    if (paths.isEmpty()) {
        paths.append(u"."_s);
    }
    for (const QString &path : std::as_const(paths)) {
        if (!QFileInfo::exists(path)) {
            printError(u"no such file or folder: %1"_s.arg(path));
            return usageFailure;
        }
    }
    ensureNaturalOrder();
    return digestFiles(paths, parser.values(exclude));
}
