#pragma once

class QWidget;

namespace forms {

/// Hides a visible control from assistive software because another one has the same content.
void HideFromReaders(QWidget& control);

} // namespace forms
