#include "platform/forms/Controls.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Colours.h"
#include "platform/forms/FittingFont.h"
#include "platform/forms/Layout.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace forms {

namespace {

bool IsEnter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

Label::Label(const QString& name, const QString& caption) : QLabel(caption)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
}

FigureLabel::FigureLabel(const QString& name) : Label(name)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

void FigureLabel::AlignUnderColumns(bool centred)
{
    underColumns = true;
    setAlignment((centred ? Qt::AlignHCenter : Qt::AlignRight) | Qt::AlignVCenter);
}

int FigureLabel::Inset() const
{
    constexpr int besideColumns = 9; // lines up with right-aligned cells and their trailing blank
    return underColumns ? ((alignment() & Qt::AlignHCenter) != 0 ? 2 : besideColumns) : 1;
}

int FigureLabel::NeededWidth() const
{
    ensurePolished();
    return fontMetrics().horizontalAdvance(text().trimmed()) + 2 * Inset();
}

QSize FigureLabel::sizeHint() const
{
    constexpr int usualWidth = 48;
    constexpr int verticalRoom = 10;
    return {qMax(usualWidth, NeededWidth()), fontMetrics().height() + verticalRoom};
}

QSize FigureLabel::minimumSizeHint() const
{
    return underColumns ? QSize(0, sizeHint().height()) : sizeHint();
}

void FigureLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption ground;
    ground.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &ground, &painter, this);
    const QString figure = text().trimmed();
    painter.setFont(FittingFont(font(), figure, width() - 2 * Inset()));
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect().adjusted(Inset(), 0, -Inset(), 0), static_cast<int>(alignment()) | Qt::TextSingleLine,
                     figure);
}

Button::Button(const QString& name, const QString& caption) : QPushButton(caption)
{
    setObjectName(name);
    setAutoDefault(false);
}

void Button::keyPressEvent(QKeyEvent* event)
{
    if (!IsEnter(*event))
        QPushButton::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        click();
}

OptionButton::OptionButton(const QString& name, const QString& caption) : QRadioButton(caption)
{
    setObjectName(name);
    connect(this, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            Q_EMIT Chosen();
    });
    connect(this, &QRadioButton::pressed, this, [this] {
        if (isChecked())
            Q_EMIT Chosen();
    });
}

void OptionButton::keyPressEvent(QKeyEvent* event)
{
    if (!IsEnter(*event))
        QRadioButton::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        Q_EMIT Entered();
}

Panel::Panel(const QString& name, const QString& caption)
    : arrangement(new QVBoxLayout(this)), captionLabel(new QLabel(this))
{
    setObjectName(name);
    arrangement->setContentsMargins(0, 8, 0, 8);
    arrangement->setSpacing(8);
    captionLabel->setTextFormat(Qt::PlainText);
    captionLabel->setProperty("role", QStringLiteral("title"));
    arrangement->addWidget(captionLabel);
    SetCaption(caption);
}

Panel::~Panel()
{
    ReleaseControls(*this);
}

void Panel::SetContents(std::unique_ptr<QLayout> contents)
{
    setProperty("framed", true);
    captionLabel->setProperty("role", QStringLiteral("caption"));
    arrangement->setContentsMargins(8, 8, 8, 8);
    arrangement->addLayout(contents.release(), 1);
}

QString Panel::Caption() const
{
    return captionLabel->text();
}

void Panel::SetCaption(const QString& caption)
{
    captionLabel->setText(caption);
    captionLabel->setVisible(!caption.trimmed().isEmpty());
    setAccessibleName(caption.trimmed());
}

void ComboBox::paintEvent(QPaintEvent* event)
{
    QComboBox::paintEvent(event);
    constexpr double half = 4;
    constexpr double fromRight = 12;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(isEnabled() ? TheColours().text : TheColours().disabled, 1.6, Qt::SolidLine, Qt::RoundCap));
    const QPointF tip(width() - fromRight, height() / 2.0 + half / 2);
    painter.drawLine(tip, tip + QPointF(-half, -half));
    painter.drawLine(tip, tip + QPointF(half, -half));
}

ComboBox::ComboBox(const QString& name)
{
    setObjectName(name);
    setItemDelegate(new QStyledItemDelegate(this)); // required for the style sheet's line height
    setPlaceholderText(QStringLiteral(" "));        // otherwise Qt selects the first line added
}

void ComboBox::SetListIndex(int line)
{
    if (line < -1 || line >= count())
        throw basic::RuntimeError(basic::Error::InvalidProperty);
    setCurrentIndex(line);
}

void ComboBox::keyPressEvent(QKeyEvent* event)
{
    QComboBox::keyPressEvent(event); // ignores Enter
    if (IsEnter(*event) && !event->isAutoRepeat())
        Q_EMIT Entered();
}

void ComboBox::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

TabStrip::TabStrip(const QString& name)
{
    setObjectName(name);
    setAccessibleName("Onglets");
}

TabStrip::~TabStrip()
{
    ReleaseControls(*this);
}

} // namespace forms
