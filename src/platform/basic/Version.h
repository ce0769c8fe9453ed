#pragma once

#include <QString>

namespace basic {

/// The version of the program and its command: "1.0.0".
QString Version();

} // namespace basic
