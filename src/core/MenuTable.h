#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace core {

/// One entry of the main menu: its position, when it is visible, what is checked before its screen opens.
struct MenuEntry {
    const char* control;
    const char* caption; ///< "-" is a separator
    const char* parent;  ///< control of the submenu that holds it; empty for the menu bar
    bool isSubmenu;
    bool shownBeforeOpening;
    bool shownAfterOpening;
    const char* check = ""; ///< a select; if it returns no row, the message is shown instead of the screen
    const char* messageOnEmpty = "";
    const char* title = "";
};

/// The whole menu, in its order.
const std::vector<MenuEntry>& MenuTable();

/// Opens the screen behind a menu entry, by the entry's control. An entry without a screen is disabled.
using ScreenOpeners = std::map<std::string, std::function<void()>, std::less<>>;

} // namespace core
