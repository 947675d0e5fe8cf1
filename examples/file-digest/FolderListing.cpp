#include "FolderListing.h"

#include <strings/NaturalSort.h>

#include <QDir>
#include <QFileInfo>

#include <filesystem>
#include <system_error>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

class FolderReader
{
public:
    FolderReader(const QString &root, const QStringList &excludedNames)
        : root(root)
        , excludedNames(excludedNames)
    {
    }

    void appendTo(FolderListing &listing)
    {
        folders.push_back({QFileInfo(root).filesystemFilePath(), QString()});
        while (!folders.empty()) {
            const Folder next = std::move(folders.back());
            folders.pop_back();
            read(next, listing.failures);
        }
        NaturalSort::sort(names);
        for (const QString &name : std::as_const(names)) {
            listing.files.push_back({QDir(root).filePath(name), name});
        }
    }

private:
    struct Folder
    {
        std::filesystem::path path;
        QString name; // empty or with a slash at the end
    };

    void read(const Folder &folder, QStringList &failures)
    {
        std::error_code error;
        for (std::filesystem::directory_iterator entry(folder.path, error); !error && entry != end(entry);
             entry.increment(error)) {
            add(*entry, folder);
        }
        if (error) {
            // The text is in the local 8-bit encoding, which is not UTF-8 on Windows.
            failures.push_back(
                u"%1: %2"_s.arg(QFileInfo(folder.path).filePath(), QString::fromLocal8Bit(error.message())));
        }
    }

    void add(const std::filesystem::directory_entry &entry, const Folder &folder)
    {
        // An entry whose status cannot be read, for example because it was just deleted, is none of these.
        std::error_code ignored;
        const QString fileName = QFileInfo(entry.path()).fileName();
        if (entry.is_symlink(ignored) || excludedNames.contains(fileName)) {
            return;
        }
        if (entry.is_directory(ignored)) {
            folders.push_back({entry.path(), folder.name + fileName + u'/'});
        } else if (entry.is_regular_file(ignored)) {
            names.push_back(folder.name + fileName);
        }
    }

    const QString root;
    const QStringList excludedNames;
    std::vector<Folder> folders; // still to be read
    QStringList names;
};

} // namespace

FolderListing listFiles(const QStringList &paths, const QStringList &excludedNames)
{
    FolderListing listing;
    for (const QString &path : paths) {
        const QFileInfo info(path);
        if (info.isDir()) {
            FolderReader(path, excludedNames).appendTo(listing);
        } else {
            listing.files.push_back({path, info.fileName()});
        }
    }
    return listing;
}
