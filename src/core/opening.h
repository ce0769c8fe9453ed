#pragma once

#include "platform/basic/RuntimeError.h"

#include <QString>

namespace core {

/// Makes TheWorkspace for the practice in DataFolder. Raises 3028 and 3029 for a workgroup file that can't serve.
void CreateTheWorkspace();

/// Opens the database and the four tables that stay open for the run. May run again while they are open: the handles
/// are replaced. An error shows its number and description and ends the program; instead of a damaged database the
/// newest whole copy is offered before.
void OpenDataFiles();

/// Adds the field `Mt2` to `Prov` when it has fewer than 6 fields. An error is shown and isn't fatal in itself; that
/// the practice is read-only is left to the opening to say.
void UpgradeProvTable();

/// Closes tables, database and workspace; what is closed already stays so.
void CloseDataFiles();

/// "Erreur N° 76", a line feed and the description: how the error traps show an error.
QString ErrorText(const basic::RuntimeError& error);

} // namespace core
