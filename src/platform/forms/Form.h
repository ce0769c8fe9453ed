#pragma once

#include <QDialog>
#include <QString>

namespace forms {

class Layout;

/// A screen: a window named after its form. Load runs Form_Load once; Unload closes it, the way out of every screen.
///
/// Only Unload and the close box close it: Esc goes to EscapePressed, Enter presses no button that hasn't the focus.
class Form : public QDialog {
    Q_OBJECT
public:
    explicit Form(const QString& name, const QString& caption = {});

    /// Gives the window its natural size, unless it has one, and runs Form_Load; what runs before the window shows.
    /// Does nothing on a loaded form. Raises what Form_Load raises, and the form isn't loaded then.
    void Load();
    bool IsLoaded() const { return loaded; }

    /// Closes the window and ends its modal showing, unless Form_QueryUnload keeps it open. Raises what that one
    /// raises.
    void Unload();
    /// Qt's ways of closing a dialog are the close box's way here, whatever the result.
    void done(int result) override;

    /// Position of the window in twips, in floating point and without clipping.
    void MoveTwips(double left, double top);
    /// Size of the window in twips.
    double WidthTwips() const;
    double HeightTwips() const;

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

private:
    bool loaded = false;
};

/// The hourglass pointer for as long as it lives.
class Hourglass {
public:
    Hourglass();
    ~Hourglass();
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

inline constexpr double TwipsPerInch = 1440;
/// Twips to device-independent pixels at the logical resolution of the display, and back.
int PixelsOf(double twips);
double TwipsOf(int pixels);

} // namespace forms
