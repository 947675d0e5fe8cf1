#ifndef FILEDIGEST_FOLDERLISTING_H
#define FILEDIGEST_FOLDERLISTING_H

#include <QStringList>

#include <vector>

/** A file to digest. */
struct ListedFile
{
    QString path; ///< where to read the file
    QString name; ///< the path relative to the listed folder, or the name of a file that was listed by itself
};

/** The files of several paths. */
struct FolderListing
{
    /** The files in the order of the paths; those of one folder in natural order. */
    std::vector<ListedFile> files;

    /** The folders that could not be read, each with the reason. */
    QStringList failures;
};

/**
 * Lists the files among @p paths and the regular files in the folders among them and below, hidden ones included. Files
 * and folders in a folder are skipped if their name is one of @p excludedNames.
 *
 * Symbolic links in a folder are not followed, so a link to a parent folder causes no loop. Links, sockets, pipes and
 * devices in a folder are not listed. A path that is not a folder is listed unchanged, even if there is no such file.
 *
 * A file name that is not valid UTF-8 is listed with U+FFFD for the bytes that cannot be decoded. The file cannot be
 * opened by that path; its row reports the error.
 */
FolderListing listFiles(const QStringList &paths, const QStringList &excludedNames = {});

#endif
