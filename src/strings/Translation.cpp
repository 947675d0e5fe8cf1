#include "Translation.h"

#include <QCoreApplication>

QString strings::tr(const char *context, const QString &key)
{
    return QCoreApplication::translate(context, key.toUtf8().constData(), nullptr, -1);
}

QString strings::tr(const QString &context, const QString &key)
{
    return tr(context.toUtf8().constData(), key);
}

QList<QString> strings::tr(const char *context, const QList<QString> &keys)
{
    QList<QString> result;
    result.reserve(keys.size());
    for (const QString &key : keys) {
        result.append(tr(context, key));
    }
    return result;
}

QList<QString> strings::tr(const QString &context, const QList<QString> &keys)
{
    return tr(context.toUtf8().constData(), keys);
}
