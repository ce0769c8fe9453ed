// Any bytes as a CSV file: reading ends with rows or names a line of the file, and what was read is read again from a
// file that has it in quotes. Each cell as a value of each kind is refused or is one that its column can store.
#include "fuzz/Fuzz.h"
#include "platform/basic/RuntimeError.h"
#include "platform/store/StoredValue.h"
#include "practice/fields/FieldValues.h"
#include "practice/import/CsvFile.h"

#include <QBuffer>
#include <cmath>
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

store::ColumnType ColumnOf(practice::FieldKind kind)
{
    using enum practice::FieldKind;
    switch (kind) {
    case Key:
    case Reference:
        return store::ColumnType::Whole;
    case Code:
    case Month:
    case Year:
        return store::ColumnType::Small;
    case Date:
        return store::ColumnType::Date;
    case Amount:
        return store::ColumnType::Real;
    default:
        return store::ColumnType::Text;
    }
}

void CheckValue(practice::FieldKind kind, const QString& text)
{
    const practice::FieldRule rule{"", kind};
    const practice::ReadValue read = ReadField(rule, text);
    if (!read.problem.isEmpty() || read.value.IsNull())
        return;
    ToColumn(read.value, ColumnOf(kind)); // raises nothing
    Require(!read.value.Text().contains(QChar::Null), "a value has no NUL", text);
    if (kind == practice::FieldKind::Amount)
        Require(std::abs(read.value.Double()) < 1e15, "an amount has a size", text);
    else
        Require(ReadField(rule, read.value.Text()).value.Text() == read.value.Text(), "a value reads as itself", text);
}

void CheckCell(const QString& cell)
{
    using enum practice::FieldKind;
    for (const practice::FieldKind kind :
         {Key, Reference, Text, Date, DayText, Month, Year, Time, Amount, Code, ActType})
        CheckValue(kind, cell.trimmed());
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
        for (const QString& cell : row.cells)
            CheckCell(cell);
    }
    const auto again = Read(Quoted(*rows));
    Require(again && again->size() == rows->size(), "rows in quotes are read again");
    for (std::size_t row = 0; row < rows->size(); ++row)
        Require((*again)[row].cells == (*rows)[row].cells, "cells in quotes are read again",
                (*rows)[row].cells.join('|'));
    return 0;
}
