#include "platform/forms/QtDesk.h"

#include "platform/forms/Form.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
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

/// Keeps the form in front of the window it was called from, also on desktops that let windows change places.
void StandBefore(Form& form, const QWidget* caller)
{
    form.winId(); // makes the window handle
    if (caller && caller->windowHandle() && caller != &form)
        form.windowHandle()->setTransientParent(caller->windowHandle());
}

} // namespace

Answer QtDesk::Message(const QString& text, Icon icon, const QString& title, Buttons buttons)
{
    QMessageBox box(QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setTextFormat(Qt::PlainText); // names of patients and files stand in messages
    box.setIcon(BoxIcon(icon));
    box.setWindowTitle(title);
    box.setText(text);
    if (buttons == Buttons::Ok) {
        box.setEscapeButton(box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole));
        box.exec();
        return Answer::Ok;
    }
    QPushButton* yes = box.addButton(QStringLiteral("&Oui"), QMessageBox::YesRole);
    QPushButton* no = box.addButton(QStringLiteral("&Non"), QMessageBox::NoRole);
    box.setDefaultButton(yes);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes ? Answer::Yes : Answer::No;
}

void QtDesk::ShowModal(Form& form)
{
    form.Load();
    if (!form.IsLoaded()) // Form_Load itself may close the screen
        return;
    StandBefore(form, QApplication::activeWindow());
    form.exec();
}

void QtDesk::Beep()
{
    QApplication::beep();
}

void QtDesk::EndProgram(int code)
{
    std::fflush(nullptr);
    std::_Exit(code);
}

} // namespace forms
