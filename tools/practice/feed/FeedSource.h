#pragma once

#include "practice/fields/FieldRules.h"
#include "practice/import/CsvFile.h"

#include <QStringList>
#include <memory>
#include <vector>

namespace practice {

class JetFile;

/// What a practice is fed from: an old database, a folder of CSV files or one of them. Only Patients, Actes, Plani and
/// Actes_suppr are fed.
class FeedSource {
public:
    /// Raises the errors of JetFile, 53 when there is no such file or folder, 5 when it has no table that is fed, two
    /// files for one of them, or a file whose name is nearly that of one.
    explicit FeedSource(const QString& path);
    ~FeedSource();
    Q_DISABLE_COPY_MOVE(FeedSource)

    /// Patients first.
    std::vector<const TableRule*> Tables() const;
    /// Other tables of a practice, by their names in the source.
    const QStringList& PassedOver() const { return passedOver; }

    /// Raises as ReadCsv or JetFile::Read.
    CsvEncoding Read(const TableRule& table, const CsvReceiver& take) const;

private:
    struct Table {
        const TableRule* rule;
        QString file; ///< unless it is in an old database
    };
    void AddOldDatabase(const QString& path);
    void AddFile(const QString& path);
    void AddFolder(const QString& path);

    std::unique_ptr<JetFile> oldDatabase;
    std::vector<Table> tables;
    QStringList passedOver;
};

/// The tables that are fed, patients first.
std::vector<const TableRule*> FedTables();

/// Whether a file name could be meant for one of these tables.
bool IsNearlyFed(const QString& fileName);

} // namespace practice
