#pragma once

#include "practice/feed/FeedNotes.h"
#include "practice/feed/StagedTable.h"

namespace practice {

struct Settlement {
    int code = 0; ///< -1 if missing
    double amount = 0;
};

/// An act whose settlement was changed here and at the source.
struct Dispute {
    NamedAct act;
    Settlement ours;
    Settlement source;
};

/// Merges the settlements of the source with those that are here, in three ways: by what the source had when the act
/// was last fed.
class SettlementMerge {
public:
    SettlementMerge(const dao::Database& database, const StagedTable& fedActs);
    ~SettlementMerge();
    Q_DISABLE_COPY_MOVE(SettlementMerge)

    /// Decides on each act that the source has. Corrects the counts of changed, unchanged and kept acts.
    void Decide(FeedCounts& counts);
    /// The disputes that weren't named before with the same values.
    QList<Dispute> NewDisputes(const std::string& fedPatients) const;

    bool HasChanges() const { return hasChanges; }
    /// Within a transaction, before new acts are written.
    void Write() const;

private:
    void Count(FeedCounts& counts) const;

    dao::DirectStatements direct;
    const StagedTable& acts;
    bool hasChanges = false;
};

} // namespace practice
