#include "acts/New_Mecano.h"

#include "acts/Actualisation.h"
#include "core/calendar.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/opening.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/host/Host.h"

#include <QKeyEvent>
#include <QSignalBlocker>

using namespace basic;
using namespace core;
using namespace forms;

namespace acts {

namespace {

constexpr int SecondsPerDay = 22;
constexpr auto Unknown = "-?-";

QString DaysCaption(int days)
{
    if (days < 1)
        return Unknown;
    return days == 1 ? QStringLiteral("1 Jour") : PlainText(days) + " Jours";
}

/// The date of the first act selected by a statement; today if there is none.
QString DateOfFirst(const QString& statement)
{
    QueryText = statement;
    const dao::Recordset ActesByDate = TheDatabase.OpenRecordset(QueryText); // closed before it lists all acts
    return ActesByDate.IsEOF() ? DateText(host::Today()) : TextOrNothing(ActesByDate["Date"]);
}

} // namespace

New_Mecano::New_Mecano() : Form("New_Mecano")
{
    BuildForm();
    for (const int bound : {FirstDay, LastDay})
        Text1[bound].SelectedOnFocus = DateLength;
    OnEach(Image1, &Picture::clicked, *this, &New_Mecano::Image1_Click);
    OnEach(Image2, &Picture::clicked, *this, &New_Mecano::Image2_Click);
    On(SSCommand1, &Button::clicked, *this, &New_Mecano::SSCommand1_Click);
    On(SSCommand2, &Button::clicked, *this, &New_Mecano::SSCommand2_Click);
    On(Text1[FirstDay], &DateField::Entered, *this, [this] { Text1[LastDay].setFocus(); });
    On(Text1[LastDay], &DateField::Entered, *this, [this] { Image1_Click(Run); });
}

void New_Mecano::Form_Load()
{
    CenterForm(*this);
    setWindowTitle("   ");
    VisibleShare.setText(PickedDate);
    SkipCount = DialogResult;

    // Dates set here aren't typed and must not go through the key filters.
    const QSignalBlocker unfilteredStart(Text1[FirstDay]);
    const QSignalBlocker unfilteredEnd(Text1[LastDay]);
    FirstActDate.setText(DateOfFirst("Select * from Actes order by date"));
    // The first row in descending order: MoveLast would read all acts.
    LastActDate.setText(DateOfFirst("Select * from Actes order by date desc, num desc"));
    PermnTable.MoveFirst();
    Text1[FirstDay].setText(PermnTable["Date"].IsNull() ? FirstActDate.text() : PermnTable["Date"].Text());
    Text1[LastDay].setText(DateText(host::Today()));
}

void New_Mecano::Image1_Click(int index)
{
    switch (index) {
    case Run:
        return Confirm();
    case Cancel:
        RestoreLastDate();
        return Unload();
    case CloseReminder:
        return ShowMainPanel(SSCommand1);
    default:
        return ShowMainPanel(SSCommand2);
    }
}

void New_Mecano::Confirm()
{
    if (!ValidateDates())
        return;
    if (DaysBetween(DateValue(Text1[FirstDay].text()), DateValue(Text1[LastDay].text())) < 0) {
        MsgBox("Dates inversées", Icon::Critical, "ATTENTION");
        return;
    }
    RunActualisation();
    DialogResult = ResultDone;
    PickedDate = Text1[LastDay].text();
    answered = true;
    Unload();
}

bool New_Mecano::ValidateDates()
{
    for (const int bound : {FirstDay, LastDay}) {
        const auto day = TypedDay(Text1[bound].text());
        if (!day) {
            MsgBox("Saisie incorrecte", Icon::Critical, "ATTENTION");
            Text1[bound].setFocus();
            return false;
        }
        Text1[bound].setText(*day);
    }
    return true;
}

void New_Mecano::RestoreLastDate()
{
    DialogResult = ResultCancelled;
    PermnTable.MoveFirst();
    PickedDate = PermnTable["Date"].IsNull() ? FirstActDate.text() : PermnTable["Date"].Text();
    answered = true;
}

bool New_Mecano::Form_QueryUnload()
{
    if (!answered)
        RestoreLastDate();
    return false;
}

void New_Mecano::EscapePressed()
{
    // Esc doesn't close this screen: the day sheet would close after it and lose its toggles.
    if (SSPanel2.isVisibleTo(this))
        Image1_Click(CloseReminder);
    else if (SSPanel3.isVisibleTo(this))
        Image1_Click(CloseEstimate);
}

void New_Mecano::RunActualisation()
{
    QString message = "Actualisation terminée ! ! !";
    try {
        Actualisation run(Text1[FirstDay].text(), Text1[LastDay].text(), SkipCount);
        if (SkipCount == 0) {
            run.ShowAllInPeriod();
            message = "Actualisation (Le tout visible) terminée ! ! !";
        } else {
            const Hourglass pointer;
            run.ThinPeriod();
        }
    } catch (const RuntimeError& error) {
        ScratchText = ErrorText(error);
        CloseDataFiles();
        TheDesk().EndProgram(0);
    }
    MsgBox(message, Icon::Information, "Lumo_ZEP");
}

void New_Mecano::ShowDuration()
{
    const Int16 days = DaysBetween(DateValue(Text1[FirstDay].text()), DateValue(Text1[LastDay].text())) + 1;
    EstimatedDays.setText(DaysCaption(days));
    if (days < 0) {
        EstimatedDuration.setText(Unknown);
        return;
    }
    const int minutes = Product(days, SecondsPerDay) / 60;
    const int hours = minutes / 60;
    EstimatedDuration.setText((hours > 0 ? Str(hours) + " h" : QString()) + Str(minutes % 60) + " mn");
    if (days == 1 || days == 2)
        EstimatedDuration.setText("1 mn");
}

void New_Mecano::SSCommand2_Click()
{
    if (!ValidateDates())
        return;
    ShowDuration();
    ShowPanel(SSPanel3, Image1[CloseEstimate]);
}

void New_Mecano::SSCommand1_Click()
{
    ShowPanel(SSPanel2, Image1[CloseReminder]);
}

void New_Mecano::ShowPanel(Panel& panel, QWidget& focus)
{
    SSPanel1.hide();
    panel.show();
    focus.setFocus();
}

void New_Mecano::ShowMainPanel(QWidget& focus)
{
    SSPanel2.hide();
    SSPanel3.hide();
    SSPanel1.show();
    focus.setFocus();
}

void New_Mecano::Image2_Click(int index)
{
    for (const int bound : {FirstDay, LastDay})
        Text1[bound].setText(TypedDay(Text1[bound].text()).value_or(DateText(host::Today())));
    if (const auto chosen = PickDateFrom(Text1[index].text()))
        Text1[index].setText(*chosen);
}

bool New_Mecano::MoveBetweenDates(int key, const QObject* field)
{
    if (key == Qt::Key_Down)
        return Text1[field == &Text1[FirstDay] ? LastDay : FirstDay].setFocus(), true;
    if (key == Qt::Key_Up && field == &Text1[LastDay])
        return Text1[FirstDay].setFocus(), true;
    return false;
}

bool New_Mecano::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && MoveBetweenDates(static_cast<QKeyEvent*>(event)->key(), watched))
        return true;
    return Form::eventFilter(watched, event);
}

} // namespace acts
