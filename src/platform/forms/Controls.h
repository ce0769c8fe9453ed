#pragma once

#include "platform/forms/Commands.h"
#include "platform/forms/TextBox.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

class QSvgRenderer;
class QVBoxLayout;

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

/// A figure in a sunken box, right-aligned: totals and balances. A figure is never cut: where its box is too narrow, it
/// is written smaller.
class FigureLabel : public Label {
    Q_OBJECT
public:
    explicit FigureLabel(const QString& name);

    /// The width in pixels that the figure takes with its box, at its usual size.
    int NeededWidth() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// A figure under the columns of a grid has no padding: columns are narrow.
    void StandUnderColumns(bool centred);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int Inset() const;
    bool underColumns = false;
};

/// A picture that is a button: an icon, a hover and focus border, an action text that is its tooltip and accessible
/// name, and a command whose keys click it.
///
/// Reached by Tab; a click leaves the keyboard focus where it is, so that an entry field isn't left by it.
class Picture : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(bool border READ HasBorder WRITE SetBorder)
public:
    explicit Picture(const QString& name);

    /// `icon` names a file of resources/icons without its ending. An unknown one ends the program with a message.
    void SetIcon(const QString& icon);
    /// A word beside the icon; it is the accessible name too until SetAction gives one.
    void SetCaption(const QString& caption);
    /// The action in the user's words: accessible name, and with the command's keys the tooltip, unless the screen
    /// shows a Bulle for it.
    void SetAction(const QString& action);
    /// As it was set, blanks around kept.
    const QString& Action() const { return action; }
    void SetCommand(Command command);
    forms::Command BoundCommand() const { return command; }
    /// The screen shows the action in its Bulle instead of a tooltip.
    void LeaveToolTipToBulle();
    void SetBorder(bool single);
    bool HasBorder() const { return border; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void MouseOver(); ///< the pointer came over the picture, or the keyboard focus did
    void MouseLeft(); ///< neither the pointer nor the focus is on it any more, or it was hidden

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override; ///< Enter clicks, as Space does

private:
    void Attract();
    void Release();
    void DescribeAction();
    void LoadDrawing();
    void PaintGround(QPainter& painter) const;

    QSvgRenderer* drawing;
    QString iconName;
    QString action;
    int drawnGeneration = -1; ///< of the colours that the drawing has
    forms::Command command = forms::Command::None;
    bool hasToolTip = true;
    bool border = false;
    bool attracted = false;
};

/// Gives a picture its icon, its action in the user's words, and the command whose keys click it.
void Dress(Picture& picture, const char* icon, const QString& action, Command command = Command::None);

/// A push button that Enter presses when it has the focus, and never otherwise.
class Button : public QPushButton {
    Q_OBJECT
public:
    explicit Button(const QString& name, const QString& caption = {});

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

class OptionButton : public QRadioButton {
    Q_OBJECT
public:
    explicit OptionButton(const QString& name, const QString& caption = {});

Q_SIGNALS:
    /// The option was set on, or clicked while it was on.
    void Chosen();
};

/// A framed area with a caption. Its controls may outlive it: they belong to the screen.
class Panel : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QString caption READ Caption WRITE SetCaption)
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit Panel(const QString& name, const QString& caption = {});
    ~Panel() override;
    QString Caption() const;
    void SetCaption(const QString& caption);
    QString Tag;

private:
    QLabel* captionLabel;
};

/// A list to choose a line from. Adding lines chooses none: the current line is -1 until one is set.
class ComboBox : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit ComboBox(const QString& name);
    /// Chooses a line, -1 for none; raises 380 outside the list.
    void SetListIndex(int line);
    QString Tag;

Q_SIGNALS:
    void Entered(); ///< Enter while the list is closed; the form still gets the key

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override; ///< turns the lines only while the list has the focus
};

class TabStrip : public QTabWidget {
    Q_OBJECT
public:
    explicit TabStrip(const QString& name);
    ~TabStrip() override;
};

} // namespace forms
