#pragma once

#include "platform/pages/Content.h"

namespace pages {

/// All mistakes of a template file: its own, and those of its select over the tables of the source's database.
QList<Fault> CheckTemplate(const QString& file, const Source& source);

/// A fault as a user reads it: "ZEP_R1.RPT, ligne 3 : table inconnue « Rien »".
QString FaultText(const QString& file, const Fault& fault);

} // namespace pages
