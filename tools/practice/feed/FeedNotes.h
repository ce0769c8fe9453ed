#pragma once

#include "platform/dao/DirectStatements.h"

#include <QDate>
#include <QString>
#include <string>
#include <vector>

namespace practice {

/// An act that the report names.
struct NamedAct {
    qint64 key = 0;
    QDate day;
    QString patient;
};

/// The acts of a select, which gives the key, the day, and the key of the patient as n, d and p, and has the further
/// columns that `take` reads. Names are those that the patients have after the feed: `fedPatients` is the temporary
/// table of the source's, empty if it has none.
void NameActs(const dao::DirectStatements& direct, const std::string& select, const std::string& fedPatients,
              const std::function<void(const NamedAct& act, const store::Statement& row)>& take);

/// The first of the further columns.
inline constexpr int FirstFurtherColumn = 6;

/// What the feed keeps, as statements name it.
std::string KeptSettlementsTable();
std::string OpenDeletionsTable();

} // namespace practice
