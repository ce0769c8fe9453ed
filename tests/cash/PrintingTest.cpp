#include "core/printing.h"
#include "cash/J_CAISSE.h"
#include "core/globals.h"
#include "platform/basic/RuntimeError.h"
#include "support/Reports.h"

using cash::J_CAISSE;
using forms::Icon;

namespace PaymentCode = data::PaymentCode;

namespace {

class CashPrinting : public testing::Test {
protected:
    CashPrinting()
    {
        for (const char* name : {"ZEP_R1.RPT", "ZEP_R2.RPT", "ZEP_R3.RPT", "ZEP_R4.RPT"})
            tests::PutTemplate(practice, name);
        practice.Open();
        core::TheDatabase.Execute(
            "Update textes set ch1 = 'vieux', ch4 = 'titre 4', ch5 = 'titre 5', ch10 = 'titre 10'");
        core::RefillScratchTable("Prov", [](core::ScratchRows& rows) {
            rows.Add({{"num", 7}, {"unite", "ancienne ligne"}});
        });
    }

    J_CAISSE& ShowDay(const QString& day = "17/06/2008")
    {
        core::PickedDate = day;
        return desk.Open<J_CAISSE>();
    }

    void Print(J_CAISSE& screen, int picture)
    {
        static constexpr int TabOf[] = {J_CAISSE::SettledTab, J_CAISSE::PendingTab, J_CAISSE::ExpensesTab,
                                        J_CAISSE::RecapTab};
        screen.SSTab1.setCurrentIndex(TabOf[picture]);
        Click(screen.Image2[picture]);
    }

    QString Heading(const QString& field) { return practice.Ask("select " + field + " from textes").Text(); }

    QStringList Scratch() { return tests::RowsOf(practice, "select num, unite, Page, Mt from Prov"); }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(CashPrinting, PrintsTheRecapAsShown)
{
    practice.Act({.day = "16/06/2008", .montant = 1000, .flag_R = PaymentCode::P});
    practice.Act({.montant = 150.5, .flag_R = PaymentCode::RMinus});
    practice.Act({.montant = 1250, .flag_R = PaymentCode::P});
    practice.Expense({.montant = 20});
    auto& screen = ShowDay();

    tests::ExpectPreview(desk, "Caisse du Jour 17-06-2008");
    Print(screen, J_CAISSE::PrintRecap);

    EXPECT_EQ(core::ReportName, "ZEP_R1.RPT");
    EXPECT_EQ(Heading("ch1"), "Cabinet d'Été");
    EXPECT_EQ(Heading("ch2"), "Médecine générale");
    EXPECT_EQ(Heading("ch3"), "Alger");
    EXPECT_EQ(Heading("ch30"), "(021 00 00 00)");
    EXPECT_EQ(Heading("ch4"), "titre 4"); // from the previous report: the recap doesn't write it
    EXPECT_EQ(Heading("ch5"), "Mouvements de fonds du  Mardi 17/06/2008");
    EXPECT_EQ(Heading("ch6"), "2");
    EXPECT_EQ(Heading("ch7"), screen.RCP[J_CAISSE::OpeningBalance].text());
    EXPECT_EQ(Heading("ch8"), screen.RCP[J_CAISSE::DayReceived].text());
    EXPECT_TRUE(Heading("ch8").endsWith(".50 "));
    EXPECT_EQ(Heading("ch9"), "  20.00");
    EXPECT_EQ(Heading("ch10"), screen.RCP[J_CAISSE::NewBalance].text());
    EXPECT_EQ(Scratch(), QStringList({"-|Consultation|2|1400.5", "-|ECG|0|0"}));
    EXPECT_EQ(screen.Grid1.Row(), 1);
    EXPECT_EQ(screen.Grid1.Col(), 2);
}

TEST_F(CashPrinting, PrintsZerosWithoutActsAndAnEmptyRowWithoutServices)
{
    auto& screen = ShowDay();

    tests::ExpectPreview(desk, "Caisse du Jour 17-06-2008");
    Print(screen, J_CAISSE::PrintRecap);

    for (const char* field : {"ch6", "ch7", "ch8", "ch9", "ch10"})
        EXPECT_EQ(Heading(field), "") << field;
    EXPECT_EQ(Scratch(), QStringList({"-|Consultation|0|0", "-|ECG|0|0"}));

    core::TheDatabase.Execute("Delete * from Presta");
    tests::ExpectPreview(desk, "Caisse du Jour 17-06-2008");
    Print(ShowDay(), J_CAISSE::PrintRecap);
    EXPECT_EQ(Scratch(), QStringList({"-||0|0"}));
}

TEST_F(CashPrinting, PrintsEachListByItsKeys)
{
    const QString pending = QString::number(practice.Act({}));
    const QString settled = QString::number(practice.Act({.montant = 5, .flag_R = PaymentCode::P}));
    const QString alsoSettled = QString::number(practice.Act({.montant = 0, .flag_R = PaymentCode::Gr}));
    const QString expense = QString::number(practice.Expense({.montant = 20}));
    auto& screen = ShowDay();

    const struct {
        int picture;
        QString reportName;
        QString pdfName;
        QStringList rows;
    } prints[] = {
        {J_CAISSE::PrintSettled, "ZEP_R2.RPT", "Actes Réglés 17-06-2008", {settled + "|-|-|-", alsoSettled + "|-|-|-"}},
        {J_CAISSE::PrintPending, "ZEP_R3.RPT", "Instances 17-06-2008", {pending + "|-|-|-"}},
        {J_CAISSE::PrintExpenses, "ZEP_R4.RPT", "Dépenses 17-06-2008", {expense + "|-|-|-"}},
    };
    for (const auto& print : prints) {
        tests::ExpectPreview(desk, print.pdfName);
        Print(screen, print.picture);
        EXPECT_EQ(core::ReportName, print.reportName);
        EXPECT_EQ(Scratch(), print.rows) << qPrintable(print.reportName);
        EXPECT_EQ(Heading("ch4"), "Mouvements de fonds du  Mardi 17/06/2008");
        EXPECT_EQ(Heading("ch5"), "titre 5");
        EXPECT_EQ(Heading("ch10"), "titre 10");
    }
}

TEST_F(CashPrinting, PrintsASavedCorrection)
{
    practice.Act({});
    auto& screen = ShowDay();
    screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);
    Click(screen.Image2[J_CAISSE::Correct]);
    screen.SSPanel2.Code.SetListIndex(PaymentCode::P);
    screen.SSPanel2.Amount.setText("800");
    desk.ExpectMessage("Correction enregistrée", Icon::Information, "ZEP Lumo");
    Click(screen.SSPanel2.Image3[cash::CorrectionPanel::Accept]);

    tests::ExpectPreview(desk, "Caisse du Jour 17-06-2008");
    Print(screen, J_CAISSE::PrintRecap);

    EXPECT_EQ(Scratch(), QStringList({"-|Consultation|1|800", "-|ECG|0|0"}));
}

TEST_F(CashPrinting, ChangesNothingWithoutATemplate)
{
    practice.Act({.montant = 5, .flag_R = PaymentCode::P});
    auto& screen = ShowDay();
    tests::RemoveTemplate(practice, "ZEP_R1.RPT");
    tests::RemoveTemplate(practice, "ZEP_R2.RPT");

    desk.ExpectMessage("Fichier ZEP_R1.RPT absent", Icon::Information, "ZEP Lumo");
    Print(screen, J_CAISSE::PrintRecap);
    desk.ExpectMessage("Fichier ZEP_R2.RPT absent", Icon::Information, "ZEP Lumo");
    Print(screen, J_CAISSE::PrintSettled);

    EXPECT_EQ(Heading("ch1"), "vieux"); // the letterhead isn't updated either
    EXPECT_EQ(Heading("ch5"), "titre 5");
    EXPECT_EQ(Scratch(), QStringList({"7|ancienne ligne|-|-"}));
}

TEST_F(CashPrinting, RefusesEmptyLists)
{
    auto& screen = ShowDay();
    for (int picture = J_CAISSE::PrintSettled; picture <= J_CAISSE::PrintExpenses; ++picture) {
        desk.ExpectMessage("Aucun enregistrement", Icon::Information, "ZEP Lumo");
        Print(screen, picture);
    }
    EXPECT_EQ(Scratch(), QStringList({"7|ancienne ligne|-|-"}));
}

TEST_F(CashPrinting, KeepsTheFormerRowsWhenFillingFails)
{
    const auto fails = [](core::ScratchRows& rows) {
        rows.Add({{"num", 1}});
        throw basic::RuntimeError(basic::Error::TypeMismatch);
    };
    EXPECT_THROW(core::RefillScratchTable("Prov", fails), basic::RuntimeError);
    EXPECT_EQ(Scratch(), QStringList({"7|ancienne ligne|-|-"}));

    core::RefillScratchTable("Prov", core::KeyRows({3, 1, 2})); // the failed transaction was rolled back
    EXPECT_EQ(Scratch(), QStringList({"3|-|-|-", "1|-|-|-", "2|-|-|-"}));
}
