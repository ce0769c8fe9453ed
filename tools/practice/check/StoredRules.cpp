#include "practice/check/StoredRules.h"

#include <limits>

namespace practice {
namespace {

// In conditions %1 is the quoted field. A day of the calendar is what SQLite gives back as it was; that its month is
// shorter shows when days are counted on from it. No date of a practice lies before the year 100.
constexpr auto NoIsoDate = "%1 is not null and (date(%1) is not %1 or substr(%1, 1, 4) < '0100' or "
                           "(substr(%1, 9) > '28' and date(%1, '+0 days') is not %1))";
constexpr auto NoDayFirstDate =
    "%1 <> '' and (%1 not glob '[0-9][0-9]/[0-9][0-9]/[0-9][0-9][0-9][0-9]' or substr(%1, 7) < '0100' or "
    "date(substr(%1, 7) || '-' || substr(%1, 4, 2) || '-' || substr(%1, 1, 2), '+0 days') is not "
    "substr(%1, 7) || '-' || substr(%1, 4, 2) || '-' || substr(%1, 1, 2))";

constexpr auto Month = "cast(substr(\"Date\", 6, 2) as integer)";
constexpr auto Year = "cast(substr(\"Date\", 1, 4) as integer)";

constexpr PartOfDate PartFields[] = {
    {"Actes", "MM", Month, "différent du mois de Date"},
    {"Actes", "AA", Year, "différent de l'année de Date"},
    {"Recettes", "MM", Month, "différent du mois de Date"},
};

/// What the screens ask of a field beyond its type.
struct ScreenRule {
    const char* table;
    const char* field;
    const char* fault;
    const char* text;
};

constexpr auto IsMissing = "%1 is null";
constexpr auto Missing = "sans valeur";
constexpr auto NoSlot = "%1 not between 0 and 9";
constexpr auto SlotRange = "hors de l'intervalle 0 à 9";
constexpr auto NoPaymentCode = "%1 not between 0 and 5";
constexpr auto PaymentRange = "hors de l'intervalle 0 à 5";
constexpr auto NoActType = "%1 <> 'C' and %1 not glob 'K[0-9]' and %1 not glob 'K[12][0-9]' and %1 <> 'K30'";
constexpr auto UnknownType = "inconnu";

constexpr ScreenRule ScreenRules[] = {
    {"Actes", "Date", IsMissing, Missing},
    {"Actes", "HH", IsMissing, Missing},
    {"Actes", "HH", NoSlot, SlotRange},
    {"Actes", "montant", IsMissing, Missing},
    {"Actes", "Type", NoActType, UnknownType},
    {"Actes", "flag_R", IsMissing, Missing},
    {"Actes", "flag_R", NoPaymentCode, PaymentRange},
    {"Actes_suppr", "Type", NoActType, UnknownType},
    {"Actes_suppr", "flag_R", NoPaymentCode, PaymentRange},
    {"Plani", "date", IsMissing, Missing},
    {"Plani", "Num_Presta", IsMissing, Missing},
    {"Plani", "HH", IsMissing, Missing},
    {"Plani", "HH", NoSlot, SlotRange},
    {"Presta", "denom", "%1 is null or trim(%1) = ''", Missing},
    {"Presta", "prix", IsMissing, Missing},
    {"Presta", "Ordre", IsMissing, Missing},
    {"Presta", "Ordre", "%1 < 0", "négatif"},
    {"Recettes", "Date", IsMissing, Missing},
    {"Recettes", "objet", IsMissing, Missing},
    {"Recettes", "montant", IsMissing, Missing},
    {"Permn", "Date", NoDayFirstDate, "n'est pas une date jj/mm/aaaa"},
};

/// A field that holds keys of another table.
struct Reference {
    const char* table;
    const char* field;
    const char* target;
};

constexpr Reference References[] = {
    {"Actes", "num_patient", "Patients"},       {"Actes", "num_presta", "Presta"},
    {"Plani", "num_patient", "Patients"},       {"Plani", "Num_Presta", "Presta"},
    {"Actes_suppr", "num_patient", "Patients"}, {"Actes_suppr", "num_presta", "Presta"},
};

bool IsField(const char* table, const char* field, const QString& wantedTable, const QString& wantedField)
{
    return wantedTable.compare(QLatin1String(table), Qt::CaseInsensitive) == 0 &&
           wantedField.compare(QLatin1String(field), Qt::CaseInsensitive) == 0;
}

template <class Limits>
QList<ValueFault> WholeNumberFaults()
{
    const QString lowest = QString::number(Limits::min());
    const QString highest = QString::number(Limits::max());
    return {{"%1 is not null and typeof(%1) <> 'integer'", "n'est pas un nombre entier"},
            {"%1 not between " + lowest + " and " + highest, "hors de l'intervalle " + lowest + " à " + highest}};
}

/// What may be wrong with a value of a declared type.
QList<ValueFault> TypeFaults(const QString& type)
{
    if (type == "SMALLINT")
        return WholeNumberFaults<std::numeric_limits<qint16>>();
    if (type == "INTEGER")
        return WholeNumberFaults<std::numeric_limits<qint32>>();
    if (type == "REAL")
        return {{"%1 is not null and typeof(%1) <> 'real' and typeof(%1) <> 'integer'", "n'est pas un nombre"},
                {"%1 not between -1e15 and 1e15", "infini ou démesuré"}};
    if (type == "DATE")
        return {{NoIsoDate, "n'est pas une date aaaa-mm-jj"}};
    return {{"%1 is not null and typeof(%1) <> 'text'", "n'est pas un texte"}};
}

QList<ValueFault> FaultsOfField(const QString& table, const Structure::Field& field, const Structure& found)
{
    QList<ValueFault> faults = TypeFaults(field.type);
    for (const ScreenRule& rule : ScreenRules) {
        if (IsField(rule.table, rule.field, table, field.name))
            faults << ValueFault{rule.fault, rule.text};
    }
    for (const PartOfDate& part : PartFields) {
        if (IsField(part.table, part.field, table, field.name) && found.FindTable(table)->Find("Date") != nullptr)
            faults << ValueFault{part.Fault(), part.text};
    }
    for (const Reference& reference : References) {
        const bool isChecked = IsField(reference.table, reference.field, table, field.name) &&
                               found.FindTable(reference.target) != nullptr;
        if (isChecked)
            faults << ValueFault{QString("%1 is not null and %1 not in (select num from \"%2\" not indexed)")
                                     .arg("%1", QLatin1String(reference.target)),
                                 QString("sans ligne dans %1").arg(reference.target), true};
    }
    for (ValueFault& fault : faults)
        fault.condition.replace("%1", QuotedName(field.name));
    return faults;
}

/// The fields of a table that are checked, as they are called in `found`.
QList<Structure::Field> CheckedFields(const Structure::Table& expected, const Structure::Table& found)
{
    QList<Structure::Field> fields;
    for (int position = 0; position < expected.fields.size(); ++position) {
        Structure::Field field = expected.fields[position];
        if (IsReachedByPosition(expected.name))
            field.name = found.fields.value(position).name;
        if (found.Find(field.name) != nullptr)
            fields << field;
    }
    return fields;
}

} // namespace

QList<FieldFaults> FaultsOf(const Structure::Table& expected, const Structure& found)
{
    QList<FieldFaults> faults;
    for (const Structure::Field& field : CheckedFields(expected, *found.FindTable(expected.name)))
        faults << FieldFaults{field.name, FaultsOfField(expected.name, field, found)};
    return faults;
}

QList<DateField> DateFields(const Structure& expected, const Structure& found)
{
    QList<DateField> dates;
    for (const Structure::Table& table : expected.tables) {
        for (const Structure::Field& field : table.fields) {
            const bool isDayFirst = IsField("Permn", "Date", table.name, field.name);
            const Structure::Table* const there = found.FindTable(table.name);
            if ((field.type != "DATE" && !isDayFirst) || there == nullptr || there->Find(field.name) == nullptr)
                continue;
            const QString fault = QLatin1String(isDayFirst ? NoDayFirstDate : NoIsoDate);
            dates << DateField{table.name, field.name, isDayFirst,
                               QString(fault).replace("%1", QuotedName(field.name))};
        }
    }
    return dates;
}

QString PartOfDate::Fault() const
{
    // The comparison comes first: it spares sound rows the look at the calendar.
    return QString(R"(%1 is not %2 and "Date" is not null and date("Date", '+0 days') is "Date")")
        .arg(QuotedName(field), QLatin1String(right));
}

std::span<const PartOfDate> PartsOfDate()
{
    return PartFields;
}

} // namespace practice
