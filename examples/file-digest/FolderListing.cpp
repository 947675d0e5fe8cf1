#include "FolderListing.h"

#include <QFileInfo>

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

struct Folder
{
    std::filesystem::path path;
    QString relativePath; // empty or with a slash at the end
};

void listFolder(const Folder &folder, FolderListing &listing, std::vector<Folder> &folders)
{
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder.path, error); !error && entry != end(entry);
         entry.increment(error)) {
        // A status that cannot be read, say of an entry that has just gone, counts as none of these.
        std::error_code ignored;
        if (entry->is_symlink(ignored)) {
            continue;
        }
        const QString relativePath = folder.relativePath + QFileInfo(entry->path()).fileName();
        if (entry->is_directory(ignored)) {
            folders.push_back({entry->path(), relativePath + u'/'});
        } else if (entry->is_regular_file(ignored)) {
            listing.files.push_back(relativePath);
        }
    }
    if (error) {
        listing.failures.push_back(
            u"%1: %2"_s.arg(QFileInfo(folder.path).filePath(), QString::fromLocal8Bit(error.message())));
    }
}

} // namespace

FolderListing listFiles(const QString &folder)
{
    FolderListing listing;
    std::vector<Folder> folders{{QFileInfo(folder).filesystemFilePath(), QString()}};
    while (!folders.empty()) {
        const Folder next = std::move(folders.back());
        folders.pop_back();
        listFolder(next, listing, folders);
    }
    std::sort(listing.files.begin(), listing.files.end());
    return listing;
}
