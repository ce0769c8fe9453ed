#pragma once

#include "JournalPractice.h"
#include "support/Floor.h"

#include <array>
#include <vector>

namespace bench {

/// The content of the journal, read by plain prepared statements and kept as plain rows of texts.
class PlainJournal {
public:
    explicit PlainJournal(PlainDatabase& practice);

    void Read(const Period& period);
    int Acts() const { return acts; }
    int ListedActs() const { return static_cast<int>(rows.size()); }
    const std::vector<int>& ListedKeys() const { return keys; }
    QString TheoreticalTotal() const;

    /// The listed acts and their values into Prov, one prepared insert for each.
    void FillProv();

private:
    using Row = std::array<QString, 10>;

    void ListService(qint64 service, const QString& name);
    double ValueOf(const QString& code, qint64 state, double amount) const;

    PlainDatabase& database;
    PlainStatement services, totals, list, patient, act;
    std::array<double, 32> rates{};
    std::vector<Row> rows;
    std::vector<int> keys;
    int acts = 0;
    double theoretical = 0;
};

} // namespace bench
