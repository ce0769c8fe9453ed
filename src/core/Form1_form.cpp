#include "core/Form1.h"

#include "platform/forms/Guard.h"
#include "platform/forms/Icons.h"
#include "platform/forms/Layout.h"

#include <QEvent>
#include <QLayout>
#include <QMenu>
#include <QToolButton>
#include <algorithm>

using namespace forms;

namespace core {

namespace {

constexpr struct {
    const char* control;
    Command command;
} Shortcuts[] = {
    {"mnu_aprpos", Command::OpenPractice}, {"mnu_Prest", Command::OpenServices},
    {"mnu_tarif", Command::OpenTariffs},   {"NPatients", Command::OpenPatients},
    {"NActes", Command::OpenActs},         {"mnuQ", Command::Quit},
    {"mnu_Recap", Command::OpenPlanning},  {"mnu_recette", Command::OpenJournal},
    {"mnu_mens", Command::OpenMonth},      {"mnu_asuppr", Command::OpenDeletedActs},
    {"mnu_Deep", Command::OpenExpenses},   {"mnu_Inst", Command::OpenPending},
    {"mnu_Caisse", Command::OpenCash},     {"mnu_Charges", Command::OpenCharges},
    {"mnu_resultat", Command::OpenResult},
};

} // namespace

void Form1::BuildMenu()
{
    std::map<std::string_view, QMenu*> submenus;
    for (const MenuEntry& entry : MenuTable()) {
        const QString caption = QString::fromUtf8(entry.caption);
        QMenu* parent = submenus[entry.parent];
        QAction* action = nullptr;
        if (entry.isSubmenu) {
            submenus[entry.control] = menu.addMenu(caption);
            action = submenus[entry.control]->menuAction();
        } else if (caption == "-") {
            action = parent->addSeparator();
        } else {
            action = parent->addAction(caption);
            const std::string_view control = entry.control;
            action->setEnabled(control == "mnu_aprpos" || control == "mnuQ" || openers.contains(control));
            On(*action, &QAction::triggered, *this, [this, &entry] { ChooseEntry(entry); });
        }
        action->setObjectName(QLatin1String(entry.control));
        entries[entry.control] = action;
    }
    for (const auto& [control, command] : Shortcuts)
        Entry(control)->setShortcut(KeysOf(command));
    menu.setFocusPolicy(Qt::StrongFocus);
    menu.setAccessibleName("Menu");
    for (const Command command : {Command::OpenMenu, Command::OpenMovements}) // no letter of "Mouvements" is marked
        OnCommand(command, [this] {
            menu.setFocus();
            menu.setActiveAction(Entry("mnu_6"));
        });
}

QAction* Form1::Entry(std::string_view control) const
{
    const auto entry = entries.find(control);
    return entry == entries.end() ? nullptr : entry->second;
}

void Form1::ShowMenuState(bool opened)
{
    for (const MenuEntry& entry : MenuTable())
        Entry(entry.control)->setVisible(opened ? entry.shownAfterOpening : entry.shownBeforeOpening);
}

void Form1::BuildForm()
{
    setWindowFlags(Qt::Window);
    menu.setObjectName("MainMenu");
    setAccessibleName("ZEP Lumo");
    setWindowIconText("ZEP Lumo"); // for task bars: the title is blank
    if (auto* more = menu.findChild<QToolButton*>())
        more->setAccessibleName("Suite du menu");

    Image3.setAlignment(Qt::AlignCenter);
    Dress(Image1, "quit", "Quitter");
    Dress(Image2, "quit-hover", "Quitter");
    Image2.setFocusPolicy(Qt::NoFocus);

    const int letterheadSizes[] = {20, 13, 11};
    for (int line = 0; line < Label1.Size(); ++line) {
        QFont font = Label1[line].font();
        font.setPointSize(letterheadSizes[line]);
        font.setBold(line == 0);
        Label1[line].setFont(font);
    }
    QFont titleFont = Label4[0].font();
    titleFont.setPointSize(28);
    titleFont.setBold(true);
    Label4[0].setFont(titleFont);
    Label4[0].setText("ZEP_Lumo");
    Label4[0].setMargin(8);

    for (QWidget* control : std::initializer_list<QWidget*>{&Label1[0], &Label1[1], &Label1[2], &Label4[0]}) {
        RetainSizeWhenHidden(*control);
        control->hide();
    }
    SetContent(Column{
        Label1[0],
        Label1[1],
        Label1[2],
        Item::Gap(),
        greeting,
        Item::Growing(Image3),
        Row{Label4[0], Item::Stretch(), Image1},
    });
    layout()->setMenuBar(&menu);
    menu.setFocus(); // not the quit picture, where Enter would end the program

    Image2.setParent(this);
    Image2.hide();
    Label4[0].installEventFilter(this);
    Image3.setMinimumSize(1, 1);
    Image3.setMouseTracking(true);
    Image3.installEventFilter(this);
    setMouseTracking(true);
}

void Form1::ShowBackdrop()
{
    constexpr int usualSide = 480;
    const int side = std::min({usualSide, Image3.width(), Image3.height()});
    Image3.setPixmap(IconPixmap("backdrop", side, devicePixelRatioF()));
}

void Form1::changeEvent(QEvent* event)
{
    Form::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ShowBackdrop();
}

bool Form1::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &Image3 && event->type() == QEvent::Resize)
        ShowBackdrop();
    if (watched == &Label4[0] && event->type() == QEvent::Enter)
        Label4[0].setFrameShape(QFrame::Box);
    if (watched == &Label4[0] && event->type() == QEvent::Leave)
        Label4[0].setFrameShape(QFrame::NoFrame);
    return Form::eventFilter(watched, event);
}

void Form1::mouseMoveEvent(QMouseEvent* event)
{
    Image2.hide();
    Form::mouseMoveEvent(event);
}

void Form1::resizeEvent(QResizeEvent* event)
{
    Form::resizeEvent(event);
    layout()->activate();
    Image2.setGeometry(Image1.geometry());
}

} // namespace core
