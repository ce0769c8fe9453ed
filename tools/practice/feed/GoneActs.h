#pragma once

#include "practice/feed/FeedNotes.h"
#include "practice/feed/StagedTable.h"

namespace practice {

/// An act that the source no longer has and that stays.
struct GoneAct {
    enum Reason : int { NoLine = 1, TooFewLines, SettledHere };
    NamedAct act;
    Reason reason = NoLine;
};

/// The acts that are gone from the source, and the lines of Actes_suppr that name them.
///
/// A line names the acts with its Date, Heure, num_patient, num_presta and Type. It stays open until a feed of all acts
/// finds its act gone.
class GoneActs {
public:
    explicit GoneActs(const dao::Database& database);
    ~GoneActs();
    Q_DISABLE_COPY_MOVE(GoneActs)

    /// Finds the acts that are gone from a source with all acts; returns their number.
    qint64 Find(const StagedTable& fedActs);
    /// Adds the new lines of the source to the open ones; null if it has no table of them. Then decides, if acts were
    /// looked for, which of those gone are removed, and which lines are used up.
    void Decide(const StagedTable* fedLines);
    qint64 Removed() const { return removed; }
    /// The acts that stay, unless named before for the same reason.
    QList<GoneAct> NewlyGone(const std::string& fedPatients) const;

    bool HasChanges() const { return hasChanges; }
    /// Within a transaction.
    void Write() const;

private:
    void FindLines(const StagedTable* fedLines);
    void CountSimilar(const StagedTable& acts);

    dao::DirectStatements direct;
    std::string IsBack() const;

    const StagedTable* source = nullptr; ///< with all acts
    bool hasReturned = false;
    qint64 removed = 0;
    bool hasChanges = false;
};

} // namespace practice
