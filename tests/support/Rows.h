#pragma once

#include "support/Practice.h"

#include <QStringList>

namespace tests {

/// The rows of a statement, each as its fields separated by "|"; "-" for Null. Read through a separate connection.
inline QStringList RowsOf(Practice& practice, const QString& statement)
{
    QStringList lines;
    dao::Recordset rows = practice.Rows(statement);
    for (; !rows.IsEOF(); rows.MoveNext()) {
        QStringList fields;
        for (int field = 0; field < rows.FieldCount(); ++field)
            fields << (rows.Fields(field).IsNull() ? QString("-") : rows.Fields(field).Text());
        lines << fields.join('|');
    }
    return lines;
}

} // namespace tests
