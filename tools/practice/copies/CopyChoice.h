#pragma once

#include "data/Archives.h"

#include <QDate>
#include <QString>
#include <optional>

namespace practice {

/// The copy that a user names: a path, the name of a file in "ARCHIVES", or a day (2026-11-23 or 23/11/2026). Without a
/// name the newest one; with `before`, of an earlier day. It is whole: raises what data::RequireWhole does, and 53 if
/// there is none.
data::ArchivedCopy ChosenCopy(const QString& folder, const QString& name, const std::optional<QDate>& before = {});

/// Raises 76 unless the folder is there and 53 unless it holds a practice.
void RequirePractice(const QString& folder);

} // namespace practice
