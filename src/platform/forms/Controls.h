#pragma once

#include "platform/forms/Commands.h"
#include "platform/forms/Icons.h"
#include "platform/forms/TextBox.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <memory>

class QVBoxLayout;

/// The controls of the screens: Qt's widgets, with names and the features that Qt lacks.
namespace forms {

/// Shows text as plain text.
class Label : public QLabel {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit Label(const QString& name, const QString& caption = {});
    QString Tag;
};

/// A right-aligned figure: totals and balances. Never cut: if it has too little room, the font is reduced.
class FigureLabel : public Label {
    Q_OBJECT
public:
    explicit FigureLabel(const QString& name);

    /// The width in pixels of the figure with its insets, in the normal font size.
    int NeededWidth() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// For figures under the columns of a grid: no padding, since columns are narrow.
    void AlignUnderColumns(bool centred);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int Inset() const;
    bool underColumns = false;
};

/// An icon button with a hover and focus border, an action text (tooltip and accessible name), and commands whose keys
/// click it.
///
/// Focusable by Tab only: a click doesn't move the focus out of an entry field.
class Picture : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(bool border READ HasBorder WRITE SetBorder)
    Q_PROPERTY(QString iconName READ IconName)
    Q_PROPERTY(QString note READ Note)
public:
    explicit Picture(const QString& name);

    /// `icon` is a file of resources/icons without extension. An unknown one ends the program with a message.
    void SetIcon(const QString& icon);
    const QString& IconName() const { return iconName; }
    /// A word next to the icon; also the accessible name until SetAction is called.
    void SetCaption(const QString& caption);
    /// A quiet second line below the caption.
    void SetNote(const QString& note);
    const QString& Note() const { return note; }
    /// The action in the user's words: the accessible name and, with the keys of its commands, the tooltip, unless the
    /// screen uses a Bulle.
    void SetAction(const QString& action);
    /// As set, including surrounding blanks.
    const QString& Action() const { return action; }
    void SetCommands(const QList<Command>& commands);
    const QList<Command>& Commands() const { return commands; }
    /// The keys of all its commands, as shown in tooltips ("Ctrl+S, Ctrl+W").
    QString KeyTexts() const;
    /// Disables the tooltip: the screen shows the action in its Bulle.
    void LeaveToolTipToBulle();
    void SetBorder(bool single);
    bool HasBorder() const { return border; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void MouseOver(); ///< the picture was hovered or focused
    void MouseLeft(); ///< it is no longer hovered or focused, or was hidden

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override; ///< Enter clicks, like Space

private:
    void Highlight();
    void Release();
    void DescribeAction();
    void LoadDrawing();
    void PaintBackground(QPainter& painter) const;

    Drawing drawing; ///< in the colours of drawnGeneration
    QString iconName;
    QString note;
    QString action;
    int drawnGeneration = -1; ///< ColourGeneration
    QList<Command> commands;
    bool hasToolTip = true;
    bool border = false;
    bool highlighted = false;
};

/// Sets a picture's icon, action and commands.
void Dress(Picture& picture, const char* icon, const QString& action, const QList<Command>& commands = {});
void Dress(Picture& picture, const char* icon, const QString& action, Command command);

/// A push button that Enter clicks only when it has the focus.
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
    /// The option was selected, or clicked while selected.
    void Chosen();
    void Entered(); ///< Enter was pressed

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A caption that is the title of what follows or, once it has contents, a framed area. Its controls are owned by the
/// screen and may outlive it.
class Panel : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QString caption READ Caption WRITE SetCaption)
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit Panel(const QString& name, const QString& caption = {});
    ~Panel() override;
    QString Caption() const;
    void SetCaption(const QString& caption);
    /// Puts contents below the caption and a frame around both.
    void SetContents(std::unique_ptr<QLayout> contents);
    QString Tag;

private:
    QVBoxLayout* arrangement;
    QLabel* captionLabel;
};

/// A drop-down list. Adding lines selects none: the current line is -1 until set.
class ComboBox : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    explicit ComboBox(const QString& name);
    /// Selects a line, -1 for none; raises 380 outside the list.
    void SetListIndex(int line);
    QString Tag;

Q_SIGNALS:
    void Entered(); ///< Enter while the list is closed; the form receives the key as well

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override; ///< ignored unless the list has the focus
};

class TabStrip : public QTabWidget {
    Q_OBJECT
public:
    explicit TabStrip(const QString& name);
    ~TabStrip() override;
};

} // namespace forms
