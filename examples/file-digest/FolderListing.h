#ifndef FILEDIGEST_FOLDERLISTING_H
#define FILEDIGEST_FOLDERLISTING_H

#include <QString>

#include <vector>

/** What stands in a folder and the folders below it. */
struct FolderListing
{
    /** The regular files, as paths relative to the folder, with slashes, in the order of their code units. */
    std::vector<QString> files;

    /** The folders that could not be read, each with the reason. */
    std::vector<QString> failures;
};

/**
 * Lists the regular files in @p folder and below, hidden ones included. Symbolic links are not followed, except for
 * @p folder itself, so a link to a folder above it makes no circle; links, sockets, pipes and devices are left out.
 *
 * A file name that is not valid UTF-8 is listed with U+FFFD for what cannot be decoded: such a file cannot be opened by
 * that path, but it does not go unnoticed either.
 */
FolderListing listFiles(const QString &folder);

#endif
