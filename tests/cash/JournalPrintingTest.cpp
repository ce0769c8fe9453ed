#include "cash/Recettes.h"

#include "support/Dates.h"
#include "support/Reports.h"

#include <QGuiApplication>

using cash::Recettes;
using core::PeriodChooser;
using forms::Icon;

namespace PaymentCode = data::PaymentCode;

namespace {

class JournalPrinting : public testing::Test {
protected:
    JournalPrinting()
    {
        tests::PutTemplate(practice, "ZEP_DTAL.RPT");
        PutTemplateOver("Prov", "ZEP_RCAP.RPT");
        PutTemplateOver("RCP2", "ZEP_RCP2.RPT");
        practice.Add("Tarif", {{"C", 100}, {"K0", 10}, {"K12", 500}});
        practice.Service("Soins & Co", 2);
        first = practice.Act(
            {.day = "16/06/2008", .montant = 300.25, .flag_R = PaymentCode::RMinus, .num_presta = 2, .Type = "K12"});
        second = practice.Act({.montant = 100, .flag_R = PaymentCode::P});
        third = practice.Act(
            {.day = "16/06/2008", .montant = 0, .flag_R = PaymentCode::P, .num_presta = 2, .Type = dao::Value()});
        practice.Write("Update textes set ch4 = 'titre 4', ch5 = 'titre 5', ch6 = 'titre 6', ch7 = 'titre 7', "
                       "ch8 = 'titre 8'");
        practice.Write("Insert into Prov (num, unite) values (7, 'ancienne ligne')");
        practice.Write("Insert into RCP2 (denom) values ('ancienne ligne')");
        practice.Open();
    }

    /// A small report of the rows of a scratch table.
    void PutTemplateOver(const char* table, const char* name)
    {
        QFile file(practice.File(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("title = 'Journal'\n[rows]\nselect = 'select rowid as ligne from ");
        file.write(table);
        file.write("'\n[[column]]\nfield = 'ligne'\nwidth_mm = 20\n");
    }

    Recettes& Open() { return desk.Open<Recettes>(); }
    Recettes& OpenOnPeriod()
    {
        auto& screen = Open();
        tests::AcceptPeriod(screen.Dates, "16/06/2008", "17/06/2008");
        return screen;
    }

    /// Clicks a print button on its page.
    static void Print(Recettes& screen, int button)
    {
        screen.SSTab1.setCurrentIndex(button == Recettes::PrintCodes ? Recettes::CodesTab : Recettes::RecapTab);
        Click(screen.Image3[button]);
    }
    /// Chooses in the scope panel and accepts.
    static void PrintScope(Recettes& screen, int scope)
    {
        Print(screen, Recettes::PrintDetail);
        screen.SSOption1[scope].click();
        Click(screen.Image4[Recettes::Accept]);
        EXPECT_TRUE(IsReading(screen));
    }

    static bool IsReading(Recettes& screen)
    {
        return screen.SSTab1.isEnabled() && screen.Image1[Recettes::OtherDates].isVisible() &&
               !screen.SSPanel3.isVisible();
    }

    QStringList Headings()
    {
        return tests::RowsOf(practice, "select ch4, ch5, ch6, ch7, ch8 from textes").value(0).split('|');
    }
    QStringList Scratch() { return tests::RowsOf(practice, "select num, unite, Page, Mt, Mt2 from Prov"); }
    QStringList Codes() { return tests::RowsOf(practice, "select denom, C1, C2, C3, C4, C5, C6, C7 from RCP2"); }

    static QString Row(dao::Key act, const QString& value) { return QString("%1|-|-|%2|0").arg(act).arg(value); }

    const QStringList periodHeadings{"Journal d'activité de la", "Période du  Lun  16/06/2008 au Mar  17/06/2008", "3",
                                     "  400 ", "titre 8"};
    dao::Key first = 0, second = 0, third = 0;
    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(JournalPrinting, PrintsTheServicesAsShown)
{
    auto& screen = OpenOnPeriod();
    Click(screen.Grid1, 1);

    tests::ExpectPreview(desk, "Journal d'activité Période du Lun 16-06-2008 au Mar 17-06-2008");
    Print(screen, Recettes::PrintRecap);

    EXPECT_EQ(Headings(), periodHeadings);
    EXPECT_EQ(Scratch(), QStringList({"-|Consultation|1|100|100", "-|ECG|2|300.25|699.75", "-|Soins & Co|0|0|0"}));
    EXPECT_EQ(screen.Grid1.Row(), 1); // the current service stays
    EXPECT_EQ(Codes(), QStringList("ancienne ligne|-|-|-|-|-|-|-"));
}

TEST_F(JournalPrinting, PrintsEveryCodeWithoutTheTotals)
{
    for (int state = PaymentCode::NP; state <= PaymentCode::AB; ++state) // one NP, two R- ... six AB
        for (int act = 0; act <= state; ++act)
            practice.Act({.flag_R = state, .Type = "K5"});
    auto& screen = OpenOnPeriod();

    tests::ExpectPreview(desk, "Journal d'activité par code Période du Lun 16-06-2008 au Mar 17-06-2008");
    Print(screen, Recettes::PrintCodes);

    EXPECT_EQ(Headings(), QStringList({"Période du  Lun  16/06/2008 au Mar  17/06/2008", "titre 5", "titre 6",
                                       "titre 7", "titre 8"}));
    const QStringList codes = Codes();
    ASSERT_EQ(codes.size(), 32);
    EXPECT_EQ(codes[0], "C|0|0|1|0|0|0|1");
    EXPECT_EQ(codes[1], "K0|0|0|0|0|0|0|0");
    EXPECT_EQ(codes[6], "K5|1|2|3|4|5|6|21");
    EXPECT_EQ(codes[13], "K12|0|1|1|0|0|0|2");
    EXPECT_EQ(codes[31], "K30|0|0|0|0|0|0|0");
    EXPECT_EQ(Scratch(), QStringList("7|ancienne ligne|-|-|0"));
}

TEST_F(JournalPrinting, AsksForTheScopeOfTheDetail)
{
    auto& screen = OpenOnPeriod();
    Click(screen.Grid1, 2);
    Print(screen, Recettes::PrintDetail);
    EXPECT_TRUE(screen.SSPanel3.isVisible());
    EXPECT_FALSE(screen.SSTab1.isEnabled());
    EXPECT_FALSE(screen.Image1[Recettes::OtherDates].isVisible());
    EXPECT_EQ(screen.SSOption1[Recettes::CurrentUnit].text(), "Soins && Co"); // shown with one "&"
    EXPECT_TRUE(screen.SSOption1[Recettes::Nothing].isChecked());

    desk.ExpectMessage("Sélection omise", Icon::Critical, "Attention");
    Press(screen.SSOption1[Recettes::Nothing], Qt::Key_Return);
    EXPECT_TRUE(screen.SSPanel3.isVisible());

    desk.ExpectMessage("Aucune activité dans cette unité", Icon::Critical, "ATTENTION");
    Press(screen.SSOption1[Recettes::Nothing], Qt::Key_Up);
    Press(screen.SSOption1[Recettes::CurrentUnit], Qt::Key_Return);
    EXPECT_TRUE(IsReading(screen));

    for (const bool byKey : {true, false}) {
        Print(screen, Recettes::PrintDetail);
        EXPECT_TRUE(screen.SSOption1[Recettes::Nothing].isChecked());
        if (byKey)
            Press(screen.SSOption1[Recettes::Nothing], Qt::Key_Escape);
        else
            Click(screen.Image4[Recettes::Cancel]);
        EXPECT_TRUE(IsReading(screen));
    }
    EXPECT_EQ(Scratch(), QStringList("7|ancienne ligne|-|-|0"));
}

TEST_F(JournalPrinting, PrintsTheActsOfOneServiceWithTheTotalsOfAll)
{
    auto& screen = OpenOnPeriod();
    Click(screen.Grid1, 1);

    tests::ExpectPreview(desk, "Détail ECG Période du Lun 16-06-2008 au Mar 17-06-2008");
    PrintScope(screen, Recettes::CurrentUnit);

    EXPECT_EQ(Headings(), periodHeadings);
    EXPECT_EQ(Scratch(), QStringList({Row(first, "199.75"), Row(third, "500")}));
    EXPECT_EQ(screen.Grid1.Col(), Recettes::Count);
}

TEST_F(JournalPrinting, PrintsTheListedActsAsTheyAreAtThePrint)
{
    const dao::Key unpaid = practice.Act({.montant = 5, .num_presta = 3, .Type = "K0"});
    const dao::Key withoutCode = practice.Act(
        {.flag_R = PaymentCode::P, .num_presta = 3, .Type = dao::Value()}); // takes the code of the act before
    auto& screen = OpenOnPeriod();
    practice.Write(QString("Update Actes set montant = 100 where num = %1").arg(first));
    practice.Remove("Actes", third);
    practice.Act({.flag_R = PaymentCode::P}); // after the fill: not listed, not printed

    tests::ExpectPreview(desk, "Détail Période du Lun 16-06-2008 au Mar 17-06-2008");
    PrintScope(screen, Recettes::AllUnits);

    const QStringList rows{Row(second, "100"), Row(first, "400"), Row(third, "0"), Row(unpaid, "0"),
                           Row(withoutCode, "10")};
    EXPECT_EQ(Scratch(), rows);
    EXPECT_EQ(Headings(), QStringList({"Journal d'activité de la", "Période du  Lun  16/06/2008 au Mar  17/06/2008",
                                       "5", "  405 ", "titre 8"}));

    tests::ExpectPreview(desk, "Journal d'activité Période du Lun 16-06-2008 au Mar 17-06-2008");
    Print(screen, Recettes::PrintRecap);
    EXPECT_EQ(Scratch().size(), 3);
    tests::ExpectPreview(desk, "Détail Période du Lun 16-06-2008 au Mar 17-06-2008");
    PrintScope(screen, Recettes::AllUnits);
    EXPECT_EQ(Scratch(), rows);
}

TEST_F(JournalPrinting, PrintsTheLastFill)
{
    auto& screen = OpenOnPeriod();
    practice.Write("Update Presta set Ordre = 9 where num = 1");
    const auto showDay = [&](const QString& day) {
        Click(screen.Image1[Recettes::OtherDates]);
        tests::AcceptDay(screen.Dates, day);
    };
    showDay("17/06/2008");
    tests::ExpectPreview(desk, "Détail Journée du Mar 17-06-2008");
    PrintScope(screen, Recettes::AllUnits);
    EXPECT_EQ(Scratch(), QStringList(Row(second, "100")));

    showDay("16/06/2008");
    Click(screen.Grid1, 0); // the other service is the first one now
    tests::ExpectPreview(desk, "Détail ECG Journée du Lun 16-06-2008");
    PrintScope(screen, Recettes::CurrentUnit);
    EXPECT_EQ(Scratch(), QStringList({Row(first, "199.75"), Row(third, "500")}));
}

TEST_F(JournalPrinting, PrintsBeforeTheFirstFill)
{
    auto& screen = Open();
    Click(screen.Dates.Image2[PeriodChooser::CancelDay]);

    tests::ExpectPreview(desk, "Journal d'activité");
    Print(screen, Recettes::PrintRecap);
    EXPECT_EQ(Headings(), QStringList({"Journal d'activité de la", "", "", "", "titre 8"}));
    EXPECT_EQ(Scratch(), QStringList("-||0|0|0"));

    tests::ExpectPreview(desk, "Journal d'activité par code");
    Print(screen, Recettes::PrintCodes);
    EXPECT_EQ(Codes().size(), 32);

    desk.ExpectMessage("Aucune activité dans cette unité", Icon::Critical, "ATTENTION");
    PrintScope(screen, Recettes::CurrentUnit);
    tests::ExpectPreview(desk, "Détail");
    PrintScope(screen, Recettes::AllUnits);
    EXPECT_EQ(Scratch(), QStringList());
}

TEST_F(JournalPrinting, ChangesNothingWithoutATemplate)
{
    auto& screen = OpenOnPeriod();
    for (const char* name : {"ZEP_RCAP.RPT", "ZEP_RCP2.RPT", "ZEP_DTAL.RPT"})
        tests::RemoveTemplate(practice, name);

    desk.ExpectMessage("Fichier ZEP_RCAP.RPT absent", Icon::Information, "ZEP Lumo");
    Print(screen, Recettes::PrintRecap);
    desk.ExpectMessage("Fichier ZEP_RCP2.RPT absent", Icon::Information, "ZEP Lumo");
    Print(screen, Recettes::PrintCodes);
    for (const int scope : {Recettes::CurrentUnit, Recettes::AllUnits}) {
        desk.ExpectMessage("Fichier ZEP_DTAL.RPT absent", Icon::Information, "ZEP Lumo");
        PrintScope(screen, scope);
    }
    EXPECT_EQ(Headings()[0], "titre 4");
    EXPECT_EQ(Scratch(), QStringList("7|ancienne ligne|-|-|0"));
    EXPECT_EQ(Codes(), QStringList("ancienne ligne|-|-|-|-|-|-|-"));
}

TEST_F(JournalPrinting, SeesActsAndPatientsAddedSinceTheScreenOpened)
{
    auto& screen = OpenOnPeriod();
    const int patient = static_cast<int>(practice.Patient("Nouveau", "Arrivé"));
    const dao::Key arrived =
        practice.Act({.montant = 70, .flag_R = PaymentCode::RPlus, .num_patient = patient, .num_presta = 3});
    Click(screen.Image1[Recettes::OtherDates]);
    Click(screen.Dates.Image2[PeriodChooser::AcceptPeriod]);
    EXPECT_EQ(screen.Grid2.Text(screen.Grid2.Rows() - 1, Recettes::Patient), "Nouveau Arrivé");
    tests::ExpectPreview(desk, "Détail Période du Lun 16-06-2008 au Mar 17-06-2008");
    PrintScope(screen, Recettes::AllUnits);
    EXPECT_TRUE(Scratch().contains(Row(arrived, "70"))) << Scratch().join(' ').toStdString();
}

TEST_F(JournalPrinting, EndsTheHourglassOfARefusedPeriod)
{
    auto& screen = OpenOnPeriod();
    const auto refuse = [&] {
        Click(screen.Image1[Recettes::OtherDates]);
        screen.Dates.Text1[PeriodChooser::First].setText("19/06/2008");
        desk.ExpectMessage("Dates inversées", Icon::Critical, "ZEP Lumo");
        Click(screen.Dates.Image2[PeriodChooser::AcceptPeriod]);
        Click(screen.Dates.Image2[PeriodChooser::CancelPeriod]);
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    };
    refuse();
    desk.WhenModal<report::PreviewWindow>([](report::PreviewWindow& preview) {
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        preview.Unload();
    });
    Print(screen, Recettes::PrintRecap);

    refuse();
    screen.SSTab1.setCurrentIndex(Recettes::RecapTab);
    Click(screen.Grid1, 2);
    desk.ExpectMessage("Aucune activité dans cette unité", Icon::Critical, "ATTENTION");
    PrintScope(screen, Recettes::CurrentUnit);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(JournalPrinting, ShowsTheLegendOfAPrintButtonWhileItIsPointedAt)
{
    auto& screen = OpenOnPeriod();
    const auto shown = [&](int button) {
        return screen.Label5[button].isVisible() && screen.Image3[button].HasBorder();
    };
    screen.Image3[Recettes::PrintDetail].setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(shown(Recettes::PrintDetail));
    EXPECT_FALSE(shown(Recettes::PrintRecap));
    EXPECT_EQ(screen.Label5[Recettes::PrintDetail].text(), "Détail");
    Click(screen.Image3[Recettes::PrintDetail]);
    EXPECT_FALSE(screen.Label5[Recettes::PrintDetail].isVisibleTo(&screen));
    EXPECT_FALSE(screen.Image3[Recettes::PrintDetail].HasBorder());
}
