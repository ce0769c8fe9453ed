#pragma once

#include "platform/dao/Recordset.h"

/// Cell texts of a patient's fields, for the lists of patients.
namespace acts {

/// A blank and the text; empty for Null.
QString AfterBlank(const dao::Field& field);

/// "M" for 0, "F" for any other value.
QString SexLetter(const dao::Field& sex);

} // namespace acts
