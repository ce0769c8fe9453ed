#pragma once

#include "platform/forms/Grid.h"
#include "support/Printing.h"

#include <QAbstractButton>
#include <QString>

/// User actions on controls. Each fails the test when the user couldn't do it because the control is hidden or
/// disabled.

/// Gives the control the keyboard focus and types the text, key by key.
void Type(QWidget& control, const QString& text);

/// Gives the control the keyboard focus and types one key.
void Press(QWidget& control, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// Clicks with the mouse.
void Click(QAbstractButton& button);
void Click(forms::Grid& grid, int row, int column = 0);
void DoubleClick(forms::Grid& grid, int row, int column = 0);

namespace support {
/// Delivers posted and pending events.
void ProcessEvents();
} // namespace support
