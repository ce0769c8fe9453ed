#pragma once

#include "support/Floor.h"
#include "support/OpenPractice.h"

#include <QString>
#include <QTemporaryDir>
#include <optional>

namespace bench {

inline constexpr int Services = 12;
inline constexpr int ActsOfYearDay = 260;             ///< 8 services with 22 acts, 4 with 21
inline constexpr int KeptOfYearDay = 92;              ///< of these, with one act in three
inline constexpr int YearDays = 250;                  ///< from 01/01/2007 on
inline constexpr const char* SheetDay = "17/06/2008"; ///< 250 acts
inline constexpr const char* FullDay = "18/06/2008";  ///< 5000 acts

/// A practice with that many acts in a folder of its own, open as the program opens it.
class SheetPractice {
public:
    explicit SheetPractice(int acts);

    /// A copy of the database as it was filled, for the plain statements.
    QString PlainFile() const;

private:
    static void Fill(PlainDatabase& database, int acts);

    QTemporaryDir folder;
    std::optional<OpenPractice> practice;
};

} // namespace bench
