#include "practice/demo/RowBatches.h"

namespace practice {

RowBatches::RowBatches(dao::Database target) : database(std::move(target))
{
    transaction.emplace(database);
}

void RowBatches::Count()
{
    constexpr int rowsOfTransaction = 10000;
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
