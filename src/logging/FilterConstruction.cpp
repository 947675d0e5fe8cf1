#include "FilterConstruction.h"

#include <QLatin1StringView>

using namespace Qt::StringLiterals;

namespace {

QLatin1StringView getLevelSuffix(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return ".debug"_L1;
    case QtWarningMsg:
        return ".warning"_L1;
    case QtCriticalMsg:
        return ".critical"_L1;
    case QtFatalMsg:
        return ".fatal"_L1;
    case QtInfoMsg:
        return ".info"_L1;
    }
    return {};
}

} // namespace

QString logging::getDefaultApplicationFilter()
{
    return u"*.debug=false"_s;
}

QString logging::getFilterConstructionSubstring(
    const QString &category, bool enabled, utility::Optional<QtMsgType> type)
{
    const QLatin1StringView level = type.hasValue() ? getLevelSuffix(type.getValue()) : QLatin1StringView();
    return category + level + (enabled ? "=true"_L1 : "=false"_L1);
}
