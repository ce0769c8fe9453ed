#include "practice/FieldRules.h"

#include "platform/basic/Dates.h"

#include <QRegularExpression>
#include <QTime>
#include <limits>

namespace practice {
namespace {

using enum FieldKind;

constexpr FieldRule patientFields[] = {
    {"num", Key, true}, {"nom", Text},   {"Prenom", Text},  {"Naiss", Date},  {"Sexe", Code},
    {"tel", Text},      {"ville", Text}, {"N_carte", Text}, {"diagno", Text}, {"Flag_H", Code, false, 0, 1},
};

constexpr FieldRule actFields[] = {
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
    {"Flag_H", Code, false, 0, 1},
};

constexpr FieldRule appointmentFields[] = {
    {"num", Key, true},       {"date", FieldKind::Date, true}, {"Num_Presta", Reference, true},
    {"HH", Code, true, 0, 9}, {"num_patient", Reference},
};

constexpr FieldRule deletedActFields[] = {
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

constexpr TableRule tables[] = {
    {"Patients", patientFields},
    {"Actes", actFields},
    {"Plani", appointmentFields},
    {"Actes_suppr", deletedActFields},
};

ReadValue Unreadable(const QString& reason)
{
    return {.value = {}, .problem = reason};
}

ReadValue ReadWhole(const QString& text, int lowest, int highest)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber)
        return Unreadable(QString("« %1 » n'est pas un nombre entier").arg(text));
    if (number < lowest || number > highest)
        return Unreadable(QString("%1 est hors de l'intervalle %2 à %3").arg(number).arg(lowest).arg(highest));
    return {number, {}};
}

ReadValue ReadDate(const QString& text)
{
    const QDate date = DayOf(text);
    if (!date.isValid())
        return Unreadable(QString("« %1 » n'est pas une date (jj/mm/aaaa ou aaaa-mm-jj)").arg(text));
    return {basic::DateText(date), {}};
}

ReadValue ReadTime(const QString& text)
{
    const QTime time = QTime::fromString(text, "H:mm");
    if (!time.isValid())
        return Unreadable(QString("« %1 » n'est pas une heure (HH:MM)").arg(text));
    return {time.toString("HH:mm"), {}};
}

ReadValue ReadAmount(const QString& text)
{
    static const QRegularExpression amount(R"(^[+-]?(\d+([.,]\d*)?|[.,]\d+)$)");
    static const QRegularExpression blanks("\\s");
    const QString digits = QString(text).remove(blanks);
    if (!amount.match(digits).hasMatch())
        return Unreadable(QString("« %1 » n'est pas un montant").arg(text));
    constexpr double largest = 1e15;
    const double number = QString(digits).replace(',', '.').toDouble();
    if (std::abs(number) >= largest)
        return Unreadable(QString("le montant %1 est trop grand").arg(text));
    return {number, {}};
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
    return tables;
}

const TableRule* FindTable(const QString& name)
{
    for (const TableRule& table : tables) {
        if (name.compare(QLatin1String(table.name), Qt::CaseInsensitive) == 0)
            return &table;
    }
    return nullptr;
}

QString DescribeField(const FieldRule& rule)
{
    switch (rule.kind) {
    case Key:
        return QStringLiteral("clé de la ligne, un nombre entier à partir de 1");
    case Reference:
        return QStringLiteral("clé d'une autre table, un nombre entier");
    case Code:
        return QString("nombre entier de %1 à %2").arg(rule.lowest).arg(rule.highest);
    case FieldKind::Date:
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

QDate DayOf(const QString& text)
{
    static const QRegularExpression dayFirst(R"(^(\d{1,2})/(\d{1,2})/(\d{4})$)");
    const QRegularExpressionMatch parts = dayFirst.match(text);
    const QDate date = parts.hasMatch()
                           ? QDate(parts.captured(3).toInt(), parts.captured(2).toInt(), parts.captured(1).toInt())
                           : QDate::fromString(text, "yyyy-MM-dd");
    constexpr int firstYear = 100;
    return date.isValid() && date.year() >= firstYear ? date : QDate();
}

bool IsActType(const QString& text)
{
    static const QRegularExpression code("^(C|K([0-9]|[12][0-9]|30))$");
    return code.match(text).hasMatch();
}

ReadValue ReadField(const FieldRule& rule, const QString& text)
{
    if (text.isEmpty())
        return rule.required ? Unreadable("une valeur est obligatoire") : ReadValue{};
    switch (rule.kind) {
    case Key:
        return ReadWhole(text, 1, std::numeric_limits<int>::max());
    case Reference:
        return ReadWhole(text, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    case Code:
        return ReadWhole(text, rule.lowest, rule.highest);
    case FieldKind::Date:
        return ReadDate(text);
    case Time:
        return ReadTime(text);
    case Amount:
        return ReadAmount(text);
    case ActType:
        return IsActType(text.toUpper())
                   ? ReadValue{text.toUpper(), {}}
                   : Unreadable(QString("« %1 » n'est pas un code d'acte (C, K0 à K30)").arg(text));
    case Text:
        break;
    }
    return {text, {}};
}

} // namespace practice
