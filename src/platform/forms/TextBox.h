#pragma once

#include <QLineEdit>
#include <functional>
#include <limits>

namespace forms {

/// An entry field with a filter for typed characters. Pasted, dropped and composed text passes the same filter
/// character by character, without trailing line breaks and with other control characters as blanks. setText isn't
/// filtered.
///
/// LostFocus reports that the focus has moved to another control of the window. Deactivating the window, by a message
/// box for instance, doesn't count.
class TextBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit TextBox(const QString& name);
    ~TextBox() override;

    /// Called with the code of each typed character (8 backspace, 13 Enter), after the field's own filter; 0 swallows
    /// it, another code replaces it.
    std::function<void(int& keyCode)> KeyPress;
    /// How many characters are selected from the start when the field gets the focus.
    int SelectedOnFocus = WholeText;
    static constexpr int WholeText = std::numeric_limits<int>::max();
    QString Tag;

Q_SIGNALS:
    /// Enter was typed and not swallowed by the filter.
    void Entered();
    void LostFocus();

protected:
    /// The field's own filter: replaces the code of a typed character, 0 swallows it.
    virtual void FilterKey(int& keyCode);
    /// Called when the focus leaves the field, before LostFocus.
    virtual void Leave() {}
    /// Types a whole text through the filter.
    virtual void TypeText(const QString& text);

    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

    /// The filter code of a key event; 0 for keys that type nothing.
    static int CodeOf(const QKeyEvent& event);

private:
    int Filtered(int keyCode);
    void TypeCode(int keyCode);
    void SelectForFocus();
    void FocusLeaves();

    bool entered = false;          // focused, see LostFocus
    bool selectsOnRelease = false; // focused by a click; Qt places the caret between press and release
};

/// The standard date field: key filter, automatic slashes, backspace clears texts below 7 characters, and leaving it
/// clears an invalid date. Entered is emitted only at a length at which the filter lets Enter pass.
class DateField : public TextBox {
    Q_OBJECT
public:
    explicit DateField(const QString& name);

Q_SIGNALS:
    /// The focus has left an invalid date: the field has beeped and was cleared. A screen may return the focus here.
    void DateRefused();
    /// The keys of ChooseDate were pressed in the field, and no picture of its screen takes them.
    void CalendarWanted();

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
