#pragma once

#include "platform/forms/Commands.h"

#include <QDialog>
#include <QString>
#include <functional>
#include <map>

namespace forms {

class Layout;

/// A screen: a window named after its form. Load runs Form_Load once; Unload closes it.
///
/// Only Unload and the close box close it: Esc calls EscapePressed, Enter clicks only a focused button. The keys of a
/// command click its picture, first that of an open panel, or else do what the screen has set by OnCommand; the page
/// commands turn the pages of the screen's TabStrip and focus the first table or entry field of the new page.
class Form : public QDialog {
    Q_OBJECT
public:
    explicit Form(const QString& name, const QString& caption = {});

    /// Runs Form_Load before the window is shown. The window opens in its natural size, unless a size was set, limited
    /// to the screen, where its contents scroll if even their least size is larger. Does nothing on a loaded form. If
    /// Form_Load throws, the form isn't loaded.
    void Load();
    bool IsLoaded() const { return loaded; }

    /// Closes the window and ends its modal loop, unless Form_QueryUnload keeps it open or throws.
    void Unload();
    /// Qt's ways of closing a dialog behave like the close box, whatever the result.
    void done(int result) override;

    /// Centres the window on its screen: half the screen minus half the window in each direction, in twips, floating
    /// point. Load repeats it with the final window size.
    void Centre();
    /// Moves and shrinks the window, with its frame, into the free area of its screen.
    void FitScreen();

    /// The largest window size on its screen, allowing for the frame.
    QSize RoomOnScreen() const;

    /// The screen for new windows: that of the active window, or the primary one.
    static QScreen* OpeningScreen();

Q_SIGNALS:
    void Unloaded();

protected:
    virtual void Form_Load() {}
    /// Called before the close box or Unload takes effect; true keeps the window open.
    virtual bool Form_QueryUnload() { return false; }
    /// Esc was pressed: a screen cancels its open panel.
    virtual void EscapePressed() {}

    /// Sets what the keys of a command do where no picture with it can be clicked. Call before the screen is shown.
    void OnCommand(Command command, std::function<void()> run);

    /// Sets what the window shows.
    void SetContent(Layout content);

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void setVisible(bool visible) override;
    bool event(QEvent* event) override;

private:
    QMargins Frame() const;
    QPoint CentredPlace() const;
    void MoveFrame(const QPoint& upperLeft);
    void ScrollIfTooLarge();
    void AddCommandKeys();
    void RunCommand(Command command);
    void TurnPage(int step);

    bool loaded = false;
    bool centred = false;
    bool hasOwnSize = false;
    bool hasCommandKeys = false;
    std::map<Command, std::function<void()>> ownCommands;
};

/// Sets what F1 does on every screen without a picture for it; it is passed the screen's name. Call before a screen is
/// shown.
void OnHelp(std::function<void(const QString& screen)> showHelp);

/// Shows the hourglass pointer during its lifetime.
class Hourglass {
public:
    Hourglass();
    ~Hourglass();
    Q_DISABLE_COPY_MOVE(Hourglass)
};

inline constexpr double TwipsPerInch = 1440;
/// Twips to device-independent pixels at the logical resolution of the display, and back.
int PixelsOf(double twips);
double TwipsOf(int pixels);
/// The same for widths of text, which grow with the desktop's font.
int ScaledPixelsOf(double twips);

} // namespace forms
