#pragma once

class QWidget;

namespace forms {

/// Keeps a visible control from assistive software, where another one in the same place says the same.
void HideFromReaders(QWidget& control);

} // namespace forms
