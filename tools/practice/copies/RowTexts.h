#pragma once

#include "platform/dao/DatabaseReader.h"
#include "platform/dao/StoredValue.h"

#include <QDate>
#include <QString>

namespace practice {

/// How the values of a practice read in what the command prints: as on the screens.

/// "12 345.00"
QString AmountText(double dinars);
/// "lundi 23/11/2026"
QString DayText(const QDate& day);
/// What users call a field ("règlement" for `flag_R`); its own name where they have no other word.
QString FieldTitle(const QString& field);
/// A stored value of the field: amounts to the cent, dates as dd/mm/yyyy, payment codes as they are shown; "vide" for
/// Null.
QString FieldText(const QString& field, const dao::Value& value);

/// "n° 412 du 23/11/2026 (SAÏDI Fatima)": the act with the highest key; "aucun".
QString LastActText(const dao::DatabaseReader& reader);

} // namespace practice
