#pragma once

#include "practice/import/CsvLines.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace practice {

/// A row of a CSV file, with the number of its first line.
struct CsvRow {
    qint64 line = 0;
    QStringList cells;
    QStringList lostDates; ///< fields whose date a reader of old databases can't give; their cells are empty
};

using CsvReceiver = std::function<void(CsvRow&)>;

/// Reads a CSV file row by row and returns its encoding. The delimiter is semicolon, comma or tab, whichever occurs
/// most often in the first line, or the one of a line "sep=;" before it. Quoted cells may contain delimiters and line
/// ends; empty lines are skipped.
///
/// Raises 53 if the file is missing, 75 if it can't be read, 70 if another program has changed it meanwhile, 5 with
/// line number and reason at the first invalid byte or misplaced quote, after which the rows can't be told apart.
CsvEncoding ReadCsv(const QString& path, const CsvReceiver& take);
/// The same for an open file that can be read twice.
CsvEncoding ReadCsv(QIODevice& file, const CsvReceiver& take);

/// Raises 70: the file changes while it is read.
[[noreturn]] void RaiseChanging(const QString& path);

} // namespace practice
