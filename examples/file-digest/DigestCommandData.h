#ifndef FILEDIGEST_DIGESTCOMMANDDATA_H
#define FILEDIGEST_DIGESTCOMMANDDATA_H

#include <commands/CommandData.h>

#include <QByteArray>
#include <QString>

#include <atomic>

/**
 * @brief The record of a DigestCommand: the file, the progress, and finally the digest.
 *
 * Threads: the counts may be read on any thread at any time. The digest may be read on any thread that has seen the
 * status FINISHED, since it was stored before.
 */
class DigestCommandData : public CommandData
{
    Q_OBJECT

public:
    /**
     * @param path where to read the file; also the reference of the command, so add no file twice
     * @param title what to call the file in a list
     */
    DigestCommandData(const QString &path, const QString &title);

    /** Returns where to read the file. */
    const QString &getPath() const;

    QString getDescription() const override;
    QString getTitle() const override;
    QString getTypeName() const override;

    /** Returns the size of the file at the last execution; before the first one, the value set by the client, or 0. */
    qint64 getTotalBytes() const;
    void setTotalBytes(qint64 bytes);

    /** Returns how many bytes of the file the digest includes. */
    qint64 getDigestedBytes() const;
    void setDigestedBytes(qint64 bytes);

    /** Returns the 32 bytes of the SHA-256 digest; null before the command has finished. */
    QByteArray getDigest() const;
    void setDigest(const QByteArray &newDigest);

private:
    const QString title;
    std::atomic<qint64> totalBytes = 0;
    std::atomic<qint64> digestedBytes = 0;
    QByteArray digest;
};

#endif
