#pragma once

#include "practice/check/Structure.h"

#include <QMap>

namespace practice {

/// The damage that a check of all pages and indexes finds in a database.
struct Damage {
    QStringList indexes;           ///< that disagree with their table
    QStringList contradictions;    ///< values that differ between row and index, in French, one line each
    QMap<QString, QString> tables; ///< with damaged pages, their own or an index's, and SQLite's first message
    QString elsewhere;             ///< SQLite's first message about damage outside all tables

    bool IsEmpty() const { return indexes.isEmpty() && tables.isEmpty() && elsewhere.isEmpty(); }
    /// In French, one line each. `file` is the name of the database.
    QStringList Lines(const QString& file) const;
};

/// Reads a sound database once, a damaged one once more for each table.
Damage DamageOf(const Select& select, const Structure& found);

} // namespace practice
