#pragma once

#include <QString>

namespace paper {

/// Loads the fonts that were installed with the program, in the folder "fonts" beside it: where the system lacks them,
/// screens and paper are the same all the same. Call it before text is measured.
void LoadOwnFonts(const QString& programFolder);

} // namespace paper
