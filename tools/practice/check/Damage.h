#pragma once

#include "practice/check/Structure.h"

#include <QMap>

namespace practice {

/// What a check of all pages and indexes finds in a database.
struct Damage {
    QStringList indexes;           ///< whose entries aren't the rows of their table
    QStringList contradictions;    ///< values of rows that are others in such an index; in French, a line each
    QMap<QString, QString> tables; ///< with damaged pages, in the table or one of its indexes; the first detail of each
    QString elsewhere;             ///< the first detail of what belongs to no table

    bool IsEmpty() const { return indexes.isEmpty() && tables.isEmpty() && elsewhere.isEmpty(); }
    /// In French, a line each. `file` is the name of the database.
    QStringList Lines(const QString& file) const;
};

/// A sound database is read once, a damaged one once more for each table.
Damage DamageOf(const Select& select, const Structure& found);

} // namespace practice
