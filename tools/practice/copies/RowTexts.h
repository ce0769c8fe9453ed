#pragma once

#include "platform/store/DatabaseReader.h"
#include "platform/store/StoredValue.h"

#include <QDate>
#include <QString>

namespace practice {

// Values as the command prints them, in the form of the screens.

/// "12 345.00"
QString AmountText(double dinars);
/// "lundi 23/11/2026"
QString DayText(const QDate& day);
/// The users' word for a field ("règlement" for `flag_R`), or its name if there is none.
QString FieldTitle(const QString& field);
/// A stored value: amounts with two decimals, dates as dd/mm/yyyy, payment codes as on the screens, "vide" for Null.
QString FieldText(const QString& field, const store::Value& value);

/// The act with the highest key: "n° 412 du 23/11/2026 (SAÏDI Fatima)", or "aucun".
QString LastActText(const store::DatabaseReader& reader);

} // namespace practice
