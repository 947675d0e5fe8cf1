#ifndef TARNWICK_LOGGING_FILTERCONSTRUCTION_H
#define TARNWICK_LOGGING_FILTERCONSTRUCTION_H

#include "../foundation/Optional.h"

#include <tarnwick_export.h>

#include <QString>
#include <qlogging.h>

namespace logging {

/** Returns the rule that an application starts from: "*.debug=false". */
TARNWICK_EXPORT QString getDefaultApplicationFilter();

/**
 * Makes one rule in the syntax of QLoggingCategory::setFilterRules(), such as "net.warning=false". Rules only speak of
 * the level they name, not of those above or below it. May be called on any thread.
 *
 * @param category selector of the categories, wildcards included; neither tested nor trimmed
 * @param enabled gives "=true" or "=false"
 * @param type the level; if it is empty or none of the five levels, the rule is about all levels. Qt's parser of rules
 *        knows no ".fatal": to Qt, a rule of that level is about all levels of a category whose name ends in ".fatal",
 *        and fatal messages cannot be switched off.
 */
TARNWICK_EXPORT QString getFilterConstructionSubstring(
    const QString &category, bool enabled, utility::Optional<QtMsgType> type);

} // namespace logging

#endif
