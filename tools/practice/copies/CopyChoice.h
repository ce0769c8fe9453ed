#pragma once

#include "archives/Archives.h"

#include <QDate>
#include <QString>
#include <optional>

namespace practice {

/// Finds a copy by a path, the name of a file in "ARCHIVES" or a day (2026-11-23 or 23/11/2026). An empty name means
/// the newest whole one, with `before` the newest of an earlier day. Raises 53 if there is none, and the errors of
/// archives::RequireUsable.
archives::ArchivedCopy ChosenCopy(const QString& folder, const QString& name, const std::optional<QDate>& before = {});

/// "modifiée depuis sa clôture" as a sentence with a line feed; empty for a copy that is whole.
QString WarningOf(const archives::ArchivedCopy& copy);

/// Raises 76 if the folder doesn't exist, 53 if it contains no practice.
void RequirePractice(const QString& folder);

} // namespace practice
