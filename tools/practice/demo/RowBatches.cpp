#include "practice/demo/RowBatches.h"

namespace practice {

RowBatches::RowBatches(dao::Database target, const QString& table, qint64 expected)
    : database(std::move(target)), progress(QString("Lignes de %1").arg(table), expected)
{
    transaction.emplace(database);
}

void RowBatches::Count()
{
    constexpr int rowsOfTransaction = 10000;
    progress.Advance();
    if (++rows % rowsOfTransaction != 0)
        return;
    transaction->Commit();
    transaction.emplace(database);
}

void RowBatches::Finish()
{
    transaction->Commit();
    transaction.reset();
}

} // namespace practice
