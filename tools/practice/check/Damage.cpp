#include "practice/check/Damage.h"

#include "platform/basic/RuntimeError.h"
#include "practice/check/Findings.h"
#include "practice/fields/QuotedName.h"

#include <QRegularExpression>

namespace practice {
namespace {

/// The messages of a check; none for a sound database.
QStringList LinesOf(const Select& select, const std::string& check)
{
    QStringList lines;
    try {
        for (store::Statement rows = select(check); rows.Step();)
            lines << QString::fromStdString(rows.TextAt(0)).split('\n', Qt::SkipEmptyParts);
    } catch (const basic::RuntimeError& error) {
        if (error.Code() != basic::Error::DamagedDatabase)
            throw;
        lines << error.Description();
    }
    static const QRegularExpression noFault(R"(^(ok|\*\*\* in database .*)$)");
    lines.removeIf([](const QString& line) { return noFault.match(line).hasMatch(); });
    return lines;
}

/// The index of the table that a message names; empty if it names none.
QString NamedIndex(const QString& line, const QString& table, const Structure& found)
{
    for (const Structure::Index& index : found.indexes) {
        const QRegularExpression name(QString(R"((?<!\w)%1(?!\w))").arg(QRegularExpression::escape(index.name)));
        if (index.table.compare(table, Qt::CaseInsensitive) == 0 && name.match(line).hasMatch())
            return index.name;
    }
    return {};
}

/// A message that names no index is about damaged pages. Those about indexes may then be consequences and are dropped.
void SortByObject(const QStringList& lines, const QString& table, const Structure& found, Damage& damage)
{
    QStringList indexes;
    for (const QString& line : lines) {
        const QString index = NamedIndex(line, table, found);
        if (index.isEmpty()) {
            damage.tables[table] = line;
            return;
        }
        if (!indexes.contains(index))
            indexes << index;
    }
    damage.indexes << indexes;
}

QString JoinedFields(const Structure::Index& index)
{
    QStringList columns;
    for (const QString& field : index.fields)
        columns << QuotedName(field) << "typeof(" + QuotedName(field) + ")";
    return columns.join(", ");
}

/// The values that differ between a row and its entry in an index.
QStringList Differences(const store::Statement& entry, const store::Statement& row, const Structure::Index& index)
{
    QStringList lines;
    for (int field = 0; field < index.fields.size(); ++field) {
        const int column = 1 + 2 * field;
        const QString stored = ShownValue(row.At(column), row.TextAt(column + 1));
        const QString indexed = ShownValue(entry.At(column), entry.TextAt(column + 1));
        if (stored != indexed)
            lines << QString("%1 : %2 de num %3 vaut %4, et %5 dans l'index %6.")
                         .arg(index.table, index.fields[field])
                         .arg(entry.WholeAt(0))
                         .arg(stored, indexed, index.name);
    }
    return lines;
}

/// The values that differ between an index and its table; none if it can't be read.
QStringList ContradictionsOf(const Select& select, const Structure::Index& index)
{
    constexpr int mostLines = 10;
    QStringList lines;
    try {
        const QString fields = JoinedFields(index);
        const QString table = QuotedName(index.table);
        store::Statement entries =
            select(QString("select rowid, %1 from %2 indexed by %3 except select rowid, %1 from %2 "
                           "not indexed")
                       .arg(fields, table, QuotedName(index.name))
                       .toStdString());
        store::Statement row =
            select(QString("select rowid, %1 from %2 not indexed where rowid = ?").arg(fields, table).toStdString());
        while (entries.Step() && lines.size() < mostLines) {
            const store::ResetAtEnd reset(row);
            row.Bind(1, entries.WholeAt(0));
            if (row.Step())
                lines << Differences(entries, row, index);
        }
    } catch (const basic::RuntimeError&) {
        // Already reported by the check of its table.
    }
    return lines;
}

} // namespace

QStringList Damage::Lines(const QString& file) const
{
    QStringList lines;
    for (const QString& index : indexes)
        lines << QString("L'index %1 ne correspond plus à sa table : « practice repair » le reconstruit.").arg(index);
    lines << contradictions;
    for (const auto& [table, detail] : tables.asKeyValueRange())
        lines << QString("La table %1 ou un de ses index est endommagé (%2).").arg(table, detail);
    if (!elsewhere.isEmpty())
        lines << QString("%1 est endommagé (%2).").arg(file, elsewhere);
    return lines;
}

Damage DamageOf(const Select& select, const Structure& found)
{
    Damage damage;
    const QStringList whole = LinesOf(select, "pragma integrity_check(1)");
    if (whole.isEmpty())
        return damage;
    for (const Structure::Table& table : found.tables) {
        const std::string check = ("pragma integrity_check(" + QuotedName(table.name) + ")").toStdString();
        SortByObject(LinesOf(select, check), table.name, found, damage);
    }
    if (damage.IsEmpty())
        damage.elsewhere = whole.first();
    for (const QString& index : damage.indexes)
        damage.contradictions << ContradictionsOf(select, *found.FindIndex(index));
    return damage;
}

} // namespace practice
