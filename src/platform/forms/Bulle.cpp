#include "platform/forms/Bulle.h"

#include "platform/forms/Colours.h"
#include "platform/forms/Guard.h"

#include <QEvent>
#include <QPainter>

namespace forms {

namespace {

constexpr int Distance = 4; // pixels between picture and bubble
constexpr int KeysGap = 10;
constexpr int SideMargin = 8;
constexpr int TopMargin = 4;

} // namespace

Bulle::Bulle(const QString& name) : Label(name)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void Bulle::Attach(Picture& picture, std::function<QString()> caption)
{
    picture.LeaveToolTipToBulle();
    picture.SetAction(caption());
    On(picture, &Picture::MouseOver, *this,
       [this, &picture, caption = std::move(caption)] { ShowFor(picture, caption()); });
    On(picture, &Picture::MouseLeft, *this, [this, &picture] {
        if (target == &picture) // the bubble may have moved to another picture
            hide();
    });
}

void Bulle::Attach(Picture& picture)
{
    Attach(picture, [action = picture.Action()] { return action; });
}

void Bulle::ShowFor(Picture& picture, const QString& caption)
{
    target = &picture;
    picture.SetAction(caption);
    QWidget* screen = picture.window();
    if (parentWidget() != screen) {
        if (parentWidget() != nullptr)
            parentWidget()->removeEventFilter(this);
        setParent(screen);
        screen->installEventFilter(this);
    }
    setText(caption);
    FollowPicture();
    show();
    raise();
}

void Bulle::FollowPicture()
{
    ensurePolished();
    const int keysWidth = Keys().isEmpty() ? 0 : KeysGap + fontMetrics().horizontalAdvance(Keys());
    resize(2 * SideMargin + fontMetrics().horizontalAdvance(text().trimmed()) + keysWidth,
           fontMetrics().height() + 2 * TopMargin);
    const QWidget* screen = parentWidget();
    const QRect area(target->mapTo(screen, QPoint()), target->size());
    const int below = area.bottom() + Distance;
    const bool fitsBelow = below + height() <= screen->height();
    move(qBound(0, area.center().x() - width() / 2, qMax(0, screen->width() - width())),
         fitsBelow ? below : qMax(0, area.top() - Distance - height()));
}

QString Bulle::Keys() const
{
    return target ? target->KeyTexts() : QString();
}

bool Bulle::eventFilter(QObject* watched, QEvent* event)
{
    const bool moves = event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest;
    if (moves && isVisible() && target) // after the layout has been updated
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (target)
                    FollowPicture();
            },
            Qt::QueuedConnection);
    return Label::eventFilter(watched, event);
}

void Bulle::paintEvent(QPaintEvent*)
{
    constexpr double cornerRadius = 3;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(TheColours().tip);
    painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
    painter.setPen(TheColours().onTip);
    const QRect inner = rect().adjusted(SideMargin, 0, -SideMargin, 0);
    painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter, text().trimmed());
    QFont italic = font();
    italic.setItalic(true);
    painter.setFont(italic);
    painter.drawText(inner, Qt::AlignRight | Qt::AlignVCenter, Keys());
}

} // namespace forms
