#include "practice/import/TableReader.h"

#include "platform/basic/Dates.h"

#include <algorithm>

namespace practice {
namespace {

QString KnownFields(const TableRule& table)
{
    QStringList names;
    for (const FieldRule& field : table.fields)
        names << field.name;
    return names.join(", ");
}

} // namespace

void TableReader::Take(const CsvRow& row)
{
    if (!hasHeader)
        TakeHeader(row);
    else if (hasFields)
        TakeRow(row);
}

void TableReader::End()
{
    if (!hasHeader)
        Refuse(0, "Le fichier est vide : la première ligne doit nommer les champs.");
}

void TableReader::TakeHeader(const CsvRow& row)
{
    hasHeader = true;
    const int earlier = problems.Count();
    for (const QString& cell : row.cells) {
        const QString name = cell.trimmed();
        const int position = table.Find(name);
        const FieldRule* const field = position < 0 ? nullptr : &table.fields[static_cast<std::size_t>(position)];
        if (field == nullptr)
            Refuse(row.line, QString("le champ « %1 » n'existe pas dans %2. Champs : %3")
                                 .arg(name, QString(table.name), KnownFields(table)));
        else if (std::ranges::find(fields, field) != fields.end())
            Refuse(row.line, QString("le champ %1 est nommé deux fois").arg(field->name));
        else
            fields.push_back(field);
    }
    columns = fields.size();
    RequireFields(row.line);
    hasFields = problems.Count() == earlier;
    if (!hasFields)
        return;
    AddDerivedFields();
    QStringList names;
    for (const FieldRule* field : fields)
        names << field->name;
    target.Begin(names);
}

void TableReader::RequireFields(qint64 line)
{
    const bool hasPartOfDay = HasPartOfDay();
    for (const FieldRule& field : table.fields) {
        const bool isNeeded =
            rows == Rows::Whole || field.kind == FieldKind::Key || (hasPartOfDay && qstricmp(field.name, "Date") == 0);
        if (isNeeded && field.missing == Missing::Fault && std::ranges::find(fields, &field) == fields.end())
            Refuse(line, QString("le champ %1 manque").arg(field.name));
    }
}

bool TableReader::HasPartOfDay() const
{
    return std::ranges::any_of(fields, [](const FieldRule* field) {
        return field->kind == FieldKind::Month || field->kind == FieldKind::Year;
    });
}

void TableReader::AddDerivedFields()
{
    day = Place("Date");
    for (const FieldRule& field : table.fields) {
        const bool isDerived = field.kind == FieldKind::Month || field.kind == FieldKind::Year;
        if (isDerived && day < columns && std::ranges::find(fields, &field) == fields.end())
            fields.push_back(&field);
    }
    values.resize(fields.size());
    month = Place("MM");
    year = Place("AA");
    archived = Place("Flag_H");
}

std::size_t TableReader::Place(const char* field) const
{
    const auto place =
        std::ranges::find_if(fields, [field](const FieldRule* each) { return qstricmp(each->name, field) == 0; });
    return static_cast<std::size_t>(place - fields.begin());
}

void TableReader::TakeRow(const CsvRow& row)
{
    if (std::ranges::all_of(row.cells, [](const QString& cell) { return QStringView(cell).trimmed().isEmpty(); }))
        return;
    if (static_cast<std::size_t>(row.cells.size()) != columns) {
        problems.Add(row.line, QString("%1 valeurs au lieu de %2").arg(row.cells.size()).arg(columns), KeyIn(row));
        return;
    }
    mended.clear();
    QStringList reasons = ReadCells(row);
    if (reasons.isEmpty())
        reasons = CompleteRow(row);
    if (reasons.isEmpty()) {
        if (const QString reason = target.Add(values, row.line); !reason.isEmpty())
            reasons << reason;
    }
    previous = reasons.isEmpty() && !mends ? row.cells : QStringList();
    if (!reasons.isEmpty())
        problems.Add(row.line, reasons.join(" ; ") + (mends ? " ; la ligne n'est pas reprise" : ""), KeyIn(row));
    else if (!mended.isEmpty())
        problems.Add(row.line, mended.join(" ; "), KeyIn(row));
}

/// The key by which problems name a row; 0 if they name its line.
qint64 TableReader::KeyIn(const CsvRow& row) const
{
    const std::size_t place = Place("num");
    if ((rows == Rows::Whole && !mends) || place >= static_cast<std::size_t>(row.cells.size()))
        return 0;
    const ReadValue key = ReadField(*fields[place], row.cells[static_cast<qsizetype>(place)].trimmed());
    return key.value.IsNull() ? 0 : key.value.Long();
}

/// Whether the value is that of the row before, as most days of a file are.
bool TableReader::IsRepeated(std::size_t column, const CsvRow& row) const
{
    const auto at = static_cast<qsizetype>(column);
    return !previous.isEmpty() && previous[at] == row.cells[at];
}

QStringList TableReader::ReadCells(const CsvRow& row)
{
    QStringList reasons;
    for (std::size_t column = 0; column < columns; ++column) {
        if (fields[column]->kind == FieldKind::Date && IsRepeated(column, row))
            continue;
        ReadValue read = ReadField(*fields[column], row.cells[static_cast<qsizetype>(column)].trimmed());
        const QString problem = mends || !read.problem.isEmpty() ? ProblemOf(column, row, read) : QString();
        values[column] = std::move(read.value);
        if (problem.isEmpty())
            continue;
        if (mends && fields[column]->missing != Missing::Fault)
            mended << problem + " ; le champ reste vide";
        else
            reasons << problem;
    }
    return reasons;
}

/// The name of the field and why its value can't be taken; empty if it can.
QString TableReader::ProblemOf(std::size_t column, const CsvRow& row, const ReadValue& read) const
{
    const QString field = fields[column]->name;
    if (mends && row.lostDates.contains(field, Qt::CaseInsensitive))
        return field + " : une date d'avant 1900, qui ne se lit pas";
    if (read.problem.isEmpty())
        return {};
    const bool isMissing = row.cells[static_cast<qsizetype>(column)].trimmed().isEmpty();
    return mends && isMissing ? field + " sans valeur" : QString("%1 : %2").arg(field, read.problem);
}

/// Sets derived values; returns given ones that contradict them.
QStringList TableReader::CompleteRow(const CsvRow& row)
{
    QStringList reasons;
    const auto follow = [&](std::size_t field, int number) {
        const bool isGiven = field < columns && !values[field].IsNull();
        if (isGiven && values[field].Long() != number) {
            const QString reason =
                QString("%1 : %2 ne correspond pas à la date").arg(fields[field]->name).arg(values[field].Long());
            mends ? mended << reason + ", qui est suivie" : reasons << reason;
        }
        values[field] = number;
    };
    if (month < fields.size()) {
        if (!IsRepeated(day, row))
            dayOfRow = basic::DateValue(values[day].Text());
        follow(month, dayOfRow.month());
        if (year < fields.size())
            follow(year, dayOfRow.year());
    }
    if (archived < fields.size() && values[archived].IsNull())
        values[archived] = 0;
    return reasons;
}

} // namespace practice
