#pragma once

#include "platform/store/Sqlite.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <optional>

namespace store {

/// Reads a database file in one snapshot without changing its folder: a file with a log is read through a private copy,
/// unless a program has it open.
class DatabaseReader {
public:
    /// Raises 3024 when the file is missing, 70 when it may not be read, 3343 when it isn't this program's or of a
    /// newer version, 3049 when it is too damaged to be read at all, 61 when there is no room for the private copy.
    explicit DatabaseReader(const QString& path);

    /// Prepares a select in SQLite's language with the function is_well_formed (see DefineTextCheck); its rows are
    /// valid as long as the reader.
    Statement Select(std::string_view sql) const;

    /// Defines the function row_read(rowid), which calls back for each row and is true. Until the reader's end.
    void OnRowRead(std::function<void()> callBack);

    /// The result of a check of all pages and indexes: at most so many lines, none for a sound file.
    QStringList Damage(int most = 100) const;
    /// Names of triggers and views. The program creates none, and refuses a file with one.
    QStringList PlantedCode() const;

private:
    std::optional<QTemporaryDir> scratch;
    std::unique_ptr<std::function<void()>> rowRead;
    SqliteHandle database;
};

/// The damage that a full check of the file finds, one line each; empty for a sound file. Opens it read-only.
QStringList CheckDatabase(const QString& path);

} // namespace store
