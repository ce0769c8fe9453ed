#pragma once

#include "platform/forms/Commands.h"

#include <QDialog>
#include <QString>
#include <functional>

namespace forms {

class Layout;

/// A screen: a window named after its form. Load runs Form_Load once; Unload closes it, the way out of every screen.
///
/// Only Unload and the close box close it: Esc goes to EscapePressed, Enter presses no button that hasn't the focus.
/// The keys of a command click the picture that has it; those for pages turn the pages of the screen's TabStrip.
class Form : public QDialog {
    Q_OBJECT
public:
    explicit Form(const QString& name, const QString& caption = {});

    /// Runs Form_Load; what runs before the window shows. The window opens in its natural size, unless it has one, as
    /// far as the screen has room. Does nothing on a loaded form. Raises what Form_Load raises, and the form isn't
    /// loaded then.
    void Load();
    bool IsLoaded() const { return loaded; }

    /// Closes the window and ends its modal showing, unless Form_QueryUnload keeps it open. Raises what that one
    /// raises.
    void Unload();
    /// Qt's ways of closing a dialog are the close box's way here, whatever the result.
    void done(int result) override;

    /// Puts the window in the middle of its screen, half the screen less half the window each way, in twips and in
    /// floating point; Load repeats it when the window has its final size.
    void Centre();
    /// Moves and shrinks the window into the free area of its screen, the frame counted.
    void FitScreen();

    /// The size that a window can have at most on its screen, the frame counted.
    QSize RoomOnScreen() const;

    /// The screen that windows open on: that of the window in use, or the primary one.
    static QScreen* OpeningScreen();

Q_SIGNALS:
    void Unloaded();

protected:
    virtual void Form_Load() {}
    /// Asked before the close box or Unload takes effect; true keeps the window open.
    virtual bool Form_QueryUnload() { return false; }
    /// Esc. A screen cancels its open panel here; nothing else closes by Esc.
    virtual void EscapePressed() {}

    /// Sets what the window shows.
    void SetContent(Layout content);

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void setVisible(bool visible) override;

private:
    QMargins Frame() const;
    QPoint CentredPlace() const;
    void MoveFrame(const QPoint& upperLeft);
    void AddCommandKeys();
    void RunCommand(Command command);
    void TurnPage(int step);

    bool loaded = false;
    bool centred = false;
    bool hasOwnSize = false;
    bool hasCommandKeys = false;
};

/// What F1 does on every screen that has no picture for it: it is given the screen's name.
void OnHelp(std::function<void(const QString& screen)> showHelp);

/// The hourglass pointer for as long as it lives.
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
/// The same for a width that holds text: it grows with the desktop's font.
int ScaledPixelsOf(double twips);

} // namespace forms
