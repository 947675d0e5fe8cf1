#include "LogMenu.h"

#include <logging/CategoriesRegistry.h>
#include <logging/FilterConstruction.h>

#include <QLoggingCategory>

LogMenu::LogMenu(QWidget *parent)
    : QMenu(tr("&Log"), parent)
{
    for (const QString &category : logging::CategoriesRegistrySingleton::getInstance().getCategories()) {
        QAction *const action = addAction(tr("&Debug lines of %1").arg(category));
        action->setData(category);
        action->setCheckable(true);
        connect(action, &QAction::toggled, this, &LogMenu::applyFilter);
    }
    applyFilter();
}

void LogMenu::applyFilter() const
{
    QStringList rules{logging::getDefaultApplicationFilter()};
    for (const QAction *const action : actions()) {
        rules.append(logging::getFilterConstructionSubstring(
            action->data().toString(), action->isChecked(), utility::Optional<QtMsgType>(QtDebugMsg)));
    }
    QLoggingCategory::setFilterRules(rules.join(u'\n'));
}
