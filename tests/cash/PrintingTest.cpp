#include "core/printing.h"
#include "cash/J_CAISSE.h"
#include "support/Reports.h"
#include "support/ScreenTest.h"

using cash::J_CAISSE;
using forms::Icon;

namespace PaymentCode = data::PaymentCode;

namespace {

class CashPrinting : public tests::ScreenTest<J_CAISSE> {
protected:
    CashPrinting()
    {
        for (const char* name : {"ZEP_R1.RPT", "ZEP_R2.RPT", "ZEP_R3.RPT", "ZEP_R4.RPT"})
            tests::PutTemplate(practice, name);
        practice.Service("Radio", -1);
        practice.Write("Update textes set ch1 = 'vieux', ch4 = 'titre 4', ch5 = 'titre 5', ch10 = 'titre 10'");
        practice.Write("Insert into Prov (num, unite) values (7, 'ancienne ligne')");
    }

    J_CAISSE& ShowDay()
    {
        core::PickedDate = "17/06/2008";
        return OpenScreen();
    }

    static void Print(J_CAISSE& screen, int picture)
    {
        static constexpr int TabOf[] = {J_CAISSE::SettledTab, J_CAISSE::PendingTab, J_CAISSE::ExpensesTab,
                                        J_CAISSE::RecapTab};
        screen.SSTab1.setCurrentIndex(TabOf[picture]);
        Click(screen.Image2[picture]);
    }

    QString Headings(const QString& fields) { return tests::RowsOf(practice, "select " + fields + " from textes")[0]; }
    QStringList Scratch() { return tests::RowsOf(practice, "select num, unite, Page, Mt from Prov"); }

    const QStringList unchanged{"7|ancienne ligne|-|-"};
};

} // namespace

TEST_F(CashPrinting, PrintsTheRecapAsShownAndAnEmptyRowWithoutServices)
{
    practice.Act({.day = "16/06/2008", .montant = 1000, .flag_R = PaymentCode::P});
    practice.Act({.montant = 150.5, .flag_R = PaymentCode::RMinus});
    practice.Act({.montant = 1250, .flag_R = PaymentCode::P, .num_presta = 3});
    practice.Expense({.montant = 20});
    auto& screen = ShowDay();
    tests::ExpectPreview(desk, "Caisse du Jour 17-06-2008");
    Print(screen, J_CAISSE::PrintRecap);

    EXPECT_EQ(core::ReportName, "ZEP_R1.RPT");
    EXPECT_EQ(Headings("ch1, ch2, ch3, ch30"), "Cabinet d'Été|Médecine générale|Alger|(021 00 00 00)");
    EXPECT_EQ(Headings("ch4, ch5, ch6, ch7, ch8, ch9, ch10"),
              "titre 4|Mouvements de fonds du  Mardi 17/06/2008|2| 1 000.00|1 400.50 |  20.00| 2 380.50");
    EXPECT_EQ(Scratch(), QStringList({"-|Radio|1|1250", "-|Consultation|1|150.5", "-|ECG|0|0"}));
    EXPECT_EQ(screen.Grid1.Row(), 2);
    EXPECT_EQ(screen.Grid1.Col(), 2);

    practice.Write("delete from Presta");
    screen.ShowCashDay("18/06/2008");
    tests::ExpectPreview(desk, "Caisse du Jour 18-06-2008");
    Print(screen, J_CAISSE::PrintRecap);
    EXPECT_EQ(Headings("ch6, ch8, ch9"), "||");
    EXPECT_EQ(Scratch(), QStringList({"-||0|0"}));
}

TEST_F(CashPrinting, PrintsEachListByItsKeysButNoEmptyOne)
{
    auto& screen = ShowDay();
    for (const int list : {J_CAISSE::PrintSettled, J_CAISSE::PrintPending, J_CAISSE::PrintExpenses}) {
        ExpectSaved("Aucun enregistrement");
        Print(screen, list);
    }
    practice.Act({});
    practice.Act({.montant = 5, .flag_R = PaymentCode::P});
    practice.Act({.montant = 0, .flag_R = PaymentCode::Gr});
    practice.Expense({.day = "16/06/2008"});
    practice.Expense({.montant = 20});
    screen.ShowCashDay("17/06/2008");
    tests::RemoveTemplate(practice, "ZEP_R2.RPT");
    ExpectSaved("Fichier ZEP_R2.RPT absent");
    Print(screen, J_CAISSE::PrintSettled);
    EXPECT_EQ(Headings("ch1, ch4"), "vieux|titre 4"); // the letterhead isn't updated either
    EXPECT_EQ(Scratch(), unchanged);

    tests::PutTemplate(practice, "ZEP_R2.RPT");
    const struct {
        int picture;
        QString reportName, pdfName;
        QStringList rows;
    } prints[] = {
        {J_CAISSE::PrintSettled, "ZEP_R2.RPT", "Actes Réglés 17-06-2008", {"2|-|-|-", "3|-|-|-"}},
        {J_CAISSE::PrintPending, "ZEP_R3.RPT", "Instances 17-06-2008", {"1|-|-|-"}},
        {J_CAISSE::PrintExpenses, "ZEP_R4.RPT", "Dépenses 17-06-2008", {"2|-|-|-"}},
    };
    for (const auto& print : prints) {
        tests::ExpectPreview(desk, print.pdfName);
        Print(screen, print.picture);
        EXPECT_EQ(core::ReportName, print.reportName);
        EXPECT_EQ(Scratch(), print.rows) << qPrintable(print.reportName);
        EXPECT_EQ(Headings("ch4, ch5, ch10"), "Mouvements de fonds du  Mardi 17/06/2008|titre 5|titre 10");
    }
}

TEST_F(CashPrinting, KeepsTheFormerRowsWhenFillingFails)
{
    practice.Open();
    const auto fails = [](core::ScratchRows& rows) {
        rows.Add({{"num", 1}});
        throw basic::RuntimeError(basic::Error::TypeMismatch);
    };
    EXPECT_EQ(ErrorOf([&] { core::RefillScratchTable("Prov", fails); }), Error::TypeMismatch);
    EXPECT_EQ(Scratch(), unchanged);

    core::RefillScratchTable("Prov", core::KeyRows({3, 1, 2})); // the failed transaction was rolled back
    EXPECT_EQ(Scratch(), QStringList({"3|-|-|-", "1|-|-|-", "2|-|-|-"}));
}
