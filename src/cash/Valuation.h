#pragma once

#include "core/tariffs.h"
#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"

namespace core {
class ScratchRows;
}

namespace cash {

/// The value of an act in dinars by payment state: the rate if settled, the amount still due if underpaid, the amount
/// received if overpaid, otherwise 0. `codeIndex` is the position of the code's rate. Raises 9 for a position outside
/// the table of rates.
double TheoreticalValue(const core::TariffRates& rates, int flag_R, int codeIndex, double amount);

/// Values acts in sequence. An act without a code takes the code of the previous act, initially "C".
class Valuation {
public:
    explicit Valuation(const core::TariffRates& referenceRates = {}) : rates(referenceRates) {}

    /// The value in dinars of the record set's current act. Raises 94 for a Null payment state or amount, 6 for a code
    /// whose position exceeds 16 bits, and the errors of TheoreticalValue.
    double ValueOf(const dao::Recordset& act);
    /// The code position used for the last act: 0 for any single character, as for "C"; n + 1 for "K" and a number n; 1
    /// if no number follows.
    int CodeIndex() const { return codeIndex; }

private:
    core::TariffRates rates;
    basic::Int16 codeIndex;
};

struct ValuedAct {
    dao::Key act;
    double value; ///< dinars
};

/// All acts of a set, in its order.
QList<ValuedAct> ValueActs(dao::Recordset acts, const core::TariffRates& rates);
/// The acts with these keys, in list order, as stored now. A deleted act has no value.
QList<ValuedAct> ValueActs(const dao::KeyList& keys, dao::Recordset acts, const core::TariffRates& rates);

/// Rows of act key and value.
void AddRows(core::ScratchRows& rows, const QList<ValuedAct>& acts);

} // namespace cash
