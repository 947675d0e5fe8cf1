#include "CoreObject.h"

#include <QDebug>
#include <QMessageLogger>

#include <algorithm>

using namespace Qt::StringLiterals;

CoreObject::CoreObject() = default;

CoreObject::CoreObject(const CoreObject &source) = default;

CoreObject &CoreObject::operator=(const CoreObject &source) = default;

CoreObject::~CoreObject() = default;

const QString CoreObject::getClassTypeId()
{
    return u"CoreObject"_s;
}

const QString CoreObject::getTypeId() const
{
    return getClassTypeId();
}

QList<QString> CoreObject::getInheritanceList() const
{
    return inheritanceList;
}

bool CoreObject::isOfType(const QString &typeId) const
{
    return inheritanceList.contains(typeId);
}

bool CoreObject::isOfAnyType(const QList<QString> &typeIds) const
{
    return std::any_of(typeIds.cbegin(), typeIds.cend(), [this](const QString &typeId) { return isOfType(typeId); });
}

void CoreObject::CORE_OBJECT_INIT(const QString &classTypeId)
{
    if (isOfType(classTypeId)) {
        // Unlike the default constructor, this one gives message handlers the name of the default category.
        QMessageLogger(nullptr, 0, nullptr).warning()
            << "CoreObject : duplicate class type id detected; ignored: " << classTypeId;
        return;
    }
    inheritanceList.append(classTypeId);
}
