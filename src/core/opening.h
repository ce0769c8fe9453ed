#pragma once

#include "platform/basic/RuntimeError.h"

#include <QString>

namespace core {

/// Creates TheWorkspace for the practice in DataFolder. Raises 3028 or 3029 for an unusable workgroup file.
void CreateTheWorkspace();

/// Opens the database and the four tables that stay open for the run, replacing handles that are open already. An error
/// is shown with number and description and ends the program; for a damaged database the newest intact copy is offered
/// first.
void OpenDataFiles();

/// Adds the field `Mt2` to `Prov` if it has fewer than 6 fields. An error is shown but isn't fatal; a read-only
/// practice is reported by OpenDataFiles alone.
void UpgradeProvTable();

/// Closes tables, database and workspace, if open.
void CloseDataFiles();

/// "Erreur N° 76", a line feed and the description, as error messages show it.
QString ErrorText(const basic::RuntimeError& error);

} // namespace core
