#pragma once

#include "platform/dao/Recordset.h"

/// How lists of patients write what a patient's row holds.
namespace acts {

/// The text after a blank; nothing for Null.
QString AfterBlank(const dao::Field& field);

/// "M" for 0, "F" for any other value.
QString SexLetter(const dao::Field& sex);

/// Whether the patient is archived; any other value than 1 is récent.
bool IsArchivedPatient(const dao::Field& standing);

} // namespace acts
