#include "CommandLine.h"

#include <tarnwick_version.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

void printError(const QString &message)
{
    QTextStream(stderr) << QCoreApplication::applicationName() << ": "_L1 << message << Qt::endl;
}

std::optional<int> processCommandLine(QCommandLineParser &parser)
{
    QCoreApplication::setApplicationVersion(QLatin1String(TARNWICK_VERSION_STRING));
    // QCommandLineParser::process() exits with code 1 for an unknown option, opens a message box where a program of
    // Windows has no console, and does not notice a failed write. addHelpOption() would also add --help-all.
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Prints this help."_s);
    const QCommandLineOption version({u"v"_s, u"version"_s}, u"Prints the version."_s);
    parser.addOptions({help, version});
    if (!parser.parse(QCoreApplication::arguments())) {
        printError(parser.errorText());
        return usageFailure;
    }
    if (!parser.isSet(help) && !parser.isSet(version)) {
        return std::nullopt;
    }
    const QString program = QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion() + u'\n';
    QTextStream output(stdout);
    output << (parser.isSet(help) ? parser.helpText() : program) << Qt::flush;
    if (output.status() != QTextStream::Ok) {
        printError(u"standard output cannot be written"_s);
        return failure;
    }
    return 0;
}
