#include "DigestCommandData.h"

using namespace Qt::StringLiterals;

DigestCommandData::DigestCommandData(const QString &path, const QString &title)
    : CommandData(path, false)
    , title(title)
{
}

const QString &DigestCommandData::getPath() const
{
    return getReference();
}

QString DigestCommandData::getDescription() const
{
    return getPath();
}

QString DigestCommandData::getTitle() const
{
    return title;
}

QString DigestCommandData::getTypeName() const
{
    return u"sha256"_s;
}

qint64 DigestCommandData::getTotalBytes() const
{
    return totalBytes;
}

void DigestCommandData::setTotalBytes(qint64 bytes)
{
    totalBytes = bytes;
}

qint64 DigestCommandData::getDigestedBytes() const
{
    return digestedBytes;
}

void DigestCommandData::setDigestedBytes(qint64 bytes)
{
    digestedBytes = bytes;
}

QByteArray DigestCommandData::getDigest() const
{
    return digest;
}

void DigestCommandData::setDigest(const QByteArray &newDigest)
{
    digest = newDigest;
}
