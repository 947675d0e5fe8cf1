#include "CommandData.h"

#include <QMessageLogger>
#include <QMutexLocker>
#include <QUuid>

using namespace Qt::StringLiterals;

const int CommandData::RETRY_ERROR_CODE;

CommandData::CommandData(const QString &reference, bool pendingAllowed)
    : reference(reference.isEmpty() ? QUuid::createUuid().toString(QUuid::WithBraces) : reference)
    , isPendingAllowed(pendingAllowed)
{
}

CommandData::~CommandData() = default;

CommandData::Status CommandData::getStatus() const
{
    return status;
}

QString CommandData::getStatusAsString() const
{
    switch (getStatus()) {
    case QUEUEING:
        return u"QUEUEING"_s;
    case PROCESSING:
        return u"PROCESSING"_s;
    case FINISHED:
        return u"FINISHED"_s;
    case CANCELLED:
        return u"CANCELLED"_s;
    case ERR:
        return u"ERR"_s;
    case OTHER:
        return u"OTHER"_s;
    case REQUIRE_USER_ACTION:
        return u"REQUIRE_USER_ACTION"_s;
    case PAUSED:
        return u"PAUSED"_s;
    }
    return u"ERROR: Not into one of the defined statuses"_s;
}

void CommandData::setStatus(Status newStatus)
{
    if (status.exchange(newStatus) == newStatus) {
        return;
    }
    Q_EMIT statusChanged(this);
}

int CommandData::getErrorCode() const
{
    return errorCode;
}

void CommandData::setErrorCode(int code)
{
    errorCode = code;
}

QString CommandData::getErrorMessage() const
{
    const QMutexLocker lock(&errorMessageMutex);
    return errorMessage;
}

void CommandData::setErrorMessage(QString message)
{
    {
        const QMutexLocker lock(&errorMessageMutex);
        errorMessage = message;
    }
    // Chained arg() calls are intended: they also substitute place markers in the description.
    // clazy:excludeall=qstring-arg
    QString text = u"CommandData failed: Error for: %1, error message: %2"_s.arg(getDescription()).arg(message);
    if (const int code = getErrorCode(); code != 0) {
        text += u", error code %1"_s.arg(code);
    }
    QMessageLogger(nullptr, 0, nullptr).warning("%s", text.toLocal8Bit().constData());
}

const QString &CommandData::getReference() const
{
    return reference;
}

bool CommandData::pendingAllowed() const
{
    return isPendingAllowed;
}

void CommandData::setPendingAllowed(bool pendingAllowed)
{
    isPendingAllowed = pendingAllowed;
}

#include "moc_CommandData.cpp"
