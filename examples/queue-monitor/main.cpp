// Shows the SHA-256 digests of files as commands on a CommandQueueThread: their progress, their errors, and what a user
// can do about them.
//
// usage: queue-monitor [FILE|FOLDER...]

#include "MonitorWindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Tarnwick"));
    QCoreApplication::setApplicationName(QStringLiteral("queue-monitor"));
    MonitorWindow window;
    window.show();
    window.addPaths(QCoreApplication::arguments().mid(1));
    return QCoreApplication::exec();
}
