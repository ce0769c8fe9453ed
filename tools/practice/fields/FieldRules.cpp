#include "practice/fields/FieldRules.h"

#include <algorithm>
#include <limits>

namespace practice {
namespace {

using enum FieldKind;

constexpr FieldRule ReferenceTo(const char* target, const char* name, Missing missing = Missing::Fine)
{
    FieldRule rule{name, Reference, missing};
    rule.target = target;
    return rule;
}

/// A field of which no two rows should have the same value.
constexpr FieldRule UniqueIn(const char* table, FieldRule rule)
{
    rule.uniqueIn = table;
    return rule;
}

constexpr FieldRule Slot(const char* name)
{
    return {name, Code, Missing::Fault, 0, 9};
}

constexpr FieldRule PaymentCode(const char* name, Missing missing = Missing::Fine)
{
    return {name, Code, missing, 0, 5};
}

constexpr FieldRule PatientFields[] = {
    {"num", Key, Missing::Fault},
    {"nom", Text},
    {"Prenom", Text},
    {"Naiss", Date},
    {"Sexe", Code},
    {"tel", Text},
    {"ville", Text},
    {"N_carte", Text},
    {"diagno", Text},
    {"Flag_H", Code},
};

constexpr FieldRule ActFields[] = {
    {"num", Key, Missing::Fault},
    {"Date", FieldKind::Date, Missing::Fault},
    {"MM", Month},
    {"AA", Year},
    {"date_Presta", FieldKind::Date},
    Slot("HH"),
    {"Heure", Time},
    ReferenceTo("Patients", "num_patient", Missing::Remark),
    ReferenceTo("Presta", "num_presta", Missing::Remark),
    {"montant", Amount, Missing::Fault},
    {"Type", ActType},
    PaymentCode("flag_R", Missing::Fault),
    {"Flag_H", Code},
};

constexpr FieldRule AppointmentFields[] = {
    {"num", Key, Missing::Fault},
    {"date", FieldKind::Date, Missing::Fault},
    ReferenceTo("Presta", "Num_Presta", Missing::Fault),
    Slot("HH"),
    ReferenceTo("Patients", "num_patient"),
};

constexpr FieldRule DeletedActFields[] = {
    {"num", Key, Missing::Fault},
    {"Date", FieldKind::Date},
    {"Heure", Time},
    ReferenceTo("Patients", "num_patient"),
    ReferenceTo("Presta", "num_presta"),
    {"Type", ActType},
    PaymentCode("flag_R"),
    {"Date_Suppr", FieldKind::Date},
    {"H_Suppr", Time},
};

constexpr FieldRule ServiceFields[] = {
    {"num", Key, Missing::Fault},
    UniqueIn("Presta", {"denom", Text, Missing::Remark}),
    {"prix", Amount, Missing::Remark},
    UniqueIn("Presta", {"Ordre", Code, Missing::Remark}),
};

constexpr FieldRule ExpenseFields[] = {
    {"num", Key, Missing::Fault},     {"Date", FieldKind::Date, Missing::Fault}, {"MM", Month},
    {"objet", Text, Missing::Remark}, {"montant", Amount, Missing::Fault},
};

constexpr FieldRule RateFields[] = {
    {"C", Code},   {"K0", Code},  {"K1", Code},  {"K2", Code},  {"K3", Code},  {"K4", Code},  {"K5", Code},
    {"K6", Code},  {"K7", Code},  {"K8", Code},  {"K9", Code},  {"K10", Code}, {"K11", Code}, {"K12", Code},
    {"K13", Code}, {"K14", Code}, {"K15", Code}, {"K16", Code}, {"K17", Code}, {"K18", Code}, {"K19", Code},
    {"K20", Code}, {"K21", Code}, {"K22", Code}, {"K23", Code}, {"K24", Code}, {"K25", Code}, {"K26", Code},
    {"K27", Code}, {"K28", Code}, {"K29", Code}, {"K30", Code},
};

constexpr FieldRule PermanentFields[] = {
    {"Registre", Text},  {"Id_Fiscale", Text}, {"Article", Text},     {"Telephone", Text}, {"Fax", Text},
    {"Compte", Text},    {"Agence", Text},     {"RIB", Text},         {"Charge1", Amount}, {"Charge2", Amount},
    {"Charge3", Amount}, {"Charge4", Amount},  {"Charge5", Amount},   {"Charge6", Amount}, {"Charge7", Amount},
    {"Charge8", Amount}, {"Charge9", Amount},  {"Taux_CNAS", Amount}, {"Taux_PP", Amount}, {"Taux_VF", Amount},
    {"Date", DayText},   {"nbre", Code},       {"RC", Text},
};

constexpr FieldRule ReportTextFields[] = {
    {"ch1", Text}, {"ch2", Text}, {"ch3", Text}, {"ch4", Text},  {"ch5", Text},  {"ch6", Text},
    {"ch7", Text}, {"ch8", Text}, {"ch9", Text}, {"ch10", Text}, {"ch30", Text},
};

constexpr TableRule Tables[] = {
    {"Patients", PatientFields},       {"Actes", ActFields},
    {"Plani", AppointmentFields},      {"Actes_suppr", DeletedActFields},
    {"Presta", ServiceFields},         {"Recettes", ExpenseFields},
    {"Tarif", RateFields, true, true}, {"Permn", PermanentFields, true},
};

constexpr TableRule ReportTexts{"textes", ReportTextFields, true};

bool HasName(const TableRule& table, const QString& name)
{
    return name.compare(QLatin1String(table.name), Qt::CaseInsensitive) == 0;
}

} // namespace

int TableRule::Find(const QString& field) const
{
    for (std::size_t position = 0; position < fields.size(); ++position) {
        if (field.compare(QLatin1String(fields[position].name), Qt::CaseInsensitive) == 0)
            return static_cast<int>(position);
    }
    return -1;
}

std::span<const TableRule> ImportTables()
{
    return Tables;
}

const TableRule* FindImportTable(const QString& name)
{
    const auto* const found =
        std::ranges::find_if(Tables, [&](const TableRule& table) { return HasName(table, name); });
    return found != std::end(Tables) ? found : nullptr;
}

const TableRule* FindTable(const QString& name)
{
    return HasName(ReportTexts, name) ? &ReportTexts : FindImportTable(name);
}

QString ImportTableNames()
{
    QStringList names;
    for (const TableRule& table : Tables)
        names << table.name;
    return names.join(", ");
}

QStringList ScratchTables()
{
    return {"Prov", "RCP2", "textes"};
}

Limits LimitsOf(const FieldRule& rule)
{
    constexpr int monthsOfYear = 12;
    constexpr int lastYear = 9999;
    using Whole = std::numeric_limits<int>;
    switch (rule.kind) {
    case Key:
        return {1, Whole::max()};
    case Reference:
        return {Whole::min(), Whole::max()};
    case Month:
        return {1, monthsOfYear};
    case Year:
        return {FirstYear, lastYear};
    default:
        return {rule.lowest, rule.highest};
    }
}

QString DescribeField(const FieldRule& rule)
{
    switch (rule.kind) {
    case Key:
        return QStringLiteral("clé de la ligne, un nombre entier à partir de 1");
    case Reference:
        return QStringLiteral("clé d'une ligne de %1, un nombre entier").arg(rule.target);
    case Code:
    case Month:
    case Year:
        return QString("nombre entier de %1 à %2").arg(LimitsOf(rule).lowest).arg(LimitsOf(rule).highest);
    case FieldKind::Date:
    case DayText:
        return QStringLiteral("date, jj/mm/aaaa ou aaaa-mm-jj");
    case Time:
        return QStringLiteral("heure, HH:MM");
    case Amount:
        return QStringLiteral("montant en dinars");
    case ActType:
        return QStringLiteral("code d'acte, C ou K0 à K30");
    case Text:
        break;
    }
    return QStringLiteral("texte");
}

} // namespace practice
