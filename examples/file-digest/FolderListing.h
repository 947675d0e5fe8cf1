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
 * Symbolic links in a folder are not followed, so a link to a folder above it makes no circle. Links, sockets, pipes
 * and devices in a folder are not listed. A path that is no folder is listed as it is, even if there is no such file.
 *
 * A file name that is not valid UTF-8 is listed with U+FFFD for what cannot be decoded. Such a file cannot be opened by
 * that path; the error shows that it was not digested.
 */
FolderListing listFiles(const QStringList &paths, const QStringList &excludedNames = {});

#endif
