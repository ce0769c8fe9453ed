#pragma once

#include "platform/pages/Template.h"

class QDir;

namespace pages {

/// Reads the picture of a logo from the template's folder; one that is missing, isn't PNG or JPEG or is too large is a
/// fault with the logo's line.
void ReadLogoFile(const QDir& folder, Logo& logo, QList<Fault>& faults);

} // namespace pages
