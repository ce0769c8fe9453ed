#pragma once

#include <QDialog>
#include <QString>

namespace forms {

class Layout;

/// A screen: a window named after its form. Load runs Form_Load once; Unload closes it, the way out of every screen.
class Form : public QDialog {
    Q_OBJECT
public:
    explicit Form(const QString& name, const QString& caption = {});

    /// Runs Form_Load the first time; what runs before the window shows. Raises what Form_Load raises.
    void Load();
    bool IsLoaded() const { return loaded; }

    /// Closes the window and ends its modal showing.
    void Unload();

    /// Position of the window in twips, in floating point and without clipping.
    void MoveTwips(double left, double top);
    /// Size of the window in twips.
    double WidthTwips() const;
    double HeightTwips() const;

signals:
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
