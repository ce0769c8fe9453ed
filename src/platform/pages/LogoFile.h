#pragma once

#include "platform/pages/Template.h"

class QDir;

namespace pages {

/// Reads the picture of a logo from the template's folder. A file that is missing, too large or neither PNG nor JPEG is
/// a fault in the logo's line.
void ReadLogoFile(const QDir& folder, Logo& logo, QList<Fault>& faults);

} // namespace pages
