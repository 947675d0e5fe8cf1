#include "CategoriesRegistry.h"

#include <QLoggingCategory>

using logging::CategoriesRegistrar;
using logging::CategoriesRegistry;
using logging::CategoriesRegistrySingleton;

CategoriesRegistry::CategoriesRegistry() = default;
CategoriesRegistry::CategoriesRegistry(const CategoriesRegistry &source) = default;
CategoriesRegistry::CategoriesRegistry(CategoriesRegistry &&source) noexcept = default;
CategoriesRegistry &CategoriesRegistry::operator=(const CategoriesRegistry &source) = default;
CategoriesRegistry &CategoriesRegistry::operator=(CategoriesRegistry &&source) noexcept = default;
CategoriesRegistry::~CategoriesRegistry() = default;

void CategoriesRegistry::insertCategory(const QString &category)
{
    categories.append(category);
}

const QList<QString> &CategoriesRegistry::getCategories() const
{
    return categories;
}

CategoriesRegistrar::CategoriesRegistrar(const CategoryFunction &category, CategoriesRegistry &registry)
{
    registry.insertCategory(QString::fromUtf8(category().categoryName()));
}

CategoriesRegistrar &CategoriesRegistrar::operator=(const CategoriesRegistrar &)
{
    return *this;
}

CategoriesRegistry &CategoriesRegistrySingleton::getInstance()
{
    static CategoriesRegistry registry;
    return registry;
}

CategoriesRegistrySingleton &CategoriesRegistrySingleton::operator=(const CategoriesRegistrySingleton &)
{
    return *this;
}
