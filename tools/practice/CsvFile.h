#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace practice {

/// One row of a CSV file and the line of the file that it begins on.
struct CsvRow {
    qint64 line = 0;
    QStringList cells;
};

/// Reads a CSV file row by row: UTF-8 with or without a byte order mark, comma or semicolon (whichever the first line
/// has more of), quoted cells may hold either and line ends; empty lines are skipped.
///
/// Raises 53 when the file is missing, 75 when it can't be read, 5 with line number and reason when a line isn't UTF-8
/// or its quotes can't be read: from there on nothing is certain.
void ReadCsv(const QString& path, const std::function<void(const CsvRow&)>& take);

} // namespace practice
