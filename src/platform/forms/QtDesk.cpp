#include "platform/forms/QtDesk.h"

#include "platform/forms/Form.h"
#include "platform/forms/FrenchSpaces.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>
#include <cstdio>
#include <cstdlib>

namespace forms {

namespace {

QMessageBox::Icon BoxIcon(Icon icon)
{
    switch (icon) {
    case Icon::None:
        return QMessageBox::NoIcon;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Information:
        return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

class WaitWindow : public WaitNotice {
public:
    explicit WaitWindow(const QString& text)
    {
        window.setObjectName(QStringLiteral("WaitNotice"));
        window.setWindowTitle(text);
        window.setWindowModality(Qt::ApplicationModal);
        auto* column = new QVBoxLayout(&window);
        column->addWidget(new QLabel(text));
        bar = new QProgressBar;
        bar->setAccessibleName(text);
        QSizePolicy keepsPlace = bar->sizePolicy();
        keepsPlace.setRetainSizeWhenHidden(true);
        bar->setSizePolicy(keepsPlace);
        bar->hide();
        column->addWidget(bar);
        constexpr int width = 280;
        window.setFixedWidth(width);
        elapsed.start();
        window.show();
        Repaint();
    }

    void Advance(int done, int total) override
    {
        constexpr int quietMilliseconds = 1000;
        constexpr int betweenRepaints = 40;
        if (lastPaint.isValid() && !lastPaint.hasExpired(betweenRepaints))
            return;
        bar->setMaximum(total);
        bar->setValue(done);
        if (elapsed.hasExpired(quietMilliseconds))
            bar->show();
        Repaint();
    }

private:
    void Repaint()
    {
        lastPaint.start();
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }

    QDialog window{nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint};
    QProgressBar* bar;
    QElapsedTimer elapsed;
    QElapsedTimer lastPaint;
};

/// Keeps the form in front of the window that opened it, on any window manager.
void StandBefore(Form& form, const QWidget* caller)
{
    form.winId(); // creates the window handle
    if (caller && caller->windowHandle() && caller != &form)
        form.windowHandle()->setTransientParent(caller->windowHandle());
}

} // namespace

Answer QtDesk::Message(const QString& text, Icon icon, const QString& title, Buttons buttons)
{
    QMessageBox box(QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setTextFormat(Qt::PlainText); // messages may contain names of patients and files
    box.setIcon(BoxIcon(icon));
    box.setWindowTitle(title);
    box.setText(WithFrenchSpaces(text));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse); // a command can be copied
    if (buttons == Buttons::Ok) {
        box.setEscapeButton(box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole));
        box.exec();
        return Answer::Ok;
    }
    QPushButton* yes = box.addButton(QStringLiteral("&Oui"), QMessageBox::YesRole);
    QPushButton* no = box.addButton(QStringLiteral("&Non"), QMessageBox::NoRole);
    box.setDefaultButton(buttons == Buttons::NoYes ? no : yes);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes ? Answer::Yes : Answer::No;
}

void QtDesk::ShowModal(Form& form)
{
    form.Load();
    if (!form.IsLoaded()) // Form_Load may close the screen
        return;
    StandBefore(form, QApplication::activeWindow());
    form.exec();
}

void QtDesk::Beep()
{
    QApplication::beep();
}

std::unique_ptr<WaitNotice> QtDesk::Wait(const QString& text)
{
    return std::make_unique<WaitWindow>(WithFrenchSpaces(text));
}

void QtDesk::EndProgram(int code)
{
    std::fflush(nullptr);
    std::_Exit(code);
}

} // namespace forms
