#include "platform/forms/KeyFilters.h"
#include "platform/forms/TextBox.h"

#include <QFontMetrics>
#include <QKeyEvent>

namespace forms {

namespace {
constexpr qsizetype ShortestBackspaceLength = 7; // shorter texts have no year: backspace clears the field
}

DateField::DateField(const QString& name) : TextBox(name)
{
    connect(this, &QLineEdit::textChanged, this, &DateField::CompleteText);
}

void DateField::CompleteText()
{
    QString completed = text();
    if (DateAutoSlash(completed) != text())
        setText(completed); // recursive call, with nothing to append
    setCursorPosition(static_cast<int>(text().trimmed().size()));
}

void DateField::FilterKey(int& keyCode)
{
    KeyFilterDate(text(), keyCode);
    if (keyCode != 0)
        TextBox::FilterKey(keyCode);
}

void DateField::TypeText(const QString& newText)
{
    for (const QChar character : newText) {
        // The field has added this slash itself.
        const bool standsAlready = character == '/' && text().endsWith('/') && !hasSelectedText();
        if (!standsAlready)
            TextBox::TypeText(character);
    }
}

void DateField::keyPressEvent(QKeyEvent* event)
{
    const bool wipes = CodeOf(*event) == KeyBackspace && text().trimmed().size() < ShortestBackspaceLength;
    if (wipes && !isReadOnly()) {
        clear();
        setCursorPosition(0);
        return;
    }
    TextBox::keyPressEvent(event);
}

void DateField::Leave()
{
    const QString date = text().trimmed();
    if (date.isEmpty() || DateIsInvalid(date) == 0)
        return;
    clear();
    Q_EMIT DateRefused();
}

} // namespace forms
