#pragma once

#include "core/MenuTable.h"

/// The screens behind the menu entries; also links those that open each other. The one place that knows every screen.
core::ScreenOpeners MenuScreens();
