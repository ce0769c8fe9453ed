#include "menu.h"

#include "core/MenuTable.h"
#include "core/Q_Date_2.h"
#include "core/globals.h"
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

    /// The entry's button on the main window opens these screens alone, one over the other.
    void Opens(const char* entry, const QStringList& screens)
    {
        SCOPED_TRACE(entry);
        QStringList opened;
        for (int screen = 0; screen < screens.size(); ++screen)
            desk.WhenModal<forms::Form>([&opened](forms::Form& form) {
                opened << form.objectName();
                form.Unload();
            });
        auto* const button = main->findChild<forms::Picture*>(QString("Task-") + entry);
        ASSERT_TRUE(button != nullptr && button->isVisible());
        button->click();
        desk.Verify();
        opened.sort();
        EXPECT_EQ(opened, screens);
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
        if (!entry.isSubmenu && std::string_view(entry.caption) != "-") {
            EXPECT_TRUE(!entry.shownAfterOpening || main->Entry(entry.control)->isEnabled()) << entry.control;
            EXPECT_FALSE(main->Entry(entry.control)->shortcut().isEmpty()) << entry.control;
        }

    const std::pair<const char*, const char*> screens[] = {
        {"mnu_Prest", "J_PROD"},     {"mnu_tarif", "Tarifs"},   {"NActes", "New_Act"},     {"mnu_Recap", "Planning"},
        {"mnu_recette", "Recettes"}, {"mnu_mens", "Mens_Act"},  {"mnu_asuppr", "F_Sppr"},  {"mnu_Deep", "F_Dep"},
        {"mnu_Inst", "F_Inst"},      {"mnu_Charges", "Chrges"}, {"mnu_resultat", "Result"}};
    for (const auto& [entry, screen] : screens)
        Opens(entry, {screen});
    Opens("NPatients", {"New_Rech", "j_Client"}); // the search over the list
    Opens("Evolution", {"Evolution"});
    desk.WhenModal<core::Q_Date_2>(
        [](core::Q_Date_2& calendar) { calendar.Image2[core::Q_Date_2::AcceptDay].click(); });
    Opens("mnu_Caisse", {"J_CAISSE"});
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
    Opens("NActes", {"New_Act"});
    Opens("mnu_mens", {"Mens_Act"});
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
    Opens("mnu_Caisse", {"J_CAISSE"});
    EXPECT_EQ(core::PickedDate, "17/06/2008");
}
