// Shows the SHA-256 digests of files as commands on a CommandQueueThread: their progress, their errors, and what a user
// can do about them.

#include "CommandLine.h"
#include "MonitorWindow.h"
#include "NaturalLocale.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLibraryInfo>
#include <QTranslator>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Tarnwick"_s);
    QCoreApplication::setApplicationName(u"queue-monitor"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Shows the SHA-256 digests of files as commands of a queue."_s);
    parser.addPositionalArgument(u"path"_s, u"A file or folder to add."_s, u"[path...]"_s);
    if (const std::optional<int> exitCode = processCommandLine(parser)) {
        return *exitCode;
    }
    ensureNaturalOrder();

    // The texts of Qt and of this program. Without a translation they stay English.
    QTranslator qtTranslator;
    QTranslator translator;
    if (qtTranslator.load(QLocale(), u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&qtTranslator);
    }
    if (translator.load(QLocale(), u"queue-monitor"_s, u"_"_s, u":/i18n"_s)) {
        QCoreApplication::installTranslator(&translator);
    }

    MonitorWindow window;
    window.show();
    window.addPaths(parser.positionalArguments());
    return QCoreApplication::exec();
}
