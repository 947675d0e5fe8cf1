#ifndef QUEUEMONITOR_MONITORLOG_H
#define QUEUEMONITOR_MONITORLOG_H

#include <QLoggingCategory>

/** "queuemonitor.commands": each change of a command's status, at debug level. In the registry of categories. */
Q_DECLARE_LOGGING_CATEGORY(monitorLog)

#endif
