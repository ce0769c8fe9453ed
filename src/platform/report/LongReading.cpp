#include "platform/report/LongReading.h"

#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"
#include "platform/report/GiveUpWindow.h"

#include <QApplication>
#include <QWindow>

namespace report {
namespace {

constexpr qint64 EventInterval = 50; // ms

} // namespace

GiveUpWindow::GiveUpWindow() : Form("LongReading", "Impression")
{
    setWindowModality(Qt::ApplicationModal);
    GiveUp.setToolTip("Abandonner la lecture (Échap)");
    forms::On(GiveUp, &forms::Button::clicked, *this, [this] { Unload(); });
    using forms::Item;
    SetContent(forms::Column{Explanation, forms::Row{Item::Stretch(), GiveUp}});
}

bool GiveUpWindow::Form_QueryUnload()
{
    isGivenUp = true;
    return false;
}

void GiveUpWindow::EscapePressed()
{
    Unload();
}

LongReading::LongReading(std::chrono::milliseconds untilOffered) : patience(untilOffered)
{
    sinceStart.start();
    sinceEvents.start();
}

LongReading::~LongReading() = default;

bool LongReading::IsGivenUp()
{
    if (!sinceStart.hasExpired(patience.count()) || !sinceEvents.hasExpired(EventInterval))
        return window && window->IsGivenUp();
    if (!window)
        ShowWindow();
    // Input and painting only: socket and pipe handlers mustn't run while reading.
    QApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    sinceEvents.restart();
    return window->IsGivenUp();
}

void LongReading::ShowWindow()
{
    const QWidget* caller = QApplication::activeWindow();
    window = std::make_unique<GiveUpWindow>();
    window->Load();
    window->winId(); // creates the window handle
    if (caller != nullptr && caller->windowHandle() != nullptr)
        window->windowHandle()->setTransientParent(caller->windowHandle());
    window->show();
    window->GiveUp.setFocus();
}

} // namespace report
