#include "CommandLine.h"

#include <tarnwick_version.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <cstdlib>

using namespace Qt::StringLiterals;

void processCommandLine(QCommandLineParser &parser)
{
    QCoreApplication::setApplicationVersion(QLatin1String(TARNWICK_VERSION_STRING));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    // QCommandLineParser::process() would end the process with the exit code 1.
    if (!parser.parse(QCoreApplication::arguments())) {
        QTextStream(stderr) << QCoreApplication::applicationName() << ": "_L1 << parser.errorText() << Qt::endl;
        std::exit(usageFailure); // NOLINT(concurrency-mt-unsafe): no other thread runs yet
    }
    // QCommandLineParser would show these in a message box where a program of Windows has no console.
    if (parser.isSet(help)) {
        QTextStream(stdout) << parser.helpText();
        std::exit(0); // NOLINT(concurrency-mt-unsafe): see above
    }
    if (parser.isSet(version)) {
        QTextStream(stdout) << QCoreApplication::applicationName() << ' ' << QCoreApplication::applicationVersion()
                            << Qt::endl;
        std::exit(0); // NOLINT(concurrency-mt-unsafe): see above
    }
}
