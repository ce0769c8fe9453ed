#include "platform/forms/Controls.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QSvgRenderer>

namespace forms {

namespace {

constexpr int IconSize = 24;
constexpr int Padding = 6;
constexpr int CaptionGap = 6;
constexpr int CaptionMargin = 12; // right of a caption
constexpr double CornerRadius = 4;

} // namespace

Picture::Picture(const QString& name) : drawing(new QSvgRenderer(this))
{
    setObjectName(name);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Picture::SetIcon(const QString& icon)
{
    const QString file = QStringLiteral(":/icons/%1.svg").arg(icon);
    if (!drawing->load(file))
        qFatal("There is no icon %s.", qPrintable(file));
    update();
}

void Picture::SetCaption(const QString& caption)
{
    setText(caption);
    updateGeometry();
    update();
}

void Picture::SetAction(const QString& action, bool withToolTip)
{
    setAccessibleName(action.trimmed());
    setToolTip(withToolTip ? action.trimmed() : QString());
}

void Picture::SetBorder(bool single)
{
    if (border == single)
        return;
    border = single;
    update();
}

QSize Picture::sizeHint() const
{
    const int side = IconSize + 2 * Padding;
    if (text().isEmpty())
        return {side, side};
    const int caption = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    return {Padding + IconSize + CaptionGap + caption + CaptionMargin, side};
}

void Picture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    const bool lively = isEnabled() && (border || hasFocus() || isDown());
    if (lively) {
        QColor ground = accent;
        ground.setAlphaF(isDown() ? 0.26F : 0.10F);
        painter.setPen(QPen(accent, hasFocus() ? 2 : 1));
        painter.setBrush(ground);
    } else {
        painter.setPen(text().isEmpty() ? QPen(Qt::NoPen) : QPen(palette().color(QPalette::Mid)));
        painter.setBrush(text().isEmpty() ? QBrush(Qt::NoBrush) : palette().brush(QPalette::Base));
    }
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), CornerRadius, CornerRadius);

    painter.setOpacity(isEnabled() ? 1.0 : 0.32);
    const bool iconOnly = text().isEmpty();
    const double left = iconOnly ? (width() - IconSize) / 2.0 : Padding;
    drawing->render(&painter, QRectF(left, (height() - IconSize) / 2.0, IconSize, IconSize));
    if (iconOnly)
        return;
    painter.setPen(palette().color(QPalette::Active, QPalette::ButtonText));
    painter.drawText(rect().adjusted(Padding + IconSize + CaptionGap, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
}

void Picture::Attract()
{
    if (!isEnabled())
        return;
    attracted = true;
    SetBorder(true);
    Q_EMIT MouseOver();
}

void Picture::Release()
{
    const bool wasAttracted = std::exchange(attracted, false);
    SetBorder(false);
    if (wasAttracted)
        Q_EMIT MouseLeft();
}

void Picture::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    Attract();
}

void Picture::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    if (!hasFocus())
        Release();
}

void Picture::focusInEvent(QFocusEvent* event)
{
    QAbstractButton::focusInEvent(event);
    // A window that opens or comes back to the front has moved nobody's attention to the picture.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        Attract();
}

void Picture::focusOutEvent(QFocusEvent* event)
{
    QAbstractButton::focusOutEvent(event);
    if (!underMouse())
        Release();
    update();
}

void Picture::hideEvent(QHideEvent* event)
{
    QAbstractButton::hideEvent(event);
    Release();
}

void Picture::changeEvent(QEvent* event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        Release();
}

void Picture::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat())
            click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace forms
