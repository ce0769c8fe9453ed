#pragma once

#include "data/Practice.h"
#include "practice/commands/Arguments.h"

namespace practice {

/// The values of the options "code", "letterhead" and "language" that are given. Raises Misuse for an invalid one.
data::PracticeChange SettingsFrom(const Arguments& arguments);

} // namespace practice
