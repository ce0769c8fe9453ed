#include "platform/forms/Form.h"

#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"
#include "platform/forms/Scrolling.h"
#include "platform/forms/Style.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QWindow>
#include <cmath>
#include <set>

namespace forms {

namespace {

std::function<void(const QString&)>& Help()
{
    static std::function<void(const QString&)> help;
    return help;
}

double DotsPerInch()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInch() : 96;
}

/// The next control in tab order, after the focused one, for which `suits` is true; the focused one last.
template <class Control, class Condition>
Control* NextInWindow(QWidget& window, Condition suits)
{
    QWidget* const start = window.focusWidget() != nullptr ? window.focusWidget() : &window;
    QWidget* each = start;
    do {
        each = each->nextInFocusChain();
        auto* control = qobject_cast<Control*>(each);
        if (control != nullptr && control->isVisible() && control->isEnabled() && suits(*control))
            return control;
    } while (each != start);
    return nullptr;
}

/// Whether a control is on a panel that floats over its screen.
bool IsOnPanel(const QWidget& control)
{
    for (const QWidget* each = control.parentWidget(); each != nullptr; each = each->parentWidget())
        if (each->property("floating").toBool())
            return true;
    return false;
}

} // namespace

int PixelsOf(double twips)
{
    return static_cast<int>(std::lround(twips * DotsPerInch() / TwipsPerInch));
}

int ScaledPixelsOf(double twips)
{
    return PixelsOf(twips * FontScale());
}

double TwipsOf(int pixels)
{
    return pixels * TwipsPerInch / DotsPerInch();
}

Form::Form(const QString& name, const QString& caption)
{
    setObjectName(name);
    setWindowTitle(caption);
}

void Form::Load()
{
    if (loaded)
        return;
    loaded = true;
    hasOwnSize = testAttribute(Qt::WA_Resized);
    if (!hasOwnSize) {
        ensurePolished();
        resize(sizeHint());
    }
    try {
        Form_Load();
    } catch (...) {
        loaded = false;
        throw;
    }
}

void Form::Unload()
{
    if (!loaded || Form_QueryUnload())
        return;
    loaded = false;
    QDialog::done(Accepted);
    Q_EMIT Unloaded();
}

void Form::done(int)
{
    Guarded([this] { Unload(); });
}

void Form::closeEvent(QCloseEvent* event)
{
    Guarded([this] { Unload(); });
    event->setAccepted(!loaded);
}

void Form::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        Guarded([this] { EscapePressed(); });
        event->accept();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->accept();
        break;
    default:
        // Skips the dialog's handler, which closes it on Esc.
        QWidget::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call)
    }
}

QScreen* Form::OpeningScreen()
{
    const QWidget* inUse = QApplication::activeWindow();
    for (const QWidget* window : QApplication::topLevelWidgets())
        if (inUse == nullptr && window->isVisible())
            inUse = window;
    return inUse != nullptr ? inUse->screen() : QGuiApplication::primaryScreen();
}

QPoint Form::CentredPlace() const
{
    const QRect screen = OpeningScreen()->geometry();
    const double left = TwipsOf(screen.width()) / 2 - TwipsOf(width()) / 2;
    const double top = TwipsOf(screen.height()) / 2 - TwipsOf(height()) / 2;
    return {screen.left() + PixelsOf(left), screen.top() + PixelsOf(top)};
}

void Form::Centre()
{
    centred = true;
    MoveFrame(CentredPlace());
}

void Form::MoveFrame(const QPoint& upperLeft)
{
    move(upperLeft);
    if (windowHandle() != nullptr) // mapped, perhaps without its frame yet
        windowHandle()->setFramePosition(upperLeft);
}

QMargins Form::Frame() const
{
    constexpr int titleBar = 32; // until the window manager has added the frame
    constexpr int edge = 2;
    const QRect outer = frameGeometry();
    const QRect inner = geometry();
    if (outer.height() <= inner.height())
        return {edge, titleBar, edge, edge};
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

QSize Form::RoomOnScreen() const
{
    return OpeningScreen()->availableGeometry().marginsRemoved(Frame()).size();
}

void Form::FitScreen()
{
    resize(size().boundedTo(RoomOnScreen()));
    const QRect area = OpeningScreen()->availableGeometry();
    const QSize framed = size().grownBy(Frame());
    const QPoint wanted = centred || !testAttribute(Qt::WA_Moved) ? CentredPlace() : pos();
    MoveFrame({qBound(area.left(), wanted.x(), qMax(area.left(), area.right() + 1 - framed.width())),
               qBound(area.top(), wanted.y(), qMax(area.top(), area.bottom() + 1 - framed.height()))});
}

void Form::setVisible(bool visible)
{
    if (visible && !isVisible() && !isMaximized()) {
        // Lists are filled by now.
        if (!hasOwnSize && layout() != nullptr) {
            layout()->activate();
            resize(size().expandedTo(sizeHint()));
        }
        FitScreen();
        AddCommandKeys();
    }
    QDialog::setVisible(visible);
    if (visible && layout() != nullptr) {
        // The totals need the column positions, which a grid knows only when shown.
        layout()->invalidate();
        layout()->activate();
    }
}

void Form::ScrollIfTooLarge()
{
    if (!isVisible() || layout() == nullptr || minimumSizeHint() == minimumSizeHint().boundedTo(RoomOnScreen()))
        return;
    MakeScrollable(*this);
    FitScreen();
}

bool Form::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest) // the contents may have grown: check after the layout
        QMetaObject::invokeMethod(this, &Form::ScrollIfTooLarge, Qt::QueuedConnection);
    return QDialog::event(event);
}

void Form::SetContent(Layout content)
{
    setLayout(std::move(content).Margin(16).Take().release());
}

/// Shortcuts for the commands of the screen's pictures and pages.
void Form::AddCommandKeys()
{
    if (hasCommandKeys)
        return;
    hasCommandKeys = true;
    const auto addKeys = [this](Command command, auto run) {
        auto* keys = new QShortcut(KeysOf(command), this);
        connect(keys, &QShortcut::activated, this, run);
    };
    std::set<Command> offered;
    for (const Picture* picture : findChildren<Picture*>())
        offered.insert(picture->Commands().begin(), picture->Commands().end());
    for (const auto& [command, run] : ownCommands)
        offered.insert(command);
    if (Help() && !offered.contains(Command::Help))
        addKeys(Command::Help, [this] { Guarded([this] { Help()(objectName()); }); });
    for (const Command command : offered)
        addKeys(command, [this, command] { RunCommand(command); });
    if (findChild<TabStrip*>() == nullptr)
        return;
    addKeys(Command::PreviousPage, [this] { TurnPage(-1); });
    addKeys(Command::NextPage, [this] { TurnPage(1); });
}

void Form::OnCommand(Command command, std::function<void()> run)
{
    ownCommands[command] = std::move(run);
}

/// Clicks the picture with a command: one on an open panel, or else the next after the focused control.
void Form::RunCommand(Command command)
{
    const auto offers = [command](const Picture& each) { return each.Commands().contains(command); };
    auto* picture = NextInWindow<Picture>(*this, [&](const Picture& each) { return IsOnPanel(each) && offers(each); });
    if (picture == nullptr)
        picture = NextInWindow<Picture>(*this, offers);
    if (picture != nullptr)
        return picture->click();
    auto* date = command == Command::ChooseDate ? qobject_cast<DateField*>(focusWidget()) : nullptr;
    if (date != nullptr)
        Q_EMIT date->CalendarWanted();
    else if (const auto own = ownCommands.find(command); own != ownCommands.end())
        Guarded(own->second);
}

void Form::TurnPage(int step)
{
    auto* tabs = NextInWindow<TabStrip>(*this, [](const TabStrip&) { return true; });
    if (tabs == nullptr)
        return;
    const int page = tabs->currentIndex() + step;
    if (page < 0 || page >= tabs->count())
        return;
    tabs->setFocus();
    tabs->setCurrentIndex(page); // the page may move the focus to its first field
    if (!tabs->hasFocus())
        return;
    auto* first = NextInWindow<QWidget>(*this, [&](const QWidget& control) {
        const bool entered = qobject_cast<const Grid*>(&control) || qobject_cast<const TextBox*>(&control);
        return entered && tabs->currentWidget()->isAncestorOf(&control);
    });
    if (first != nullptr)
        first->setFocus();
}

void OnHelp(std::function<void(const QString& screen)> showHelp)
{
    Help() = std::move(showHelp);
}

Hourglass::Hourglass()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

Hourglass::~Hourglass()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace forms
