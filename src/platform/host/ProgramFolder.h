#pragma once

#include <QString>

namespace host {

/// The folder of the files that come with the program: share/zep-lumo of the place where it is installed, otherwise the
/// folder that the program itself is in, as after a build.
QString ProgramFolder();

/// Sets the folder for tests and for the tour; an empty one gives the real one again.
void FixProgramFolder(const QString& folder);

} // namespace host
