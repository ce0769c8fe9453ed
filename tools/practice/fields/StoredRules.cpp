#include "practice/fields/StoredRules.h"

#include "practice/fields/QuotedName.h"

#include <limits>

namespace practice {
namespace {

using enum FieldKind;

// In conditions %1 is the quoted field and %2 the first year. A valid date is one that date() returns unchanged; only
// with a modifier does it correct a day past the end of its month.
constexpr auto NoIsoDate = "%1 is not null and (date(%1) is not %1 or substr(%1, 1, 4) < '%2' or "
                           "(substr(%1, 9) > '28' and date(%1, '+0 days') is not %1))";
constexpr auto NoDayText =
    "%1 <> '' and (%1 not glob '[0-9][0-9]/[0-9][0-9]/[0-9][0-9][0-9][0-9]' or substr(%1, 7) < '%2' or "
    "date(substr(%1, 7) || '-' || substr(%1, 4, 2) || '-' || substr(%1, 1, 2), '+0 days') is not "
    "substr(%1, 7) || '-' || substr(%1, 4, 2) || '-' || substr(%1, 1, 2))";
constexpr auto NoActType = "%1 <> 'C' and %1 not glob 'K[0-9]' and %1 not glob 'K[12][0-9]' and %1 <> 'K30'";
// The first form is that of nearly every row; import also takes hours of one digit, and seconds.
constexpr auto NoTime = "%1 not glob '[01][0-9]:[0-5][0-9]' and trim(%1) <> '' and "
                        "trim(%1) not glob '[01][0-9]:[0-5][0-9]' and trim(%1) not glob '2[0-3]:[0-5][0-9]' and "
                        "trim(%1) not glob '[0-9]:[0-5][0-9]' and trim(%1) not glob '[0-9]:[0-5][0-9]:[0-5][0-9]' and "
                        "trim(%1) not glob '[01][0-9]:[0-5][0-9]:[0-5][0-9]' and "
                        "trim(%1) not glob '2[0-3]:[0-5][0-9]:[0-5][0-9]'";
constexpr auto NoText = "%1 is not null and typeof(%1) <> 'text'";
constexpr auto NoWholeNumber = "%1 is not null and typeof(%1) <> 'integer'";
constexpr auto NoNumber = "%1 is not null and typeof(%1) <> 'real' and typeof(%1) <> 'integer'";

QList<ValueFault> TextFaults()
{
    return {{NoText, "n'est pas un texte"},
            {"not is_well_formed(%1)", "n'est pas de l'UTF-8 ou contient un caractère nul"}};
}

QList<ValueFault> WholeNumberFaults(const FieldRule& rule)
{
    Limits limits = LimitsOf(rule);
    if (rule.kind == Key)
        limits.lowest = std::numeric_limits<int>::min(); // existing keys may be negative
    const QString lowest = QString::number(limits.lowest);
    const QString highest = QString::number(limits.highest);
    return {{NoWholeNumber, "n'est pas un nombre entier"},
            {"%1 not between " + lowest + " and " + highest, "hors de l'intervalle " + lowest + " à " + highest}};
}

QList<ValueFault> KindFaults(const FieldRule& rule)
{
    switch (rule.kind) {
    case Key:
    case Reference:
    case Code:
        return WholeNumberFaults(rule);
    case Month:
    case Year:
        return {{PartFault(rule), rule.kind == Month ? "différent du mois de Date" : "différent de l'année de Date",
                 false, nullptr, DayField}};
    case Date:
        return {{DayFault(rule), "n'est pas une date aaaa-mm-jj"}};
    case DayText:
        return TextFaults() << ValueFault{DayFault(rule), "n'est pas une date jj/mm/aaaa"};
    case Amount:
        return {{NoNumber, "n'est pas un nombre"},
                {"abs(%1) >= " + QString::number(AmountLimit, 'e'), "infini ou démesuré"}};
    case ActType:
        return TextFaults() << ValueFault{NoActType, "inconnu"};
    case Time:
        return TextFaults() << ValueFault{NoTime, "n'est pas une heure HH:MM"};
    case Text:
        break;
    }
    return TextFaults();
}

ValueFault MissingFault(const FieldRule& rule)
{
    return {rule.kind == Text ? "%1 is null or trim(%1) = ''" : "%1 is null", "sans valeur",
            rule.missing == Missing::Remark};
}

ValueFault ReferenceFault(const char* target)
{
    return {QString("%1 is not null and %1 not in (select num from %2 not indexed)").arg("%1", QuotedName(target)),
            QString("sans ligne dans %1").arg(target), true, target};
}

/// Names are compared as a user reads them in a list.
ValueFault RepeatedFault(const char* table)
{
    return {QString("lower(trim(%1)) in (select lower(trim(%1)) from %2 not indexed group by 1 having count(*) > 1)")
                .arg("%1", QuotedName(table)),
            "en double", true};
}

} // namespace

QList<ValueFault> FaultsOf(const FieldRule& rule, const QString& name)
{
    QList<ValueFault> faults = KindFaults(rule);
    if (rule.missing != Missing::Fine)
        faults << MissingFault(rule);
    if (rule.target != nullptr)
        faults << ReferenceFault(rule.target);
    if (rule.uniqueIn != nullptr)
        faults << RepeatedFault(rule.uniqueIn);
    for (ValueFault& fault : faults)
        fault.condition.replace("%1", QuotedName(name));
    return faults;
}

QString DayFault(const FieldRule& rule)
{
    constexpr int digits = 4;
    const QString firstYear = QString::number(FirstYear).rightJustified(digits, '0');
    return QString(rule.kind == DayText ? NoDayText : NoIsoDate)
        .replace("%1", QuotedName(rule.name))
        .replace("%2", firstYear);
}

QString PartOfDay(const FieldRule& rule)
{
    return QString(rule.kind == Month ? "cast(substr(%1, 6, 2) as integer)" : "cast(substr(%1, 1, 4) as integer)")
        .arg(QuotedName(DayField));
}

QString PartFault(const FieldRule& rule)
{
    // The comparison comes first because it is cheap and false for most rows.
    return QString("%1 is not %2 and %3 is not null and date(%3, '+0 days') is %3")
        .arg(QuotedName(rule.name), PartOfDay(rule), QuotedName(DayField));
}

} // namespace practice
