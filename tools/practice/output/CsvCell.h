#pragma once

#include <QString>

namespace practice {

/// A text as a cell in quotes.
inline QString CsvCell(QString text)
{
    return '"' + text.replace('"', "\"\"") + '"';
}

} // namespace practice
