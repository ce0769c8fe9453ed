#include "practice/check/InPlaceRepair.h"

#include "platform/basic/Dates.h"
#include "platform/store/Repair.h"
#include "practice/check/Damage.h"
#include "practice/check/Findings.h"
#include "practice/fields/FieldValues.h"
#include "practice/fields/QuotedName.h"
#include "practice/fields/StoredRules.h"

#include <algorithm>

namespace practice {
namespace {

/// A field that exists in the database.
struct StoredField {
    const TableRule* table;
    const FieldRule* rule;
};

/// Rows whose date is to be converted to the form of its field.
struct DateMend {
    StoredField field;
    struct Row {
        qint64 row;
        QString text;
    };
    QList<Row> rows;
    Findings findings;
};

/// Rows whose month or year is to be taken from their date.
struct PartMend {
    StoredField field;
    Findings findings;
};

bool IsDate(const StoredField& field)
{
    return field.rule->kind == FieldKind::Date || field.rule->kind == FieldKind::DayText;
}

bool IsPartOfDay(const StoredField& field)
{
    return field.rule->kind == FieldKind::Month || field.rule->kind == FieldKind::Year;
}

class InPlaceRepair {
public:
    explicit InPlaceRepair(const QString& database) : work(database) {}

    Mending Run(const std::function<void(bool isDamaged)>& beforeChange)
    {
        Plan();
        if (!isDamaged && made.isEmpty() && rebuilt.isEmpty() && dates.isEmpty() && !HasWrongParts())
            return {};
        beforeChange(isDamaged);
        const QStringList changes = Change();
        work.Commit();
        return {changes, doubts};
    }

private:
    void Plan()
    {
        const Structure expected = ExpectedStructure();
        found = StructureOf(select);
        made = IndexesToMake(found, expected);
        PlanRebuilding();
        for (const StoredField& field : Fields()) {
            if (IsDate(field))
                PlanDates(field);
        }
    }

    QList<StoredField> Fields() const
    {
        QList<StoredField> fields;
        for (const TableRule& table : ImportTables()) {
            const Structure::Table* const stored = found.FindTable(table.name);
            for (const FieldRule& rule : table.fields) {
                if (stored != nullptr && stored->Find(rule.name) != nullptr)
                    fields << StoredField{&table, &rule};
            }
        }
        return fields;
    }

    /// Selects the rows that meet a condition: rowid, value of the field, its type.
    store::Statement RowsWhere(const QString& condition, const StoredField& field) const
    {
        return select(QString("select rowid, %1, typeof(%1) from %2 not indexed where %3")
                          .arg(QuotedName(field.rule->name), QuotedName(field.table->name), condition)
                          .toStdString());
    }

    /// Rebuilds indexes that disagree with their table, and all indexes of a table with damaged pages, which may be
    /// theirs.
    void PlanRebuilding()
    {
        const Damage damage = DamageOf(select, found);
        isDamaged = !damage.IsEmpty();
        doubts = damage.contradictions;
        for (const Structure::Index& index : found.indexes) {
            const bool isMade = std::ranges::any_of(made, [&](const Structure::Index& other) {
                return other.name.compare(index.name, Qt::CaseInsensitive) == 0;
            });
            if (!isMade && (damage.indexes.contains(index.name) || damage.tables.contains(index.table)))
                rebuilt << index.name;
        }
    }

    void PlanDates(const StoredField& field)
    {
        DateMend mend{field, {}, {}};
        store::Statement rows = RowsWhere(DayFault(*field.rule), field);
        while (rows.Step()) {
            const QDate day = DayOf(QString::fromStdString(rows.TextAt(1)).trimmed());
            if (!day.isValid() || rows.TextAt(2) != "text")
                continue;
            const bool isDayFirst = field.rule->kind == FieldKind::DayText;
            mend.rows << DateMend::Row{rows.WholeAt(0), isDayFirst ? basic::DateText(day) : day.toString(Qt::ISODate)};
            Note(mend.findings, field, rows);
        }
        if (!mend.rows.isEmpty())
            dates << mend;
    }

    static void Note(Findings& findings, const StoredField& field, const store::Statement& row)
    {
        const QString value = ShownValue(row.At(1), row.TextAt(2));
        if (field.table->hasOneRow)
            findings.NoteValue(value);
        else
            findings.Note(row.WholeAt(0), value);
    }

    /// Compares months and years with the dates as stored now.
    QList<PartMend> WrongParts() const
    {
        QList<PartMend> wrong;
        for (const StoredField& field : Fields()) {
            if (!IsPartOfDay(field) || found.FindTable(field.table->name)->Find(DayField) == nullptr)
                continue;
            PartMend mend{field, {}};
            store::Statement rows = RowsWhere(PartFault(*field.rule), field);
            while (rows.Step())
                Note(mend.findings, field, rows);
            if (mend.findings.Count() > 0)
                wrong << mend;
        }
        return wrong;
    }

    bool HasWrongParts() const { return !WrongParts().isEmpty(); }

    QStringList Change()
    {
        QStringList changes;
        for (const QString& index : rebuilt) {
            Run("reindex " + QuotedName(index));
            changes << QString("Index %1 : reconstruit.").arg(index);
        }
        for (const Structure::Index& index : made)
            changes << MakeIndex(index);
        for (const DateMend& mend : dates)
            changes << ChangeDates(mend);
        for (const PartMend& mend : WrongParts())
            changes << ChangePart(mend);
        return changes;
    }

    QString MakeIndex(const Structure::Index& index)
    {
        const Structure::Index* const other = found.FindIndex(index.name);
        if (other != nullptr)
            Run("drop index " + QuotedName(other->name));
        Run(index.statement);
        return QString(other != nullptr ? "Index %1 : refait sur %2." : "Index %1 : créé sur %2.")
            .arg(index.name, index.columns);
    }

    QString ChangeDates(const DateMend& mend)
    {
        const auto& [table, rule] = mend.field;
        store::Statement change = select(QString("update %1 set %2 = ?2 where rowid = ?1")
                                             .arg(QuotedName(table->name), QuotedName(rule->name))
                                             .toStdString());
        for (const DateMend::Row& row : mend.rows) {
            change.Bind(1, row.row);
            change.Bind(2, store::Value(row.text));
            change.Run();
        }
        return QString("%1 : %2 mis sous la forme %3 %4")
            .arg(table->name, rule->name, rule->kind == FieldKind::DayText ? "jj/mm/aaaa" : "aaaa-mm-jj",
                 mend.findings.Text());
    }

    QString ChangePart(const PartMend& mend)
    {
        const auto& [table, rule] = mend.field;
        Run(QString("update %1 set %2 = %3 where %4")
                .arg(QuotedName(table->name), QuotedName(rule->name), PartOfDay(*rule), PartFault(*rule)));
        return QString("%1 : %2 repris de Date %3").arg(table->name, rule->name, mend.findings.Text());
    }

    void Run(const QString& statement) { select(statement.toStdString()).Run(); }

    store::RepairTransaction work;
    Select select = [this](std::string_view sql) { return work.Prepare(sql); };
    Structure found;
    bool isDamaged = false;
    QStringList rebuilt;
    QStringList doubts;
    QList<Structure::Index> made;
    QList<DateMend> dates;
};

} // namespace

Mending MendInPlace(const QString& database, const std::function<void(bool isDamaged)>& beforeChange)
{
    return InPlaceRepair(database).Run(beforeChange);
}

} // namespace practice
