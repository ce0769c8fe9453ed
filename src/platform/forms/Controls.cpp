#include "platform/forms/Controls.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Layout.h"

#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace forms {

Label::Label(const QString& name, const QString& caption) : QLabel(caption)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
}

FigureLabel::FigureLabel(const QString& name) : Label(name)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setMinimumWidth(112);
}

Button::Button(const QString& name, const QString& caption) : QPushButton(caption)
{
    setObjectName(name);
    setAutoDefault(false);
}

void Button::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat())
            click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

OptionButton::OptionButton(const QString& name, const QString& caption) : QRadioButton(caption)
{
    setObjectName(name);
}

Panel::Panel(const QString& name, const QString& caption)
{
    setObjectName(name);
    auto* arrangement = new QVBoxLayout(this);
    arrangement->setContentsMargins(8, 8, 8, 8);
    arrangement->setSpacing(8);
    captionLabel = new QLabel(this);
    captionLabel->setTextFormat(Qt::PlainText);
    captionLabel->setProperty("role", QStringLiteral("caption"));
    arrangement->addWidget(captionLabel);
    SetCaption(caption);
}

Panel::~Panel()
{
    ReleaseControls(*this);
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

ComboBox::ComboBox(const QString& name)
{
    setObjectName(name);
    setItemDelegate(new QStyledItemDelegate(this)); // lets the style sheet give the lines their height
    setPlaceholderText(QStringLiteral(" "));        // with one, Qt doesn't choose the first line that is added
}

void ComboBox::SetListIndex(int line)
{
    if (line < -1 || line >= count())
        throw basic::RuntimeError(basic::Error::InvalidProperty);
    setCurrentIndex(line);
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
}

TabStrip::~TabStrip()
{
    ReleaseControls(*this);
}

} // namespace forms
