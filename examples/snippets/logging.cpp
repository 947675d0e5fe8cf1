// Two modules register their logging categories, and the application switches them on and off.

//! [example]
#include <logging/CategoriesRegistry.h>
#include <logging/FilterConstruction.h>

#include <QLoggingCategory>
#include <QTextStream>

// Both are in one source file of the module. The category is a function, so the order in which static objects are
// created does not matter.
Q_LOGGING_CATEGORY(network, "app.network")
static const logging::CategoriesRegistrar networkRegistrar(
    network, logging::CategoriesRegistrySingleton::getInstance());

Q_LOGGING_CATEGORY(storage, "app.storage")
static const logging::CategoriesRegistrar storageRegistrar(
    storage, logging::CategoriesRegistrySingleton::getInstance());

int main()
{
    QTextStream out(stdout);
    out << "categories: " << logging::CategoriesRegistrySingleton::getInstance().getCategories().join(u' ') << '\n';

    // One rule per line; a later rule wins.
    const QString rules = logging::getDefaultApplicationFilter() + u'\n'
        + logging::getFilterConstructionSubstring(QStringLiteral("app.network"), true, QtDebugMsg) + u'\n'
        + logging::getFilterConstructionSubstring(QStringLiteral("app.storage"), false, {});
    out << rules << '\n';

    QLoggingCategory::setFilterRules(rules);
    out << "network: debug " << network().isDebugEnabled() << ", warning " << network().isWarningEnabled() << '\n';
    out << "storage: debug " << storage().isDebugEnabled() << ", warning " << storage().isWarningEnabled() << '\n';
}
//! [example]
