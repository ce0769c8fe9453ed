// Any bytes as a CSV file: reading ends with rows or names a line of the file, and what was read is read again from a
// file that has it in quotes.
#include "fuzz/Fuzz.h"
#include "platform/basic/RuntimeError.h"
#include "practice/import/CsvFile.h"

#include <QBuffer>
#include <optional>
#include <vector>

using fuzz::Require;
using practice::CsvRow;

namespace {

qint64 LinesOf(const QByteArray& content)
{
    qint64 ends = 0;
    for (qsizetype at = 0; at < content.size(); ++at)
        ends += content[at] == '\n' || (content[at] == '\r' && (at + 1 == content.size() || content[at + 1] != '\n'));
    return ends + 1;
}

/// The rows; none where the file is refused.
std::optional<std::vector<CsvRow>> Read(QByteArray content)
{
    QBuffer file(&content);
    file.open(QIODevice::ReadOnly);
    std::vector<CsvRow> rows;
    try {
        practice::ReadCsv(file, [&rows](const CsvRow& row) { rows.push_back(row); });
    } catch (const basic::RuntimeError& error) {
        Require(error.Code() == basic::Error::BadArgument, "a file is refused with 5", error.Description());
        const QStringList words = error.Description().split(' ');
        Require(words.value(0) == "Ligne", "a refusal names a line", error.Description());
        const qint64 line = words.value(1).toLongLong();
        Require(line >= 1 && line <= LinesOf(content), "a refusal names a line of the file", error.Description());
        return {};
    }
    return rows;
}

QByteArray Quoted(const std::vector<CsvRow>& rows)
{
    QByteArray text = "\xEF\xBB\xBFsep=;\r\n";
    for (const CsvRow& row : rows) {
        QStringList cells;
        for (QString cell : row.cells)
            cells << '"' + cell.replace('"', "\"\"") + '"';
        text += cells.join(';').toUtf8() + "\r\n";
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QByteArray content(reinterpret_cast<const char*>(bytes), qsizetype(size));
    const auto rows = Read(content);
    if (!rows)
        return 0;
    qint64 line = 0;
    for (const CsvRow& row : *rows) {
        Require(row.line > line && row.line <= LinesOf(content), "each row begins on a later line of the file");
        line = row.line;
    }
    const auto again = Read(Quoted(*rows));
    Require(again && again->size() == rows->size(), "rows in quotes are read again");
    for (std::size_t row = 0; row < rows->size(); ++row)
        Require((*again)[row].cells == (*rows)[row].cells, "cells in quotes are read again",
                (*rows)[row].cells.join('|'));
    return 0;
}
