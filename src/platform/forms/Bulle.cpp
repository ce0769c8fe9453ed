#include "platform/forms/Bulle.h"

#include "platform/forms/Guard.h"

namespace forms {

namespace {
constexpr int Distance = 4; // between the picture and the bubble
}

Bulle::Bulle() : Label(QStringLiteral("Bulle"))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setAlignment(Qt::AlignCenter);
    hide();
}

void Bulle::Serve(Picture& picture, std::function<QString()> caption)
{
    picture.SetAction(caption(), false);
    On(picture, &Picture::MouseOver, *this,
       [this, &picture, caption = std::move(caption)] { ShowFor(picture, caption()); });
    On(picture, &Picture::MouseLeft, *this, [this, &picture] {
        if (served == &picture) // another picture may have taken the bubble since
            hide();
    });
}

void Bulle::ShowFor(Picture& picture, const QString& caption)
{
    served = &picture;
    picture.SetAction(caption, false);
    QWidget* screen = picture.window();
    if (parentWidget() != screen)
        setParent(screen);
    setText(caption);
    ensurePolished();
    adjustSize();

    const QRect area(picture.mapTo(screen, QPoint()), picture.size());
    const int left = area.center().x() - width() / 2;
    const int below = area.bottom() + Distance;
    const bool fitsBelow = below + height() <= screen->height();
    move(qBound(0, left, qMax(0, screen->width() - width())),
         fitsBelow ? below : qMax(0, area.top() - Distance - height()));
    show();
    raise();
}

} // namespace forms
