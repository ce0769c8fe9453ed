#include "cash/Valuation.h"

#include "core/lists.h"
#include "core/printing.h"
#include "data/PaymentCode.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"

namespace PaymentCode = data::PaymentCode;

namespace cash {

namespace {

basic::Int16 CodePosition(const QString& type)
{
    const QString code = type.trimmed();
    return code.size() == 1 ? 0 : basic::RoundToInt(basic::Val(code.mid(1)) + 1);
}

} // namespace

double TheoreticalValue(const core::TariffRates& rates, int flag_R, int codeIndex, double amount)
{
    const auto rate = [&]() -> int {
        if (codeIndex < 0 || codeIndex >= core::TariffCount)
            throw basic::RuntimeError(basic::Error::IndexOutOfRange);
        return rates[static_cast<std::size_t>(codeIndex)];
    };
    switch (flag_R) {
    case PaymentCode::RMinus:
        return rate() - amount;
    case PaymentCode::P:
        return rate();
    case PaymentCode::RPlus:
        return amount;
    default:
        return 0;
    }
}

double Valuation::ValueOf(const dao::Recordset& act)
{
    const dao::Field type = act["Type"];
    if (!type.IsNull())
        codeIndex = CodePosition(type.Text());
    return TheoreticalValue(rates, act["flag_R"].Long(), codeIndex, act["montant"].Double());
}

QList<ValuedAct> ValueActs(dao::Recordset acts, const core::TariffRates& rates)
{
    Valuation valuation(rates);
    QList<ValuedAct> valued;
    for (; !acts.IsEOF(); acts.MoveNext())
        valued.push_back({acts["num"].Key(), valuation.ValueOf(acts)});
    return valued;
}

QList<ValuedAct> ValueActs(const dao::KeyList& keys, dao::Recordset acts, const core::TariffRates& rates)
{
    Valuation valuation(rates);
    QList<ValuedAct> valued;
    valued.reserve(keys.size());
    for (const dao::Key key : keys)
        valued.push_back({key, core::FindKey(acts, key) ? valuation.ValueOf(acts) : 0});
    return valued;
}

void AddRows(core::ScratchRows& rows, const QList<ValuedAct>& acts)
{
    for (const auto& [act, value] : acts)
        rows.Add({{"num", act}, {"Mt", value}});
}

} // namespace cash
