#pragma once

#include "platform/pages/Content.h"

namespace pages {

/// All errors of a template file, including those of its select against the source's database.
QList<Fault> CheckTemplate(const QString& file, const Source& source);

/// A fault as shown to the user: "ZEP_R1.RPT, ligne 3 : table inconnue « Rien »".
QString FaultText(const QString& file, const Fault& fault);

} // namespace pages
