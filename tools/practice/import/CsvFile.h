#pragma once

#include "practice/import/CsvLines.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace practice {

/// One row of a CSV file and the line of the file that it begins on.
struct CsvRow {
    qint64 line = 0;
    QStringList cells;
};

using CsvReceiver = std::function<void(CsvRow&)>;

/// Reads a CSV file row by row and returns how its text is encoded: UTF-8, with or without a byte order mark, or
/// Windows-1252. The delimiter is semicolon, comma or tab, whichever the first line has most of, or the one that a line
/// "sep=;" before it names. Quoted cells may hold delimiters and line ends; empty lines are skipped.
///
/// Raises 53 when the file is missing, 75 when it can't be read, 5 with line number and reason when a text or its
/// quotes can't be read: from there on nothing is certain.
CsvEncoding ReadCsv(const QString& path, const CsvReceiver& take);
/// The same for a file that is open for reading and can be read twice.
CsvEncoding ReadCsv(QIODevice& file, const CsvReceiver& take);

} // namespace practice
