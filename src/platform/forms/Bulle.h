#pragma once

#include "platform/forms/Controls.h"

#include <functional>

namespace forms {

/// The tooltip label of a screen: shows a picture's action beside it while the pointer or the keyboard focus is on it.
///
/// Hidden otherwise. One stands on each screen that has hover captions, named "Bulle".
class Bulle : public Label {
    Q_OBJECT
public:
    Bulle();

    /// Shows what `caption` gives (asked each time, since it depends on the language) while the picture is hovered or
    /// focused, and gives the picture its border; moving elsewhere takes both away. The picture's accessible name is
    /// the caption.
    void Serve(Picture& picture, std::function<QString()> caption);

private:
    void ShowFor(Picture& picture, const QString& caption);

    const Picture* served = nullptr;
};

} // namespace forms
