#include "SaveCommandData.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

SaveCommandData::SaveCommandData(const QString &target)
    : CommandData(QString(), false)
    , target(target)
{
    checkTarget();
}

void SaveCommandData::checkTarget()
{
    overwritingAllowed = false;
    if (QFileInfo::exists(target)) {
        setStatus(REQUIRE_USER_ACTION);
    }
}

QString SaveCommandData::getDescription() const
{
    return target;
}

QString SaveCommandData::getTitle() const
{
    return tr("Save the digests to %1").arg(QFileInfo(target).fileName());
}

QString SaveCommandData::getTypeName() const
{
    return u"save digests"_s;
}

bool SaveCommandData::isOverwritingAllowed() const
{
    return overwritingAllowed;
}

void SaveCommandData::allowOverwriting()
{
    // The flag first: once the status has changed, the worker may execute the command.
    overwritingAllowed = true;
    setStatus(QUEUEING);
}
