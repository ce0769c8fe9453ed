#include "core/Form1.h"

#include "archives/Archives.h"
#include "core/Auteur.h"
#include "core/calendar.h"
#include "core/configuration.h"
#include "core/globals.h"
#include "core/opening.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Display.h"
#include "platform/forms/Guard.h"

#include <QApplication>
#include <QTimer>

using namespace forms;

namespace core {

namespace {

constexpr QSize DesignedDisplay(1024, 768);

bool HasRows(const QString& statement)
{
    QueryText = statement;
    return TheDatabase.OpenRecordset(QueryText).RecordCount() != 0;
}

void ShowRefusal(const MenuEntry& entry)
{
    MsgBox(QString::fromUtf8(entry.messageOnEmpty), Icon::Information, QString::fromUtf8(entry.title));
}

} // namespace

Form1::Form1(ScreenOpeners screens) : Form("Form1"), openers(std::move(screens))
{
    BuildMenu();
    BuildGreeting();
    BuildForm();
    On(Image1, &Picture::clicked, *this, &Form1::mnuQ_Click);
    On(Image2, &Picture::clicked, *this, &Form1::mnuQ_Click);
    On(Image1, &Picture::MouseOver, *this, [this] { Image2.show(); });
    OnFatalError(CloseDataFiles);
}

void Form1::Form_Load()
{
    setWindowTitle(" ");
    ProgramFolder = QCoreApplication::applicationDirPath();
    FillCalendarNames();
    LanguageMode = True;
    ShowMenuState(false);
    FitDisplay();
}

void Form1::FitDisplay()
{
    InitialScreen = DisplaySize();
    DisplayChanged = false;
    if (InitialScreen != DesignedDisplay) {
        ChangeWorkingArea(DesignedDisplay);
        DisplayChanged = true;
    }
    resize(WorkingArea().boundedTo(RoomOnScreen()));
}

void Form1::mnu_aprpos_Click()
{
    Auteur dialog;
    TheDesk().ShowModal(dialog);
    if (DialogResult != ResultAccepted)
        return;

    CreateTheWorkspace();
    ShowLetterhead();
    ShowMenuState(true);
    OpenDataFiles();
}

void Form1::ShowLetterhead()
{
    for (int line = 0; line < Label1.Size(); ++line) {
        Label1[line].setText(TrimLetterheadField(line + 1));
        Label1[line].show();
    }
    Label4[0].show();
}

void Form1::ChooseEntry(const MenuEntry& entry)
{
    const std::string_view control = entry.control;
    if (control == "mnu_aprpos")
        return mnu_aprpos_Click();
    if (control == "mnuQ")
        return mnuQ_Click();
    if (control == "mnu_Caisse")
        return mnu_Caisse_Click();

    if (*entry.check != '\0' && !HasRows(QString::fromUtf8(entry.check)))
        return ShowRefusal(entry);
    if (control == "mnu_Prest")
        DialogResult = 0;
    OpenScreen(control);
}

void Form1::OpenScreen(std::string_view control)
{
    const auto opener = openers.find(control);
    if (opener != openers.end())
        opener->second();
}

void Form1::mnu_Caisse_Click()
{
    // An appointment or an expense counts as activity; acts alone don't.
    const bool hasAppointments = HasRows("select * from Plani");
    const bool hasExpenses = HasRows("select * from recettes");
    if (!hasAppointments && !hasExpenses) {
        for (const MenuEntry& entry : MenuTable())
            if (std::string_view(entry.control) == "mnu_Caisse")
                ShowRefusal(entry);
        return;
    }
    if (PickDateFromToday())
        OpenScreen("mnu_Caisse");
}

void Form1::mnuQ_Click()
{
    Unload();
}

bool Form1::Form_QueryUnload()
{
    constexpr bool staysOpen = true;
    if (MsgBox("Veuiller Confirmer Fin de Travail !!", Icon::Question, "ZEP Lumo", Buttons::YesNo) == Answer::Yes)
        EndNow();
    return staysOpen;
}

void Form1::EndForSystem()
{
    QTimer::singleShot(0, this, &Form1::CloseTopScreen);
}

void Form1::EndNow()
{
    TheDesk().EndProgram(ShutDown());
}

/// Closes the front window and schedules itself for the next one, which is in front once this modal loop has returned.
void Form1::CloseTopScreen()
{
    QWidget* const front = QApplication::activeModalWidget();
    if (front == nullptr) {
        Guarded([this] { EndNow(); });
        return;
    }
    constexpr int millisecondsBetween = 10;
    QTimer::singleShot(millisecondsBetween, this, &Form1::CloseTopScreen);
    front->close();
}

int Form1::ShutDown()
{
    try {
        if (DisplayChanged)
            ChangeWorkingArea(InitialScreen);
        archives::ArchiveNotes notes;
        if (Label1[0].isVisibleTo(this)) {
            const auto notice = TheDesk().Wait("Archivage ...");
            if (TheDatabase.IsOpen())
                TheDatabase.RequireSameFile(); // don't archive another file over the last good copy
            CloseDataFiles();
            notes =
                archives::CopyToArchives(DataFolder, [&notice](int done, int total) { notice->Advance(done, total); });
        }
        if (const QString text = notes.Text(); !text.isEmpty())
            MsgBox(text, Icon::Information, "ZEP Lumo");
    } catch (const basic::RuntimeError& error) {
        MsgBox(ErrorText(error), Icon::Exclamation, "ZEP Lumo");
        return error.Code() == basic::Error::FileReplaced ? 1 : 0;
    }
    return 0;
}

} // namespace core
