#pragma once

#include "practice/import/CsvFile.h"
#include "practice/import/ImportTarget.h"
#include "practice/opening/PracticeData.h"

#include <memory>
#include <vector>

namespace practice {

/// One file on its way into one table.
struct ImportedFile {
    QString table; ///< as the practice names it
    QString name;  ///< of the file, without its folder
    CsvEncoding encoding = CsvEncoding::Utf8;
    Problems problems;
    std::unique_ptr<ImportTarget> target;
};

/// Rows of CSV files on their way into a practice: all of them or none.
///
/// Reading locks nothing, however long it takes: the rows are checked, compared with those of the practice and put
/// aside. Write takes the write lock for one short transaction.
class Import {
public:
    /// `updates`: a row that the practice has with other values gets those of the file; otherwise it is a problem, and
    /// the single row of Permn or Tarif stays. Raises what PracticeData raises.
    Import(const QString& folder, bool updates);

    /// One file for one table. Raises 5 for a table that can't be filled from outside, and what ReadCsv raises for a
    /// file that is missing or can't be read.
    void Read(const QString& table, const QString& file);
    /// Every file TABLE.csv of a folder, its name in any case. Files of scratch tables are passed over; one of an
    /// unknown name is a problem. Raises 76 when there is no such folder, 53 when it has no such file.
    void ReadFolder(const QString& folder);

    /// Writes what was read, unless there is a problem. Nothing is written when another program has written one of the
    /// rows meanwhile: that is a problem then. Raises 3187 when the practice stays locked, 61 when the disk is full.
    void Write();

    const std::vector<ImportedFile>& Files() const { return files; }
    const QStringList& PassedOver() const { return passedOver; } ///< the scratch tables of the folder
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
