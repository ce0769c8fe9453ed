#pragma once

#include "platform/forms/Controls.h"

#include <QPointer>
#include <functional>

namespace forms {

/// The tooltip label of a screen: shows a picture's action beside it, and the keys of its command behind, while the
/// pointer or the keyboard focus is on it.
///
/// Hidden otherwise. Each screen with hover captions has one. Its text is the action alone.
class Bulle : public Label {
    Q_OBJECT
public:
    explicit Bulle(const QString& name = QStringLiteral("Bulle"));

    /// Shows what `caption` gives (asked each time, since it depends on the language) while the picture is hovered or
    /// focused, and gives the picture its border; moving elsewhere takes both away. The picture's accessible name is
    /// the caption.
    void Serve(Picture& picture, std::function<QString()> caption);
    /// The same with the picture's action as it was dressed.
    void Serve(Picture& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void ShowFor(Picture& picture, const QString& caption);
    void FollowPicture();
    QString Keys() const;

    QPointer<Picture> served;
};

} // namespace forms
