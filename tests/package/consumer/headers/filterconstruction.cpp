#include <logging/FilterConstruction.h>

QString makeFilter()
{
    return logging::getFilterConstructionSubstring(QString(), true, QtDebugMsg);
}
