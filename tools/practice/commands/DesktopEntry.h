#pragma once

#include "practice/commands/MenuEntry.h"

#include <QByteArray>

namespace practice {

/// The text of the entry's .desktop file, with all special characters escaped. Raises 5, with a description for the
/// user, if a path has a control character that can't be escaped.
QByteArray DesktopEntryText(const MenuEntry& entry);

} // namespace practice
