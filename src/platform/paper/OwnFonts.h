#pragma once

#include <QString>

namespace paper {

/// Loads the fonts that were installed with the program, in the folder "fonts" beside it, so that screens and paper
/// look the same where the system lacks them. Call it before text is measured.
void LoadOwnFonts(const QString& programFolder);

} // namespace paper
