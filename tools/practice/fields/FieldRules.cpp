#include "practice/fields/FieldRules.h"

namespace practice {
namespace {

using enum FieldKind;

constexpr FieldRule PatientFields[] = {
    {"num", Key, true}, {"nom", Text},   {"Prenom", Text},  {"Naiss", Date},  {"Sexe", Code},
    {"tel", Text},      {"ville", Text}, {"N_carte", Text}, {"diagno", Text}, {"Flag_H", Code},
};

constexpr FieldRule ActFields[] = {
    {"num", Key, true},
    {"Date", FieldKind::Date, true},
    {"MM", Code, false, 1, 12},
    {"AA", Code, false, 100, 9999},
    {"date_Presta", FieldKind::Date},
    {"HH", Code, true, 0, 9},
    {"Heure", Time},
    {"num_patient", Reference},
    {"num_presta", Reference},
    {"montant", Amount, true},
    {"Type", ActType},
    {"flag_R", Code, true, 0, 5},
    {"Flag_H", Code},
};

constexpr FieldRule AppointmentFields[] = {
    {"num", Key, true},       {"date", FieldKind::Date, true}, {"Num_Presta", Reference, true},
    {"HH", Code, true, 0, 9}, {"num_patient", Reference},
};

constexpr FieldRule DeletedActFields[] = {
    {"num", Key, true},
    {"Date", FieldKind::Date},
    {"Heure", Time},
    {"num_patient", Reference},
    {"num_presta", Reference},
    {"Type", ActType},
    {"flag_R", Code, false, 0, 5},
    {"Date_Suppr", FieldKind::Date},
    {"H_Suppr", Time},
};

constexpr FieldRule ServiceFields[] = {
    {"num", Key, true},
    {"denom", Text, true},
    {"prix", Amount},
    {"Ordre", Code, true},
};

constexpr FieldRule ExpenseFields[] = {
    {"num", Key, true}, {"Date", FieldKind::Date, true}, {"MM", Code, false, 1, 12},
    {"objet", Text},    {"montant", Amount, true},
};

constexpr FieldRule RateFields[] = {
    {"C", Code},   {"K0", Code},  {"K1", Code},  {"K2", Code},  {"K3", Code},  {"K4", Code},  {"K5", Code},
    {"K6", Code},  {"K7", Code},  {"K8", Code},  {"K9", Code},  {"K10", Code}, {"K11", Code}, {"K12", Code},
    {"K13", Code}, {"K14", Code}, {"K15", Code}, {"K16", Code}, {"K17", Code}, {"K18", Code}, {"K19", Code},
    {"K20", Code}, {"K21", Code}, {"K22", Code}, {"K23", Code}, {"K24", Code}, {"K25", Code}, {"K26", Code},
    {"K27", Code}, {"K28", Code}, {"K29", Code}, {"K30", Code},
};

constexpr FieldRule PermanentFields[] = {
    {"Registre", Text},        {"Id_Fiscale", Text}, {"Article", Text},     {"Telephone", Text}, {"Fax", Text},
    {"Compte", Text},          {"Agence", Text},     {"RIB", Text},         {"Charge1", Amount}, {"Charge2", Amount},
    {"Charge3", Amount},       {"Charge4", Amount},  {"Charge5", Amount},   {"Charge6", Amount}, {"Charge7", Amount},
    {"Charge8", Amount},       {"Charge9", Amount},  {"Taux_CNAS", Amount}, {"Taux_PP", Amount}, {"Taux_VF", Amount},
    {"Date", FieldKind::Date}, {"nbre", Code},       {"RC", Text},
};

constexpr TableRule Tables[] = {
    {"Patients", PatientFields},  {"Actes", ActFields},
    {"Plani", AppointmentFields}, {"Actes_suppr", DeletedActFields},
    {"Presta", ServiceFields},    {"Recettes", ExpenseFields},
    {"Tarif", RateFields, true},  {"Permn", PermanentFields, true},
};

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

const TableRule* FindTable(const QString& name)
{
    for (const TableRule& table : Tables) {
        if (name.compare(QLatin1String(table.name), Qt::CaseInsensitive) == 0)
            return &table;
    }
    return nullptr;
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

} // namespace practice
