#pragma once

#include "acts/F_Sppr.h"
#include "acts/New_Act.h"
#include "acts/New_Mecano.h"
#include "acts/New_Rech.h"
#include "acts/j_Client.h"
#include "analysis/Chrges.h"
#include "analysis/Mens_Act.h"
#include "analysis/Result.h"
#include "cash/F_Inst.h"
#include "cash/J_CAISSE.h"
#include "cash/Recettes.h"
#include "catalogue/J_PROD.h"
#include "catalogue/Tarifs.h"
#include "core/Auteur.h"
#include "core/Identif.h"
#include "core/Q_Date_2.h"
#include "core/globals.h"
#include "evolution/Evolution.h"
#include "expenses/F_Dep.h"
#include "planning/Planning.h"
#include "support/ScreenTest.h"

namespace tests::screens {

using enum forms::Command;
using forms::Command;
using forms::Form;

/// Answers every message, the safe way, and closes every screen that comes up.
class QuietDesk : public ScriptedDesk {
public:
    int events = 0;

    forms::Answer Message(const QString&, forms::Icon, const QString&, forms::Buttons buttons) override
    {
        ++events;
        return buttons == forms::Buttons::Ok ? forms::Answer::Ok : forms::Answer::No;
    }
    void ShowModal(Form& form) override
    {
        ++events;
        form.Load();
        form.Unload();
    }
};

template <class Screen>
Form& Open(ScriptedDesk& desk)
{
    core::PickedDate = "17/06/2008";
    core::PickedDay = 17;
    core::PickedMonth = 6;
    core::PickedYear = 2008;
    core::DialogResult = 0;
    return desk.Open<Screen>();
}

/// A screen, the keys that bring it to one of its states, and the commands whose keys act there.
struct State {
    const char* name;
    Form& (*open)(ScriptedDesk&);
    QList<QKeyCombination> before;
    QList<Command> acting;
};

inline constexpr QKeyCombination Enter = Qt::Key_Return, Page = Qt::CTRL | Qt::Key_PageDown, Date = Qt::Key_F4,
                                 Change = Qt::Key_F2, Paper = Qt::CTRL | Qt::Key_P;

/// "Suppr" also acts in a field that has a text, all of which is selected.
inline const State States[] = {
    {"Services",
     Open<catalogue::J_PROD>,
     {Qt::Key_Down, Qt::Key_Down},
     {Modify, Accept, New, Delete, MoveUp, MoveDown, Leave}},
    {"Service", Open<catalogue::J_PROD>, {Qt::Key_Down, Change}, {Accept, Delete, MoveDown, Leave}},
    {"Rates", Open<catalogue::Tarifs>, {}, {Modify, Accept, Leave}},
    {"Rate", Open<catalogue::Tarifs>, {Change}, {Accept, Delete, Leave}},
    {"Patients", Open<acts::j_Client>, {}, {Accept, Search, Leave}},
    {"Card number", Open<acts::New_Rech>, {}, {Accept, NextPage, Leave}},
    {"Names", Open<acts::New_Rech>, {Page}, {Accept, PreviousPage, Leave}},
    {"Patients found", Open<acts::New_Rech>, {Page, Qt::Key_B, Enter, Enter}, {Search, Leave}},
    {"Acts", Open<acts::New_Act>, {}, {ChooseDate, Accept, NextPage, Previous, Next, Leave}},
    {"Display", Open<acts::New_Act>, {Page}, {Accept, PreviousPage, Leave}},
    {"Actualisation", Open<acts::New_Mecano>, {}, {ChooseDate, Accept, Delete, Leave}},
    {"Calendar", Open<core::Q_Date_2>, {}, {Accept, Leave}},
    {"Cash", Open<cash::J_CAISSE>, {}, {ChooseDate, Print, NextPage, Previous, Next, Leave}},
    {"Pending acts",
     Open<cash::J_CAISSE>,
     {Page, Page},
     {Modify, ChooseDate, Print, PreviousPage, NextPage, Previous, Next, Leave}},
    {"Correction", Open<cash::J_CAISSE>, {Page, Page, Change, Enter}, {ChooseDate, Accept, Leave}},
    {"Settlements, dates", Open<cash::F_Inst>, {}, {ChooseDate, Accept, Delete, NextPage, Leave}},
    {"Settlements", Open<cash::F_Inst>, {Enter}, {Modify, ChooseDate, Print, Leave}},
    {"Settlement", Open<cash::F_Inst>, {Enter, Change, Enter}, {Accept, Leave}},
    {"Journal, dates", Open<cash::Recettes>, {}, {ChooseDate, Accept, Delete, NextPage, Leave}},
    {"Journal", Open<cash::Recettes>, {Enter}, {ChooseDate, Print, NextPage, Leave}},
    {"Journal, codes", Open<cash::Recettes>, {Enter, Page}, {ChooseDate, Print, PreviousPage, NextPage, Leave}},
    {"Journal, detail", Open<cash::Recettes>, {Enter, Page, Page}, {ChooseDate, Print, PreviousPage, Leave}},
    {"Journal, scope", Open<cash::Recettes>, {Enter, Page, Page, Paper}, {Accept, Print, Leave}},
    {"Month", Open<analysis::Mens_Act>, {}, {ChooseDate, Previous, Next, Leave}},
    {"Month, choice", Open<analysis::Mens_Act>, {Date, Qt::Key_Tab}, {ChooseDate, Accept, Delete, Leave}},
    {"Evolution", Open<evolution::Evolution>, {}, {ChooseDate, Print, NextPage, Previous, Next, Leave}},
    {"Deleted acts", Open<acts::F_Sppr>, {}, {ChooseDate, Delete, Print, Leave}},
    {"Deleted acts, date", Open<acts::F_Sppr>, {Date}, {ChooseDate, Accept, Leave}},
    {"Expenses", Open<expenses::F_Dep>, {}, {Modify, ChooseDate, New, Delete, Leave}},
    {"Expense", Open<expenses::F_Dep>, {Change}, {ChooseDate, Accept, Delete, Leave}},
    {"Expenses, dates", Open<expenses::F_Dep>, {Date}, {ChooseDate, Accept, Delete, NextPage, Leave}},
    {"Planning", Open<planning::Planning>, {}, {ChooseDate, Previous, Next, Leave}},
    {"Planning, date", Open<planning::Planning>, {Date}, {ChooseDate, Accept, Delete, Leave}},
    {"Appointments", Open<planning::Planning>, {Enter}, {Print, Leave}},
    {"Appointments, print", Open<planning::Planning>, {Enter, Paper}, {Print, Leave}},
    {"Charges", Open<analysis::Chrges>, {}, {Accept, Leave}},
    {"Result, dates", Open<analysis::Result>, {}, {ChooseDate, Accept, Delete, NextPage, Leave}},
    {"Result", Open<analysis::Result>, {Enter}, {ChooseDate, Print, Leave}},
    {"Letterhead", Open<core::Identif>, {}, {Accept, MoveDown, Leave}},
    {"Explorer", Open<core::Auteur>, {}, {Leave}},
};

/// A practice whose screens all have something to show.
class EachScreen : public testing::Test {
protected:
    EachScreen()
    {
        practice.Open();
        for (int place = 2; place < 5; ++place)
            practice.Service("Autre", place);
        practice.Act({.flag_R = data::PaymentCode::P});
        practice.Act({});
        practice.Expense({.montant = 10});
        practice.Add("Plani", {{"date", "17/06/2008"}, {"Num_Presta", 1}, {"HH", 0}, {"num_patient", 1}});
        practice.Add("Actes_suppr", {{"Date_Suppr", "17/06/2008"}});
        forms::OnHelp([this](const QString&) { ++desk.events; });
    }
    ~EachScreen() override { forms::OnHelp({}); }

    static void Type(Form& screen, QKeyCombination keys)
    {
        QWidget* const focused = screen.focusWidget();
        Press(focused != nullptr ? *focused : screen, keys.key(), keys.keyboardModifiers());
    }

    Form& Reach(const State& state)
    {
        Form& screen = state.open(desk);
        for (const QKeyCombination keys : state.before)
            Type(screen, keys);
        return screen;
    }

    Practice practice;
    QuietDesk desk;
};

} // namespace tests::screens
