#ifndef TARNWICK_LOGGING_FILTERCONSTRUCTION_H
#define TARNWICK_LOGGING_FILTERCONSTRUCTION_H

#include "../foundation/Optional.h"

#include <tarnwick_export.h>

#include <QString>
#include <qlogging.h>

namespace logging {

/** Returns the default rule of an application: "*.debug=false". */
TARNWICK_EXPORT QString getDefaultApplicationFilter();

/**
 * Returns one rule in the syntax of QLoggingCategory::setFilterRules(), for example "net.warning=false". A rule applies
 * only to the level that it names, not to those above or below it. May be called on any thread.
 *
 * @param category the category name, which may contain wildcards; neither validated nor trimmed
 * @param enabled whether the rule ends in "=true" or "=false"
 * @param type the level. If it is empty or not one of the five levels, the rule applies to all levels. Qt does not
 *        recognise ".fatal" as a level: it reads such a rule as one for a category whose name ends in ".fatal". Fatal
 *        messages cannot be disabled.
 */
TARNWICK_EXPORT QString getFilterConstructionSubstring(
    const QString &category, bool enabled, utility::Optional<QtMsgType> type);

} // namespace logging

#endif
