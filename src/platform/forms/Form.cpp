#include "platform/forms/Form.h"

#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QScreen>
#include <cmath>

namespace forms {

namespace {

double DotsPerInch()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInch() : 96;
}

} // namespace

int PixelsOf(double twips)
{
    return static_cast<int>(std::lround(twips * DotsPerInch() / TwipsPerInch));
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
    if (!testAttribute(Qt::WA_Resized)) {
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
        QWidget::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call): past the dialog's keys, which close it
    }
}

void Form::MoveTwips(double left, double top)
{
    move(PixelsOf(left), PixelsOf(top));
}

double Form::WidthTwips() const
{
    return TwipsOf(width());
}

double Form::HeightTwips() const
{
    return TwipsOf(height());
}

void Form::SetContent(Layout content)
{
    setLayout(std::move(content).Margin(16).Build());
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
