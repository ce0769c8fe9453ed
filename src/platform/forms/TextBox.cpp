#include "platform/forms/TextBox.h"

#include "platform/forms/Colours.h"
#include "platform/forms/Guard.h"
#include "platform/forms/KeyFilters.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

namespace forms {

namespace {

/// Whether the window was activated or deactivated, rather than the focus moving between its controls.
bool IsWindowActivation(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
}

bool TypesText(const QKeyEvent& event)
{
    const QString text = event.text();
    const auto command = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier);
    return !text.isEmpty() && command != Qt::ControlModifier &&
           (text.front().isPrint() || text.front().isSurrogate() || text.front().category() == QChar::Other_Format);
}

QString OneLine(QString text)
{
    while (text.endsWith('\n') || text.endsWith('\r'))
        text.chop(1);
    for (QChar& character : text) {
        if (character.unicode() < ' ' || character == QChar::LineSeparator || character == QChar::ParagraphSeparator)
            character = ' ';
    }
    return text;
}

QClipboard::Mode PasteSource(const QKeyEvent& event)
{
    const bool asksForSelection =
        event.key() == Qt::Key_Insert && event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    return asksForSelection ? QClipboard::Selection : QClipboard::Clipboard;
}

} // namespace

TextBox::TextBox(const QString& name)
{
    setObjectName(name);
    // While the window is in the background, another control can become its focus widget without a focus event.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (entered && now && now != this && now->window() == window())
            FocusLeaves();
    });
}

TextBox::~TextBox()
{
    // Qt clears the focus after this destructor, when the object is no longer a TextBox.
    disconnect(qApp, nullptr, this, nullptr);
}

/// A style sheet makes hints half transparent, too faint on a light desktop.
void TextBox::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    const QColor hint = TheColours().quiet;
    if (event->type() != QEvent::PaletteChange || palette().color(QPalette::PlaceholderText) == hint)
        return;
    QPalette shown = palette();
    shown.setColor(QPalette::PlaceholderText, hint);
    setPalette(shown);
}

int TextBox::CodeOf(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Backspace:
        return KeyBackspace;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return KeyEnter;
    default:
        return TypesText(event) ? static_cast<int>(event.text().toUcs4().constFirst()) : 0;
    }
}

void TextBox::FilterKey(int& keyCode)
{
    if (KeyPress)
        KeyPress(keyCode);
}

int TextBox::Filtered(int keyCode)
{
    int passed = 0; // a filter that throws swallows the key
    Guarded([&] {
        int code = keyCode;
        FilterKey(code);
        passed = code;
    });
    return passed;
}

void TextBox::TypeCode(int keyCode)
{
    const auto character = static_cast<char32_t>(Filtered(keyCode));
    if (character != 0)
        insert(QString::fromUcs4(&character, 1));
}

void TextBox::TypeText(const QString& text)
{
    for (const uint character : OneLine(text).toUcs4())
        TypeCode(static_cast<int>(character));
}

void TextBox::keyPressEvent(QKeyEvent* event)
{
    const int code = CodeOf(*event);
    if (isReadOnly() && code != KeyEnter) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        TypeText(QApplication::clipboard()->text(PasteSource(*event)));
        return;
    }
    if (code >= ' ' && event->text().toUcs4().size() > 1) {
        TypeText(event->text());
        return;
    }
    if (code == 0) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const int passed = Filtered(code);
    event->accept(); // a swallowed Enter must not reach the window either
    if (passed == KeyEnter)
        Q_EMIT Entered();
    else if (passed == code)
        QLineEdit::keyPressEvent(event);
    else if (passed >= ' ')
        insert(QString(QChar(passed)));
}

void TextBox::inputMethodEvent(QInputMethodEvent* event)
{
    if (event->commitString().isEmpty() || isReadOnly()) {
        QLineEdit::inputMethodEvent(event);
        return;
    }
    // End the composition, type its result through the filter, then start the next composition.
    QInputMethodEvent end;
    end.setCommitString({}, event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(&end);
    TypeText(event->commitString());
    if (!event->preeditString().isEmpty()) {
        QInputMethodEvent next(event->preeditString(), event->attributes());
        QLineEdit::inputMethodEvent(&next);
    }
    event->accept();
}

void TextBox::mouseReleaseEvent(QMouseEvent* event)
{
    const QClipboard* clipboard = QApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard->supportsSelection() && !isReadOnly()) {
        deselect();
        TypeText(clipboard->text(QClipboard::Selection));
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(selectsOnRelease, false) && !hasSelectedText())
        SelectForFocus();
}

void TextBox::SelectForFocus()
{
    setSelection(0, qMin(SelectedOnFocus, static_cast<int>(text().size())));
}

void TextBox::dropEvent(QDropEvent* event)
{
    if (isReadOnly() || !event->mimeData()->hasText())
        return;
    deselect();
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    TypeText(event->mimeData()->text());
    event->acceptProposedAction();
}

void TextBox::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction* action : menu->actions()) {
        if (!action->text().startsWith(QLineEdit::tr("&Paste")))
            continue;
        action->disconnect(); // Qt's paste would bypass the filter
        connect(action, &QAction::triggered, this, [this] { TypeText(QApplication::clipboard()->text()); });
    }
    menu->popup(event->globalPos());
}

void TextBox::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (std::exchange(entered, true))
        return;
    SelectForFocus();
    selectsOnRelease = event->reason() == Qt::MouseFocusReason;
}

void TextBox::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (!IsWindowActivation(event->reason()))
        FocusLeaves();
}

void TextBox::FocusLeaves()
{
    if (!std::exchange(entered, false))
        return;
    selectsOnRelease = false;
    Guarded([this] { Leave(); });
    Q_EMIT LostFocus();
}

AmountField::AmountField(const QString& name) : TextBox(name)
{
    setAlignment(Qt::AlignRight);
}

void AmountField::FilterKey(int& keyCode)
{
    KeyFilterDecimal(text(), keyCode);
    if (keyCode != 0)
        TextBox::FilterKey(keyCode);
}

} // namespace forms
