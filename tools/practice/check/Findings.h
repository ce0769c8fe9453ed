#pragma once

#include "platform/dao/Sqlite.h"

#include <QString>
#include <QStringList>

namespace practice {

/// A stored value as a message shows it: a text between guillemets and cut where it is long. `type` is SQLite's name of
/// its type.
QString ShownValue(const dao::StoredValue& value, std::string_view type);

/// "1 ligne", "2 lignes"
QString CountedRows(qint64 count);

/// Rows that have something in common: how many, and the first of them.
class Findings {
public:
    /// Notes a row by its key, or by its value alone in a table of one row.
    void Note(qint64 key, const QString& value);
    void NoteValue(const QString& value);

    qint64 Count() const { return count; }
    /// "(7 lignes, num 1 : « x », 3 : vide, ...)"
    QString Text() const;

private:
    void Add(const QString& example);

    qint64 count = 0;
    bool hasKeys = false;
    QStringList examples;
};

} // namespace practice
