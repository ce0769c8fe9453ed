#include "practice/copies/CashDays.h"

#include "platform/basic/Numbers.h"
#include "practice/copies/RowTexts.h"
#include "practice/fields/QuotedName.h"

#include <QSet>
#include <algorithm>
#include <cmath>

namespace practice {
namespace {

constexpr auto AmountMask = "# ### ##0.00";

/// The amount as displayed, in hundredths.
qint64 ShownCents(double dinars)
{
    return std::llround(basic::Val(basic::Format(dinars, AmountMask)) * 100);
}

QDate DayIn(const store::Value& value)
{
    const auto* const text = std::get_if<QString>(&value.Raw());
    return text != nullptr ? QDate::fromString(*text, Qt::ISODate) : QDate();
}

/// A field of a stored row; Null if the row doesn't exist.
store::Value Stored(const store::DatabaseReader& reader, const QString& table, const QString& field, qint64 key)
{
    store::Statement select =
        reader.Select(("select " + QuotedName(field) + " from " + table + " where num = ?").toStdString());
    select.Bind(1, key);
    return select.Step() ? store::ValueOf(select.At(0), store::ColumnType::Text) : store::Value();
}

/// A row in both states.
class Row {
public:
    Row(const store::DatabaseReader& before, const store::DatabaseReader& after, const QString& table,
        const RowChange& rowChange)
        : oldState(&before), newState(&after), tableName(table), change(&rowChange)
    {
    }

    store::Value Before(const QString& field) const { return Side(field, true); }
    store::Value After(const QString& field) const { return Side(field, false); }
    /// The newer value, or the older one of a row that is gone.
    store::Value Current(const QString& field) const { return Side(field, change->kind == RowChange::Kind::Gone); }

private:
    store::Value Side(const QString& field, bool isOld) const
    {
        if (const FieldChange* const changed = change->Find(field))
            return isOld ? changed->before : changed->after;
        if (change->kind != RowChange::Kind::Changed)
            return {};
        return Stored(isOld ? *oldState : *newState, tableName, field, change->key);
    }

    const store::DatabaseReader* oldState;
    const store::DatabaseReader* newState;
    QString tableName;
    const RowChange* change;
};

QString PlainText(const store::Value& value)
{
    const auto* const text = std::get_if<QString>(&value.Raw());
    return text != nullptr ? text->trimmed() : QString();
}

/// A name from the newer state, else from the older one; the key if the row is in neither.
QString NameOf(const store::DatabaseReader& before, const store::DatabaseReader& after, const QString& table,
               const QStringList& fields, const store::Value& key)
{
    if (key.IsNull() || std::holds_alternative<QString>(key.Raw()))
        return "?";
    for (const store::DatabaseReader* reader : {&after, &before}) {
        QStringList words;
        for (const QString& field : fields)
            words << PlainText(Stored(*reader, table, field, qint64(key.Double())));
        words.removeAll("");
        if (!words.isEmpty())
            return words.join(' ');
    }
    return QString("n° %1").arg(key.Double());
}

/// The changes of the row that affect the cash.
QString ChangesText(const Row& row, const RowChange& change, const char* feminine)
{
    if (change.kind == RowChange::Kind::Added)
        return QString("ajouté%1, ").arg(feminine) + FieldText("montant", row.After("montant"));
    if (change.kind == RowChange::Kind::Gone)
        return QString("disparu%1, ").arg(feminine) + FieldText("montant", row.Before("montant"));
    QStringList texts;
    for (const char* const field : {"montant", "Date"})
        if (const FieldChange* const changed = change.Find(field))
            texts << QString("%1 %2 -> %3")
                         .arg(FieldTitle(field), FieldText(field, changed->before), FieldText(field, changed->after));
    return texts.join(", ");
}

/// The rows because of which the cash of a day differs, by day.
class Reasons {
public:
    Reasons(const store::DatabaseReader& beforeState, const store::DatabaseReader& afterState,
            const QSet<QDate>& differing)
        : before(&beforeState), after(&afterState), days(&differing)
    {
    }

    void Add(const TableChanges& table)
    {
        const bool isAct = table.table == "Actes";
        if (!isAct && table.table != "Recettes")
            return;
        for (const RowChange& change : table.rows) {
            if (change.Find("montant") == nullptr && change.Find("Date") == nullptr)
                continue;
            const Row row(*before, *after, table.table, change);
            for (const QDate& day : QSet<QDate>{DayIn(row.Before("Date")), DayIn(row.After("Date"))})
                if (days->contains(day))
                    lines[day] << (isAct ? ActLine(row, change) : ExpenseLine(row, change));
        }
    }

    QStringList Of(const QDate& day) const { return lines.value(day); }

private:
    QString ActLine(const Row& row, const RowChange& change) const
    {
        return QString("Acte %1 (%2, %3) : ")
                   .arg(change.key)
                   .arg(NameOf(*before, *after, "Patients", {"nom", "Prenom"}, row.Current("num_patient")),
                        NameOf(*before, *after, "Presta", {"denom"}, row.Current("num_presta"))) +
               ChangesText(row, change, "");
    }

    static QString ExpenseLine(const Row& row, const RowChange& change)
    {
        return QString("Dépense %1 (%2) : ").arg(change.key).arg(PlainText(row.Current("objet"))) +
               ChangesText(row, change, "e");
    }

    const store::DatabaseReader* before;
    const store::DatabaseReader* after;
    const QSet<QDate>* days;
    QMap<QDate, QStringList> lines;
};

} // namespace

CashDays::CashDays(const store::DatabaseReader& reader, const QDate& end)
{
    Add(reader, "Actes", end, &Cash::received);
    Add(reader, "Recettes", end, &Cash::spent);
}

void CashDays::Add(const store::DatabaseReader& reader, const char* table, const QDate& end, double Cash::*side)
{
    store::Statement sums = reader.Select(std::string("select Date, sum(montant) from ") + table +
                                          " where Date is not null and Date < ? group by Date");
    sums.Bind(1, end.isValid() ? store::Value(end.toString(Qt::ISODate)) : store::Value("9999-12-31"));
    while (sums.Step()) {
        const QDate day = DayIn(store::ValueOf(sums.At(0), store::ColumnType::Text));
        const store::Value sum = store::ValueOf(sums.At(1), store::ColumnType::Text);
        if (day.isValid() && !sum.IsNull())
            days[day].*side += sum.Double();
    }
}

qint64 CashDays::Movement(const QDate& day) const
{
    const Cash cash = days.value(day);
    return ShownCents(cash.received) - ShownCents(cash.spent);
}

double CashDays::Balance(const QDate& day) const
{
    double balance = 0;
    for (auto each = days.begin(); each != days.end() && each.key() <= day; ++each)
        balance += each->received - each->spent;
    return balance;
}

QList<DifferingDay> DifferingDays(const store::DatabaseReader& before, const store::DatabaseReader& after,
                                  const QList<TableChanges>& changes, const QDate& end)
{
    const CashDays old(before, end);
    const CashDays now(after, end);
    QSet<QDate> differing;
    for (const QDate& day : old.Days() + now.Days())
        if (old.Movement(day) != now.Movement(day))
            differing << day;
    Reasons reasons(before, after, differing);
    for (const TableChanges& table : changes)
        reasons.Add(table);

    QList<QDate> days = differing.values();
    std::ranges::sort(days);
    QList<DifferingDay> found;
    for (const QDate& day : days)
        found << DifferingDay{day, old.Balance(day), now.Balance(day), reasons.Of(day)};
    return found;
}

} // namespace practice
