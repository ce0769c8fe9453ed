#include "cash/Recettes.h"

#include "support/Reports.h"
#include "support/ScreenTest.h"

#include <QGuiApplication>

using cash::Recettes;
using core::PeriodChooser;

namespace PaymentCode = data::PaymentCode;

namespace {

/// Three services, the last one first and without acts; "ECG" has acts on both days, in four payment states.
class JournalPrinting : public tests::ScreenTest<Recettes> {
protected:
    JournalPrinting()
    {
        tests::PutTemplate(practice, "ZEP_DTAL.RPT");
        PutTemplateOver("Prov", "ZEP_RCAP.RPT");
        PutTemplateOver("RCP2", "ZEP_RCP2.RPT");
        practice.Add("Tarif", {{"C", 100}, {"K0", 10}, {"K12", 500}});
        practice.Service("Soins & Co", -1);
        practice.Act({.day = "15/06/2008", .num_presta = 2});
        const auto ecg = [this](const QString& day, double amount, int state, const dao::Value& type) {
            return practice.Act({.day = day, .montant = amount, .flag_R = state, .num_presta = 2, .Type = type});
        };
        partly = ecg("16/06/2008", 300.25, PaymentCode::RMinus, "K12");
        more = ecg("17/06/2008", 650, PaymentCode::RPlus, "K12");
        consultation = practice.Act({.montant = 100, .flag_R = PaymentCode::P});
        noCode = ecg("16/06/2008", 0, PaymentCode::P, dao::Value()); // takes the code of the act before
        free = ecg("17/06/2008", 50, PaymentCode::Gr, "K12");
        practice.Write("Update textes set ch4 = 'titre 4', ch5 = 'titre 5', ch6 = 'titre 6', ch7 = 'titre 7', "
                       "ch8 = 'titre 8'");
        practice.Write("Insert into Prov (num, unite) values (7, 'ancienne ligne')");
        practice.Write("Insert into RCP2 (denom) values ('ancienne ligne')");
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

    Recettes& OpenOnPeriod()
    {
        auto& screen = OpenScreen();
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

    void ExpectNoActs() { ExpectRefusal("Aucune activité dans cette unité"); }

    QString Headings() { return tests::RowsOf(practice, "select ch4, ch5, ch6, ch7, ch8 from textes").join(""); }
    QStringList Scratch() { return tests::RowsOf(practice, "select num, unite, Page, Mt, Mt2 from Prov"); }
    QStringList Codes() { return tests::RowsOf(practice, "select denom, C1, C2, C3, C4, C5, C6, C7 from RCP2"); }

    static QString Row(dao::Key act, const QString& value) { return QString("%1|-|-|%2|0").arg(act).arg(value); }

    const QString period = "Période du  Lun  16/06/2008 au Mar  17/06/2008";
    const QString periodName = " Période du Lun 16-06-2008 au Mar 17-06-2008"; ///< of a PDF
    dao::Key partly = 0, more = 0, consultation = 0, noCode = 0, free = 0;
};

} // namespace

TEST_F(JournalPrinting, PrintsTheServicesAsShown)
{
    auto& screen = OpenOnPeriod();
    Click(screen.Grid1, 1);
    tests::ExpectPreview(desk, "Journal d'activité" + periodName);
    Print(screen, Recettes::PrintRecap);

    EXPECT_EQ(Headings(), "Journal d'activité de la|" + period + "|5| 1 100 |titre 8");
    EXPECT_EQ(Scratch(), QStringList({"-|Soins & Co|0|0|0", "-|Consultation|1|100|100", "-|ECG|4|1000.25|1349.75"}));
    EXPECT_EQ(screen.Grid1.Row(), 1); // the current service stays
    EXPECT_EQ(Codes(), QStringList("ancienne ligne|-|-|-|-|-|-|-"));
}

TEST_F(JournalPrinting, PrintsEveryCodeWithoutTheTotals)
{
    for (int state = PaymentCode::NP; state <= PaymentCode::AB; ++state) // one NP, two R- ... six AB
        for (int act = 0; act <= state; ++act)
            practice.Act({.flag_R = state, .Type = "K5"});
    auto& screen = OpenOnPeriod();
    tests::ExpectPreview(desk, "Journal d'activité par code" + periodName);
    Print(screen, Recettes::PrintCodes);

    EXPECT_EQ(Headings(), period + "|titre 5|titre 6|titre 7|titre 8");
    const QStringList codes = Codes();
    ASSERT_EQ(codes.size(), 32);
    EXPECT_EQ(codes[0], "C|0|0|1|0|0|0|1");
    EXPECT_EQ(codes[1], "K0|0|0|0|0|0|0|0");
    EXPECT_EQ(codes[6], "K5|1|2|3|4|5|6|21");
    EXPECT_EQ(codes[13], "K12|0|1|1|1|1|0|4");
    EXPECT_EQ(codes[31], "K30|0|0|0|0|0|0|0");
    EXPECT_EQ(Scratch(), QStringList("7|ancienne ligne|-|-|0"));
}

TEST_F(JournalPrinting, AsksForTheScopeOfTheDetail)
{
    auto& screen = OpenOnPeriod();
    Print(screen, Recettes::PrintDetail);
    EXPECT_TRUE(screen.SSPanel3.isVisible());
    EXPECT_TRUE(screen.SSPanel3.property("floating").toBool());
    EXPECT_FALSE(screen.SSTab1.isEnabled());
    EXPECT_FALSE(screen.Image1[Recettes::OtherDates].isVisible());
    EXPECT_EQ(screen.SSOption1[Recettes::CurrentUnit].text(), "Soins && Co"); // shown with one "&"
    EXPECT_TRUE(screen.SSOption1[Recettes::Nothing].isChecked());

    ExpectRefusal("Sélection omise", "Attention");
    Press(screen.SSOption1[Recettes::Nothing], Qt::Key_Return);
    EXPECT_TRUE(screen.SSPanel3.isVisible());
    ExpectNoActs();
    Press(screen.SSOption1[Recettes::Nothing], Qt::Key_Up);
    Press(screen.SSOption1[Recettes::CurrentUnit], Qt::Key_Return);
    EXPECT_TRUE(IsReading(screen));

    for (const bool byKey : {true, false}) {
        screen.SSTab1.setCurrentIndex(Recettes::DetailTab);
        if (byKey)
            Press(screen.Grid2, Qt::Key_P, Qt::ControlModifier);
        else
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

TEST_F(JournalPrinting, PrintsTheActsOfOneServiceInThePresentPeriod)
{
    auto& screen = OpenOnPeriod();
    Click(screen.Grid1, 2);
    tests::ExpectPreview(desk, "Détail ECG" + periodName);
    PrintScope(screen, Recettes::CurrentUnit);
    EXPECT_EQ(Headings(), "Journal d'activité de la|" + period + "|5| 1 100 |titre 8"); // the totals of all
    EXPECT_EQ(Scratch(), QStringList({Row(partly, "199.75"), Row(noCode, "500"), Row(more, "650"), Row(free, "0")}));
    EXPECT_EQ(screen.Grid1.Col(), Recettes::Count);

    practice.Write("Update Presta set Ordre = 9 where num = 1"); // "ECG" is the second one now
    tests::AcceptDay(screen.Dates, "17/06/2008");
    tests::ExpectPreview(desk, "Détail Journée du Mar 17-06-2008");
    PrintScope(screen, Recettes::AllUnits);
    EXPECT_EQ(Scratch(), QStringList({Row(more, "650"), Row(free, "0"), Row(consultation, "100")}));
    Click(screen.Grid1, 1);
    tests::ExpectPreview(desk, "Détail ECG Journée du Mar 17-06-2008");
    PrintScope(screen, Recettes::CurrentUnit);
    EXPECT_EQ(Scratch(), QStringList({Row(more, "650"), Row(free, "0")}));
}

TEST_F(JournalPrinting, PrintsTheListedActsAsTheyAreAtThePrint)
{
    const dao::Key unpaid = practice.Act({.montant = 5, .num_presta = 3, .Type = "K0"});
    const int patient = practice.Patient("Nouveau", "Arrivé");
    auto& screen = OpenScreen();
    const dao::Key arrived = practice.Act( // since the screen was opened
        {.flag_R = PaymentCode::P, .num_patient = patient, .num_presta = 3, .Type = dao::Value()});
    tests::AcceptPeriod(screen.Dates, "16/06/2008", "17/06/2008");
    EXPECT_EQ(screen.Grid2.Text(1, Recettes::Patient), "Nouveau Arrivé");
    practice.Write(QString("Update Actes set montant = 100 where num = %1").arg(partly));
    practice.Remove("Actes", noCode);
    practice.Act({.flag_R = PaymentCode::P}); // after the fill: not listed, not printed

    const QStringList rows{Row(unpaid, "0"),   Row(arrived, "10"), Row(consultation, "100"),
                           Row(partly, "400"), Row(noCode, "0"),   Row(more, "650"),
                           Row(free, "0")};
    for (int print = 0; print < 2; ++print) {
        tests::ExpectPreview(desk, "Détail" + periodName);
        PrintScope(screen, Recettes::AllUnits);
        EXPECT_EQ(Scratch(), rows);
        EXPECT_EQ(Headings(), "Journal d'activité de la|" + period + "|7| 1 105 |titre 8");
        tests::ExpectPreview(desk, "Journal d'activité" + periodName);
        Print(screen, Recettes::PrintRecap);
        EXPECT_EQ(Scratch().size(), 3);
    }
}

TEST_F(JournalPrinting, PrintsBeforeTheFirstFill)
{
    auto& screen = OpenScreen();
    Click(screen.Dates.Image2[PeriodChooser::CancelDay]);
    tests::ExpectPreview(desk, "Journal d'activité");
    Print(screen, Recettes::PrintRecap);
    EXPECT_EQ(Headings(), "Journal d'activité de la||||titre 8");
    EXPECT_EQ(Scratch(), QStringList("-||0|0|0"));
    tests::ExpectPreview(desk, "Journal d'activité par code");
    Print(screen, Recettes::PrintCodes);
    ExpectNoActs();
    PrintScope(screen, Recettes::CurrentUnit);
    tests::ExpectPreview(desk, "Détail");
    PrintScope(screen, Recettes::AllUnits);
    EXPECT_EQ(Scratch(), QStringList());
}

TEST_F(JournalPrinting, EndsTheHourglassOfARefusedPeriod)
{
    auto& screen = OpenOnPeriod();
    const auto refuse = [&] {
        ExpectRefusal("Dates inversées", "ZEP Lumo");
        tests::AcceptPeriod(screen.Dates, "19/06/2008", "17/06/2008");
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
    ExpectNoActs();
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
