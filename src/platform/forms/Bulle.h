#pragma once

#include "platform/forms/Controls.h"

#include <QPointer>
#include <functional>

namespace forms {

/// The tooltip label of a screen: shows a picture's action and its keys next to it while the picture is hovered or
/// focused.
///
/// One for each screen with hover captions. Its text is the action without the keys.
class Bulle : public Label {
    Q_OBJECT
public:
    explicit Bulle(const QString& name = QStringLiteral("Bulle"));

    /// Shows `caption` (evaluated each time, since it depends on the language) while the picture is hovered or focused,
    /// and draws the picture's border. The caption is also the picture's accessible name.
    void Attach(Picture& picture, std::function<QString()> caption);
    /// The same with the picture's current action.
    void Attach(Picture& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void ShowFor(Picture& picture, const QString& caption);
    void FollowPicture();
    QString Keys() const;

    QPointer<Picture> target;
};

} // namespace forms
