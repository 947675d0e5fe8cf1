#include "CommandLine.h"

#include <tarnwick_version.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

std::optional<int> processCommandLine(QCommandLineParser &parser)
{
    QCoreApplication::setApplicationVersion(QLatin1String(TARNWICK_VERSION_STRING));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    // QCommandLineParser::process() would exit with code 1.
    if (!parser.parse(QCoreApplication::arguments())) {
        QTextStream(stderr) << QCoreApplication::applicationName() << ": "_L1 << parser.errorText() << Qt::endl;
        return usageFailure;
    }
    // QCommandLineParser would show these in a message box where a program of Windows has no console.
    if (parser.isSet(help)) {
        QTextStream(stdout) << parser.helpText();
        return 0;
    }
    if (parser.isSet(version)) {
        QTextStream(stdout) << QCoreApplication::applicationName() << ' ' << QCoreApplication::applicationVersion()
                            << Qt::endl;
        return 0;
    }
    return std::nullopt;
}
