#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

namespace data {

/// Fills a folder under a temporary name and renames it when it is complete and synced, so that an interrupted run
/// never leaves a partial folder.
///
/// A missing or empty folder is filled beside its final path. A folder with other content gets a hidden subfolder,
/// whose entries are moved up at the end, the database last. Leftovers of killed runs for the same folder are removed,
/// and nothing else.
class NewFolder {
public:
    /// Raises 75 or 76, with a description for the user, when no folder can be made there.
    explicit NewFolder(const QString& folder);
    ~NewFolder();
    Q_DISABLE_COPY_MOVE(NewFolder)

    /// The temporary folder to fill.
    const QString& Path() const { return part; }

    /// Raises 75, leaving nothing behind, when the folder can't be renamed.
    void Complete();

private:
    void MoveInto() const;

    QString wanted;
    QString part;
    std::unique_ptr<QLockFile> owner;
    bool isWithin = false;
};

/// Raises 58, with a description for the user, unless the folder is missing or empty.
void RequireUnused(const QString& folder);

} // namespace data
