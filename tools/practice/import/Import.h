#pragma once

#include "practice/import/CsvFile.h"
#include "practice/import/ImportTarget.h"
#include "practice/opening/PracticeData.h"

#include <memory>
#include <vector>

namespace practice {

/// A file that is imported into a table.
struct ImportedFile {
    QString table; ///< its name in the schema
    QString name;  ///< of the file, without its folder
    CsvEncoding encoding = CsvEncoding::Utf8;
    Problems problems;
    std::unique_ptr<ImportTarget> target;
};

/// Imports CSV files into a practice: all rows or none.
///
/// Reading checks the rows, compares them with existing ones and keeps them in a temporary table, without a lock on the
/// database. Write takes the write lock for one short transaction.
class Import {
public:
    /// With `updates`, existing rows with other values get those of the file. Without it they are a problem, except for
    /// the single row of Permn or Tarif, which stays unchanged. Raises the errors of PracticeData.
    Import(const QString& folder, bool updates);

    /// Reads a file for a table. Raises 5 for a table that can't be imported, 53 or 75 for a file that is missing or
    /// can't be read.
    void Read(const QString& table, const QString& file);
    /// Reads each file TABLE.csv of a folder; case doesn't matter. Files of scratch tables are skipped, other names are
    /// a problem. Raises 76 if there is no such folder, 53 if it has no CSV file.
    void ReadFolder(const QString& folder);

    /// Writes the rows unless there is a problem. A row that another program has written since it was compared is a
    /// problem too, and nothing is written. Raises 3187 if the practice stays locked, 61 if the disk is full.
    void Write();

    const std::vector<ImportedFile>& Files() const { return files; }
    const QStringList& PassedOver() const { return passedOver; } ///< scratch tables whose files were skipped
    ImportCounts Sum() const;
    int ProblemCount() const;
    QStringList ProblemTexts() const;

private:
    void ReadFile(const TableRule& rule, const QString& path);

    PracticeData practice;
    bool updates;
    bool readsFolder = false;
    std::vector<ImportedFile> files;
    Problems folderProblems;
    QStringList passedOver;
};

} // namespace practice
