#pragma once

#include "platform/store/Sqlite.h"

#include <QString>
#include <QStringList>

namespace practice {

/// A stored value for a message: a text is quoted, and shortened if it is long. `type` is what typeof() returns for it.
QString ShownValue(const store::StoredValue& value, std::string_view type);

/// "1 ligne", "2 lignes"
QString CountedRows(qint64 count);

/// Counts rows with the same fault and keeps the first of them as examples.
class Findings {
public:
    /// Adds a row; in a table of one row the value is enough.
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
