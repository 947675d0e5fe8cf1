// Shows the SHA-256 digests of files as commands on a CommandQueueThread: their progress, their errors, and what a user
// can do about them.

#include "CommandLine.h"
#include "MonitorWindow.h"
#include "NaturalLocale.h"

#include <QApplication>
#include <QCommandLineParser>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Tarnwick"_s);
    QCoreApplication::setApplicationName(u"queue-monitor"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Shows the SHA-256 digests of files as commands of a queue."_s);
    parser.addPositionalArgument(u"path"_s, u"A file or folder to add."_s, u"[path...]"_s);
    processCommandLine(parser);
    ensureNaturalOrder();
    MonitorWindow window;
    window.show();
    window.addPaths(parser.positionalArguments());
    return QCoreApplication::exec();
}
