#pragma once

#include "core/MenuTable.h"

/// The screens behind the menu entries. The one place that knows every screen.
core::ScreenOpeners MenuScreens();
