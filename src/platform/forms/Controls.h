#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <functional>

/// The controls of the screens: Qt's own, named as the rules name them, with what the screens need and Qt lacks.
namespace forms {

/// Shows text as plain text.
class Label : public QLabel {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit Label(const QString& name, const QString& caption = {});
    QString Tag;
};

/// A figure in a sunken box, right-aligned: totals and balances.
class FigureLabel : public Label {
    Q_OBJECT
public:
    explicit FigureLabel(const QString& name);
};

/// An entry field with a filter on typed keys. Text pasted or dropped passes through the same filter, character by character.
class TextBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit TextBox(const QString& name);

    /// Called with the code of each typed character (8 backspace, 13 Enter) before the field takes it; 0 swallows it.
    std::function<void(int& keyCode)> KeyPress;
    bool SelectsAllOnFocus = true;
    QString Tag;

signals:
    /// Enter was typed and the filter let it pass.
    void Entered();
    void GotFocus();
    void LostFocus();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// The code of a key event in the sense of the filters; 0 for keys that type nothing.
    static int CodeOf(const QKeyEvent& event);
    virtual void TypeText(const QString& text);
};

/// The standard date field: filter, slashes by themselves, backspace that wipes below 7 characters, emptied on leaving when
/// the date is bad. Entered comes only at a length at which the filter lets Enter pass.
class DateField : public TextBox {
    Q_OBJECT
public:
    explicit DateField(const QString& name);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

/// The decimal field: KeyFilterDecimal on keys and pasted text.
class AmountField : public TextBox {
    Q_OBJECT
public:
    explicit AmountField(const QString& name);
};

/// A picture that is a button: an icon, a hover and focus border, an action text that is its tooltip and accessible name.
class Picture : public QAbstractButton {
    Q_OBJECT
public:
    explicit Picture(const QString& name);

    /// `icon` names a file of resources/icons without its ending.
    void SetIcon(const QString& icon);
    /// The action in the user's words: accessible name, and tooltip unless the screen shows a Bulle for it.
    void SetAction(const QString& action, bool withToolTip = true);
    void SetBorder(bool single);
    bool HasBorder() const { return border; }
    QSize sizeHint() const override;

signals:
    void MouseOver(); ///< the pointer came over the picture, or the keyboard focus did
    void MouseLeft();

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override; ///< Enter clicks, as Space does

private:
    QString iconName;
    bool border = false;
};

class Button : public QPushButton {
    Q_OBJECT
public:
    explicit Button(const QString& name, const QString& caption = {});
};

class OptionButton : public QRadioButton {
    Q_OBJECT
public:
    explicit OptionButton(const QString& name, const QString& caption = {});
};

/// A framed area with a caption.
class Panel : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QString caption READ Caption WRITE SetCaption)
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit Panel(const QString& name, const QString& caption = {});
    QString Caption() const { return captionText; }
    void SetCaption(const QString& caption);
    QString Tag;

private:
    QString captionText;
    QLabel* captionLabel;
};

class ComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit ComboBox(const QString& name);
    /// Chooses a line; raises 380 outside the list.
    void SetListIndex(int line);
};

class TabStrip : public QTabWidget {
    Q_OBJECT
public:
    explicit TabStrip(const QString& name);
};

} // namespace forms
