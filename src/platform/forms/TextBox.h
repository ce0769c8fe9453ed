#pragma once

#include <QLineEdit>
#include <functional>

namespace forms {

/// An entry field with a filter on typed keys. Text that the user pastes, drops or composes passes through the same
/// filter, character by character; line ends at its end are cut and other control characters turn into blanks. setText
/// passes freely.
///
/// GotFocus and LostFocus report focus moves between the controls of the window. A window that goes to the background,
/// behind a message box for instance, neither takes the focus from the field nor gives it back.
class TextBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit TextBox(const QString& name);
    ~TextBox() override;

    /// Called with the code of each typed character (8 backspace, 13 Enter) before the field takes it; 0 swallows it,
    /// another code is typed instead. Runs after the field's own filter, with the codes that this one lets pass.
    std::function<void(int& keyCode)> KeyPress;
    bool SelectsAllOnFocus = true;
    QString Tag;

Q_SIGNALS:
    /// Enter was typed and the filter let it pass.
    void Entered();
    void GotFocus();
    void LostFocus();

protected:
    /// The field's filter: changes the code of a typed character, or swallows it with 0.
    virtual void FilterKey(int& keyCode);
    /// What the field does with its text when the focus leaves it, before LostFocus.
    virtual void Leave() {}
    /// Types text that comes in one piece through the filter.
    virtual void TypeText(const QString& text);

    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    /// The code of a key event in the sense of the filters; 0 for keys that type nothing.
    static int CodeOf(const QKeyEvent& event);

private:
    int Filtered(int keyCode);
    void TypeCode(int keyCode);
    void FocusLeaves();

    bool entered = false;          // between GotFocus and LostFocus
    bool selectsOnRelease = false; // a click gave the focus; Qt places the caret between press and release
};

/// The standard date field: filter, slashes by themselves, backspace that wipes below 7 characters, emptied on leaving
/// when the date is bad. Entered comes only at a length at which the filter lets Enter pass.
class DateField : public TextBox {
    Q_OBJECT
public:
    explicit DateField(const QString& name);

Q_SIGNALS:
    /// The focus left a bad date: the field has beeped and is empty now. A screen may give the focus back here.
    void DateRefused();

protected:
    void FilterKey(int& keyCode) override;
    void Leave() override;
    void TypeText(const QString& text) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void CompleteText();
};

/// The decimal field: KeyFilterDecimal on keys and pasted text.
class AmountField : public TextBox {
    Q_OBJECT
public:
    explicit AmountField(const QString& name);

protected:
    void FilterKey(int& keyCode) override;
};

} // namespace forms
