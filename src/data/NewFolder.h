#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

namespace data {

/// A folder that is filled under another name and gets its own when everything is in it and on the disk: what is cut
/// short is never taken for the whole.
///
/// A folder that is missing or empty is filled beside its place and renamed. One that holds other things is filled in a
/// hidden folder within it, whose content is moved at the end, the database last. What a run that was killed has left
/// is taken away by the next one for the same folder, and nothing else ever is.
class NewFolder {
public:
    /// Raises 75 or 76, with a description for the user, when no folder can be made there.
    explicit NewFolder(const QString& folder);
    ~NewFolder();
    Q_DISABLE_COPY_MOVE(NewFolder)

    /// Where to write meanwhile.
    const QString& Path() const { return part; }

    /// Raises 75 when the folder can't get its name; nothing is left then.
    void Complete();

private:
    void MoveInto() const;

    QString wanted;
    QString part;
    std::unique_ptr<QLockFile> owner;
    bool isWithin = false;
};

} // namespace data
