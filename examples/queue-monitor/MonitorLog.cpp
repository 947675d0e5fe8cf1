#include "MonitorLog.h"

#include <logging/CategoriesRegistry.h>

Q_LOGGING_CATEGORY(monitorLog, "queuemonitor.commands")

static const logging::CategoriesRegistrar monitorLogRegistrar(
    monitorLog, logging::CategoriesRegistrySingleton::getInstance());
