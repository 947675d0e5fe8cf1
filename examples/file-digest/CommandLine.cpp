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
    if (parser.isSet(help)) {
        parser.showHelp();
    }
    if (parser.isSet(version)) {
        parser.showVersion();
    }
}
