#pragma once

#include "platform/dao/Recordset.h"

/// The net result of a period, as "Résultat" shows it: other screens must come to the same figures.
namespace core {

/// The current charges per day in dinars; 0 if none were entered.
double ReadDayCharge();

/// Opens the number (S1) and the sum (S2) of a service's acts between two days, both included, as mm/dd/yyyy. The sum
/// of no amounts is Null.
dao::Recordset SumActs(const QString& firstUS, const QString& lastUS, dao::Key service);

/// An amount as shown in totals and results.
QString ShownAmount(double dinars);
/// Receipts and charges are shown if above 0; empty otherwise.
QString ShownIfAny(double dinars);

/// The difference of the two figures shown, already rounded.
double NetOf(const QString& shownReceipts, const QString& shownCharges);

} // namespace core
