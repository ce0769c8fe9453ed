#pragma once

#include "support/Practice.h"

#include <QStringList>

namespace tests {

/// Rows, each as its fields separated by "|"; "-" for Null.
inline QStringList RowsOf(dao::Recordset rows)
{
    QStringList lines;
    for (; !rows.IsEOF(); rows.MoveNext()) {
        QStringList fields;
        for (int field = 0; field < rows.FieldCount(); ++field)
            fields << (rows.Fields(field).IsNull() ? QString("-") : rows.Fields(field).Text());
        lines << fields.join('|');
    }
    return lines;
}

/// The rows of a statement, read through a separate connection.
inline QStringList RowsOf(Practice& practice, const QString& statement)
{
    return RowsOf(practice.Rows(statement));
}

} // namespace tests
