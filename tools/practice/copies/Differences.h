#pragma once

#include "platform/dao/DatabaseReader.h"
#include "platform/dao/Value.h"

#include <QList>
#include <QString>

namespace practice {

/// A field of a row that two states of a practice hold differently.
struct FieldChange {
    QString field;
    dao::Value before;
    dao::Value after;
};

/// A row that was added, changed or is gone. Of an added or a gone one every field is given, the other side Null.
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

/// The differences between two states of a practice, table by table, rows by their keys; tables that only reports write
/// are left out. A field that only one of the states has is not compared. Reads each state once.
QList<TableChanges> DifferencesOf(const dao::DatabaseReader& before, const dao::DatabaseReader& after);

/// "3 ajoutées, 1 modifiée, 2 disparues"; "rien n'a changé" for none.
QString CountsText(const TableChanges& changes);

} // namespace practice
