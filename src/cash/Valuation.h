#pragma once

#include "core/tariffs.h"
#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"

namespace core {
class ScratchRows;
}

namespace cash {

/// What an act is worth in dinars, by its payment state: a settled act its rate, an underpaid one what is still due of
/// it, an overpaid one what was received, all others nothing. `codeIndex` is the position of the code's rate. Raises 9
/// for a position outside the table of rates.
double TheoreticalValue(const core::TariffRates& rates, int flag_R, int codeIndex, double amount);

/// Values one act after the other. An act without a code has the code of the act before it, the first one "C".
class Valuation {
public:
    explicit Valuation(const core::TariffRates& referenceRates = {}) : rates(referenceRates) {}

    /// The value in dinars of the record set's current act. Raises 94 for a Null payment state or amount, 6 for a code
    /// whose position is outside 16 bits, and what TheoreticalValue raises.
    double ValueOf(const dao::Recordset& act);
    /// The position of the code that the last act was valued by: 0 for every single character as for "C", n + 1 for
    /// "K" and the number n, 1 for what has no number there.
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
/// The acts with these keys, in list order, as `acts` has them now. One that is gone has no value.
QList<ValuedAct> ValueActs(const dao::KeyList& keys, dao::Recordset acts, const core::TariffRates& rates);

/// Rows that hold an act's key and its value.
void AddRows(core::ScratchRows& rows, const QList<ValuedAct>& acts);

} // namespace cash
