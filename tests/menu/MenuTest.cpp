#include "menu.h"

#include "acts/F_Sppr.h"
#include "acts/New_Act.h"
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
#include "core/MenuTable.h"
#include "core/Q_Date_2.h"
#include "core/globals.h"
#include "expenses/F_Dep.h"
#include "planning/Planning.h"
#include "support/MainWindow.h"
#include "support/Practice.h"

using forms::Icon;

namespace {

class Menu : public testing::Test {
protected:
    core::Form1& Start()
    {
        auto& window = desk.Open<core::Form1>(MenuScreens());
        tests::TypeCode(desk, window, practice.Folder(), "6");
        main = &window;
        return window;
    }

    /// The button of the entry on the main window; null if none shows.
    forms::Picture* Task(const QString& entry)
    {
        auto* const button = main->findChild<forms::Picture*>("Task-" + entry);
        return button != nullptr && button->isVisible() ? button : nullptr;
    }

    /// The entry's button opens only this screen.
    template <class Screen>
    void Opens(const char* entry)
    {
        SCOPED_TRACE(entry);
        bool isOpened = false;
        desk.WhenModal<Screen>([&](Screen& screen) {
            isOpened = true;
            screen.Unload();
        });
        ASSERT_NE(Task(entry), nullptr);
        Task(entry)->click();
        desk.Verify();
        EXPECT_TRUE(isOpened);
    }

    /// The list of patients opens behind the search.
    void OpensPatients()
    {
        bool isOpened = false;
        desk.WhenModal<acts::j_Client>([&](acts::j_Client& list) {
            isOpened = true;
            list.Unload();
        });
        desk.WhenModal<acts::New_Rech>([](acts::New_Rech& search) { search.Unload(); });
        main->Entry("NPatients")->trigger();
        desk.Verify();
        EXPECT_TRUE(isOpened);
    }

    void Refuses(const char* entry, const QString& message, const QString& title)
    {
        SCOPED_TRACE(entry);
        desk.ExpectMessage(message, Icon::Information, title);
        main->Entry(entry)->trigger();
        desk.Verify();
    }

    tests::Practice practice;
    ScriptedDesk desk;
    core::Form1* main = nullptr;
};

} // namespace

TEST_F(Menu, OpensTheScreenOfEachEntry)
{
    practice.Act({});
    practice.Expense({.montant = 10});
    practice.Add("Actes_suppr", {{"Date_Suppr", "17/06/2008"}});
    Start();
    for (const core::MenuEntry& entry : core::MenuTable())
        EXPECT_TRUE(!entry.shownAfterOpening || main->Entry(entry.control)->isEnabled()) << entry.control;

    Opens<catalogue::J_PROD>("mnu_Prest");
    Opens<catalogue::Tarifs>("mnu_tarif");
    Opens<acts::New_Act>("NActes");
    Opens<planning::Planning>("mnu_Recap");
    Opens<cash::Recettes>("mnu_recette");
    Opens<analysis::Mens_Act>("mnu_mens");
    Opens<acts::F_Sppr>("mnu_asuppr");
    Opens<expenses::F_Dep>("mnu_Deep");
    Opens<cash::F_Inst>("mnu_Inst");
    Opens<analysis::Chrges>("mnu_Charges");
    Opens<analysis::Result>("mnu_resultat");

    desk.WhenModal<core::Q_Date_2>(
        [](core::Q_Date_2& calendar) { calendar.Image2[core::Q_Date_2::AcceptDay].click(); });
    Opens<cash::J_CAISSE>("mnu_Caisse");
    OpensPatients();
}

TEST_F(Menu, ChecksForRowsBeforeItOpensAScreen)
{
    practice.Write("delete from Patients");
    Start();
    Refuses("NPatients", "Aucune patient enregistré", "ZEP Lumo");
    Refuses("NActes", "Aucun acte enregistré", "ATTENTION");
    Refuses("mnu_recette", "Aucune recette enregistrée", "ZEP Lumo");
    Refuses("mnu_mens", "Aucun acte enregistré", "ATTENTION");
    Refuses("mnu_asuppr", "Aucun acte supprimé", "Lumo ZEP");
    Refuses("mnu_Inst", "Aucun règlement en instance", "ATTENTION");
    Refuses("mnu_Caisse", "Aucun mouvement de fonds enregistré", "Lumo ZEP");
    Refuses("mnu_resultat", "Aucune activité enregistrée", "ZEP Lumo");

    practice.Act({.flag_R = data::PaymentCode::P}); // settled: nothing is pending
    Opens<acts::New_Act>("NActes");
    Opens<analysis::Mens_Act>("mnu_mens");
    Refuses("mnu_Inst", "Aucun règlement en instance", "ATTENTION");
    Refuses("mnu_Caisse", "Aucun mouvement de fonds enregistré", "Lumo ZEP"); // acts don't count as cash activity
    const auto pickDay = [this](core::Q_Date_2::Action answer) {
        desk.WhenModal<core::Q_Date_2>([answer](core::Q_Date_2& picker) { picker.Image2[answer].click(); });
    };
    const dao::Key expense = practice.Expense({.montant = 5}); // an expense alone does, and so does an appointment
    pickDay(core::Q_Date_2::CancelDay);                        // nothing opens
    main->Entry("mnu_Caisse")->trigger();
    practice.Remove("Recettes", expense);
    practice.Appointment("17/06/2008");
    pickDay(core::Q_Date_2::AcceptDay);
    Opens<cash::J_CAISSE>("mnu_Caisse");
    EXPECT_EQ(core::PickedDate, "17/06/2008");
}
