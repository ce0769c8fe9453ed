#include "platform/store/DamageCheck.h"

#include "platform/store/Errors.h"

#include <array>

namespace store {
namespace {

/// Number of rows, sum of the amounts, and sum of the amounts times their dates: an amount under a wrong day shows.
/// Whole hundredths don't depend on the order.
std::array<qint64, 3> SumsOf(sqlite3* database, const SummedIndex& summed, const QString& source)
{
    const QString cents = QString("cast(round(%1 * 100) as integer)").arg(summed.amount);
    const QString day = QString("cast(replace(%1, '-', '') as integer)").arg(summed.date);
    Statement sums(database, QString("select count(*), sum(%1), sum(%1 * %2) from %3 %4")
                                 .arg(cents, day, summed.table, source)
                                 .toStdString());
    sums.Step();
    return {sums.WholeAt(0), sums.WholeAt(1), sums.WholeAt(2)};
}

/// A summed index that disagrees with its table. Empty when there is none.
QString DisagreeingIndex(sqlite3* database, const QList<SummedIndex>& indexes)
{
    for (const SummedIndex& summed : indexes)
        if (SumsOf(database, summed, "not indexed") != SumsOf(database, summed, "indexed by " + summed.index))
            return "index " + summed.index;
    return {};
}

} // namespace

QString FirstDamage(sqlite3* database, Thoroughness thoroughness, const QList<SummedIndex>& summed)
{
    try {
        const std::string answer = TextAnswer(
            database, thoroughness == Thoroughness::Indexes ? "pragma integrity_check(1)" : "pragma quick_check(1)");
        if (answer != "ok")
            return QString::fromStdString(answer);
        return thoroughness == Thoroughness::Sums ? DisagreeingIndex(database, summed) : QString();
    } catch (const RuntimeError& error) {
        if (error.Code() == Error::DamagedDatabase || error.Code() == Error::UnrecognizedFormat)
            return error.Description();
        throw;
    }
}

} // namespace store
