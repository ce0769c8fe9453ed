#pragma once

#include "practice/feed/GoneActs.h"
#include "practice/feed/SettlementMerge.h"
#include "practice/feed/StagedTable.h"
#include "practice/import/CsvFile.h"
#include "practice/opening/PracticeData.h"

#include <memory>
#include <vector>

namespace practice {

class FeedSource;

struct FeedOptions {
    bool isPart = false;      ///< the source has only some rows of each table
    bool isTrial = false;     ///< nothing is written
    bool takesLosses = false; ///< also if the source lacks more than a tenth of the acts
};

struct FedTable {
    QString name;
    FeedCounts counts;
};

struct FeedReport {
    std::vector<FedTable> tables;
    QStringList passedOver;
    QStringList inWindows1252; ///< tables whose files are in this encoding
    QStringList lostDates;     ///< that an old database has, but its reader can't give
    QList<Dispute> disputes;
    QList<GoneAct> goneActs;
    QStringList problems; ///< why nothing was done, one sentence each
    int problemCount = 0;
    bool isUnchanged = false; ///< there was nothing to write
};

/// Feeds a practice with what another program holds: all of it or nothing.
///
/// Reading and comparing take no lock. One short transaction then writes, if no other program has written meanwhile;
/// otherwise the comparison is repeated, at last under the lock.
class Feed {
public:
    /// Raises the errors of PracticeData.
    Feed(const QString& folder, const FeedOptions& options);
    ~Feed();
    Q_DISABLE_COPY_MOVE(Feed)

    /// Raises the errors of FeedSource, 5 when the source lacks too many acts, 3187 when the practice stays locked, 61
    /// when the disk is full.
    FeedReport Run(const QString& source);

private:
    struct Table {
        std::unique_ptr<StagedTable> rows;
        Problems problems;
    };

    void Read(const FeedSource& source, const TableRule& rule);
    void NoteLostDates(const CsvRow& row, const TableRule& rule);
    void Compare();
    void CompareUnlocked();
    void CompareActs();
    void CompareAppointments();
    void RequireMostActs(qint64 gone) const;
    bool HasChanges() const;
    bool HasProblems() const;
    void WriteOnce();
    void Write() const;
    void Fill();
    Table* Find(const char* name);
    StagedTable* Staged(const char* name);

    PracticeData practice;
    dao::DirectStatements direct;
    FeedOptions options;
    std::vector<Table> tables;
    std::unique_ptr<SettlementMerge> settlements;
    std::unique_ptr<GoneActs> goneActs;
    quint32 compared = 0; ///< the commits of others that the comparison has seen
    FeedReport report;
};

} // namespace practice
