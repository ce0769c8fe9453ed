#include "platform/forms/Colours.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Icons.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

namespace forms {

namespace {

constexpr int IconSize = 24;
constexpr int Padding = 6;
constexpr int CaptionGap = 6;
constexpr int CaptionMargin = 12; // right of a caption
constexpr double CornerRadius = 4;

} // namespace

Picture::Picture(const QString& name)
{
    setObjectName(name);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Picture::SetIcon(const QString& icon)
{
    iconName = icon;
    LoadDrawing();
    update();
}

void Picture::SetNote(const QString& line)
{
    note = line;
    updateGeometry();
    update();
}

void Picture::LoadDrawing()
{
    drawnGeneration = ColourGeneration();
    if (!iconName.isEmpty())
        drawing = DrawingOf(iconName);
}

void Picture::SetCaption(const QString& caption)
{
    setText(caption);
    updateGeometry();
    update();
}

void Picture::SetAction(const QString& words)
{
    action = words;
    setAccessibleName(action.trimmed());
    DescribeAction();
}

void Picture::SetCommands(const QList<Command>& newCommands)
{
    commands = newCommands;
    DescribeAction();
}

QString Picture::KeyTexts() const
{
    QStringList texts;
    for (const Command command : commands)
        texts << KeyTextOf(command);
    return texts.join(", ");
}

void Picture::LeaveToolTipToBulle()
{
    hasToolTip = false;
    DescribeAction();
}

void Picture::DescribeAction()
{
    const QString keys = KeyTexts();
    setAccessibleDescription(keys);
    setToolTip(!hasToolTip      ? QString()
               : keys.isEmpty() ? accessibleName()
                                : QStringLiteral("%1 (%2)").arg(accessibleName(), keys));
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
    const QSize caption = fontMetrics().size(Qt::TextShowMnemonic, text());
    const QSize below = note.isEmpty() ? QSize(0, 0) : fontMetrics().size(0, note);
    return {Padding + IconSize + CaptionGap + std::max(caption.width(), below.width()) + CaptionMargin,
            std::max(side, caption.height() + below.height() + 2 * Padding)};
}

void Picture::PaintBackground(QPainter& painter) const
{
    const Colours& colours = TheColours();
    const bool isLively = isEnabled() && (border || hasFocus() || isDown());
    const bool hasCaption = !text().isEmpty();
    if (isLively) {
        painter.setPen(QPen(colours.accent, hasFocus() ? 2 : 1));
        painter.setBrush(isDown() ? colours.selection : colours.hover);
    } else {
        painter.setPen(hasCaption ? QPen(colours.fieldBorder) : QPen(Qt::NoPen));
        painter.setBrush(hasCaption ? QBrush(colours.field) : QBrush(Qt::NoBrush));
    }
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), CornerRadius, CornerRadius);
}

void Picture::paintEvent(QPaintEvent*)
{
    if (drawnGeneration != ColourGeneration())
        LoadDrawing();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintBackground(painter);

    constexpr double fadedOpacity = 0.4;
    painter.setOpacity(isEnabled() ? 1.0 : fadedOpacity);
    const bool iconOnly = text().isEmpty();
    const double left = iconOnly ? (width() - IconSize) / 2.0 : Padding;
    if (!iconName.isEmpty())
        drawing.Paint(painter, QRectF(left, (height() - IconSize) / 2.0, IconSize, IconSize));
    if (iconOnly)
        return;
    painter.setOpacity(1);
    const QRect caption = rect().adjusted(Padding + IconSize + CaptionGap, Padding, 0, -Padding);
    painter.setPen(isEnabled() ? TheColours().text : TheColours().disabled);
    const Qt::Alignment place = Qt::AlignLeft | (note.isEmpty() ? Qt::AlignVCenter : Qt::AlignTop);
    painter.drawText(caption, static_cast<int>(place.toInt() | Qt::TextShowMnemonic), text());
    painter.setPen(isEnabled() ? TheColours().quiet : TheColours().disabled);
    painter.drawText(caption, Qt::AlignLeft | Qt::AlignBottom, note);
}

void Picture::Highlight()
{
    if (!isEnabled())
        return;
    highlighted = true;
    SetBorder(true);
    Q_EMIT MouseOver();
}

void Picture::Release()
{
    const bool wasHighlighted = std::exchange(highlighted, false);
    SetBorder(false);
    if (wasHighlighted)
        Q_EMIT MouseLeft();
}

void Picture::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    Highlight();
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
    // Ignore focus that comes from the window being opened or activated.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        Highlight();
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

void Dress(Picture& picture, const char* icon, const QString& action, const QList<Command>& commands)
{
    picture.SetIcon(QLatin1String(icon));
    picture.SetAction(action);
    picture.SetCommands(commands);
}

void Dress(Picture& picture, const char* icon, const QString& action, Command command)
{
    Dress(picture, icon, action, QList{command});
}

} // namespace forms
