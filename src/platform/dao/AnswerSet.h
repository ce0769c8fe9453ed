#pragma once

#include "platform/dao/RecordsetState.h"

namespace dao {

/// The answer of a select over a count, a sum or several tables: read whole at opening, never written.
class AnswerSet final : public RecordsetState {
public:
    AnswerSet(std::shared_ptr<Connection> opened, Plan& plan, const std::vector<Datum>& literals);

    void MoveFirst() override;
    void MoveNext() override;
    void MoveLast() override;
    bool IsEOF() const override { return place == rows.Count(); }
    int RecordCount() override { return int(reached); }
    /// Takes the form "name = literal" only; any other raises 3075.
    void FindFirst(const QString& criteria) override;
    Seen ValueAt(int column) override;

private:
    void GoTo(std::size_t row);

    RowStore rows;
    std::size_t place = 0;
    std::size_t reached = 0;
};

} // namespace dao
