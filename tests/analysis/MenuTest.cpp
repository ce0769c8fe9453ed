#include "menu.h"
#include "analysis/Chrges.h"
#include "analysis/Mens_Act.h"
#include "analysis/Result.h"
#include "core/globals.h"
#include "support/MainWindow.h"
#include "support/Practice.h"

using forms::Icon;

namespace {

class AnalysisMenu : public testing::Test {
protected:
    core::Form1& Start()
    {
        auto& main = desk.Open<core::Form1>(MenuScreens());
        tests::TypeCode(desk, main, practice.Folder(), "6");
        return main;
    }

    template <class Screen>
    void Opens(core::Form1& main, const char* entry)
    {
        desk.WhenModal<Screen>([](Screen& screen) { screen.Unload(); });
        main.Entry(entry)->trigger();
        desk.Verify();
    }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(AnalysisMenu, OpensTheMonthAndTheResultOnlyWhereThereAreActs)
{
    auto& main = Start();
    desk.ExpectMessage("Aucun acte enregistré", Icon::Information, "ATTENTION");
    main.Entry("mnu_mens")->trigger();
    desk.ExpectMessage("Aucune activité enregistrée", Icon::Information, "ZEP Lumo");
    main.Entry("mnu_resultat")->trigger();
    Opens<analysis::Chrges>(main, "mnu_Charges"); // charges don't ask for acts

    practice.Act({});
    Opens<analysis::Mens_Act>(main, "mnu_mens");
    Opens<analysis::Result>(main, "mnu_resultat");
}
