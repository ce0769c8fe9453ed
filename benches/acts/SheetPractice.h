#pragma once

#include "support/Floor.h"
#include "support/OpenPractice.h"

#include <QString>
#include <QTemporaryDir>
#include <optional>

namespace bench {

inline constexpr int Services = 12;
inline constexpr int ActsOfYearDay = 260;             ///< 8 services with 22 acts each, 4 with 21
inline constexpr int KeptOfYearDay = 92;              ///< of these, when one act in three is kept
inline constexpr int YearDays = 250;                  ///< from 01/01/2007 on
inline constexpr const char* SheetDay = "17/06/2008"; ///< 250 acts
inline constexpr const char* FullDay = "18/06/2008";  ///< 5000 acts

/// A practice with this many acts in its own folder, opened as by the program.
class SheetPractice {
public:
    explicit SheetPractice(int acts);

    /// A copy of the filled database, for the plain statements.
    QString PlainFile() const;

private:
    static void Fill(PlainDatabase& database, int acts);

    QTemporaryDir folder;
    std::optional<OpenPractice> practice;
};

} // namespace bench
