#pragma once

#include "practice/import/CsvFile.h"

#include <QTemporaryFile>

namespace practice {

/// A database of the format that practices had before (Jet), read by the programs of the package mdbtools.
///
/// Reads from a private copy, so that all tables are of the same moment and the file is free meanwhile. The copy has no
/// name, if the file system of the temporary files supports that: not even a kill leaves anything of it.
class JetFile {
public:
    /// Copies the file, again while another program writes it. Raises 53 if it is missing or mdbtools isn't installed,
    /// 75 if it can't be read, 3343 if it is no such database, 3049 if it is damaged or lacks pages, 70 if it changes
    /// all the time, 61 if the disk of the temporary files is full.
    explicit JetFile(const QString& path);

    const QStringList& Tables() const { return tables; }

    /// Reads a table whose name may differ in case: its field names, then each row, as a CSV file that `import` takes
    /// would have them. Null and an empty text are an empty cell; amounts have at most 16 significant digits; a date
    /// that mdbtools can't give is an empty cell, listed in CsvRow::lostDates. The line is the row's number, 0 for the
    /// names.
    ///
    /// Raises 3078 if there is no such table, 3049 if the file is damaged or the table has fewer rows than it counts,
    /// even after rows have been delivered.
    void Read(const QString& table, const CsvReceiver& take) const;

private:
    void TakeCopy(const QString& path);
    bool CopyOnce(const QString& path);
    void RequireWholePages();
    QString NameOf(const QString& table) const;
    QByteArray Run(const QString& program, const QStringList& options, const QStringList& names) const;
    [[noreturn]] void RaiseDamaged(const QString& reason) const;

    QString name; ///< of the file, for messages
    QTemporaryFile copy;
    QStringList tables;
};

} // namespace practice
