#pragma once

#include "platform/store/DatabaseReader.h"
#include "platform/store/Value.h"

#include <QList>
#include <QString>

namespace practice {

/// A field that differs between two states of a row.
struct FieldChange {
    QString field;
    store::Value before;
    store::Value after;
};

/// A row that was added, changed or is gone. An added or gone one lists every field, with Null for the other state.
struct RowChange {
    enum class Kind { Added, Changed, Gone };
    Kind kind = Kind::Changed;
    qint64 key = 0;
    QList<FieldChange> fields;

    const FieldChange* Find(const QString& field) const;
};

struct TableChanges {
    QString table;
    QList<RowChange> rows;

    int Count(RowChange::Kind kind) const;
};

/// Compares two states of a practice, row by row in the order of the keys, without the scratch tables of the reports. A
/// field that only one state has is not compared. Reads each state once.
QList<TableChanges> DifferencesOf(const store::DatabaseReader& before, const store::DatabaseReader& after);

/// "ajoutée", "modifiée" or "disparue"
QString KindText(RowChange::Kind kind);
/// "3 ajoutées, 1 modifiée, 2 disparues", or "rien n'a changé".
QString CountsText(const TableChanges& changes);

} // namespace practice
