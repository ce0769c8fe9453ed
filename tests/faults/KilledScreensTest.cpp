#include "acts/Actualisation.h"
#include "acts/New_Act.h"
#include "analysis/Chrges.h"
#include "archives/Archives.h"
#include "cash/J_CAISSE.h"
#include "catalogue/J_PROD.h"
#include "catalogue/Tarifs.h"
#include "core/globals.h"
#include "core/opening.h"
#include "core/printing.h"
#include "expenses/F_Dep.h"
#include "support/KillAtEachStep.h"
#include "support/ScriptedDesk.h"

#include <span>

using forms::Icon;

namespace {

const QString Today = "17/06/2008";

/// Kills the program while a screen saves.
class KilledScreens : public tests::KilledPractice {
protected:
    /// A user's work on one screen, which ends with leaving it.
    template <class Screen>
    static auto On(void (*work)(ScriptedDesk&, Screen&, const tests::Play::Done&))
    {
        return [work](const tests::Play::Done& done) {
            ScriptedDesk desk;
            core::OpenDataFiles();
            core::PickedDate = Today;
            work(desk, desk.Open<Screen>(), done);
            done();
            core::TheDatabase.Close();
        };
    }
};

/// The rows of several states, one state after each of `steps` parts, as KilledPractice finds them.
template <class StateAfter>
auto ReportedOrNext(int parts, StateAfter stateAfter)
{
    return [=](int reported) {
        return QStringList{stateAfter(qMin(reported, parts)), stateAfter(qMin(reported + 1, parts))};
    };
}

} // namespace

TEST_F(KilledScreens, SaveAllChargesOfOneSave)
{
    using analysis::Chrges;
    Kill(On<Chrges>([](ScriptedDesk& desk, Chrges& screen, const tests::Play::Done&) {
             for (int charge = Chrges::Salaries; charge <= Chrges::Others; ++charge)
                 screen.Text1[charge].setText(QString::number(100 * (charge + 1)));
             desk.ExpectMessage("Sauvegarde en cours", Icon::None, "");
             screen.Image1[Chrges::Store].click();
             screen.Unload();
         }),
         "select Charge1, Charge2, Charge3, Charge4, Charge5, Charge6, Charge7, Charge8, Charge9 from Permn");
}

TEST_F(KilledScreens, SaveTheTogglesOfAWholeDay)
{
    using acts::New_Act;
    practice.Write("with recursive n(i) as (select 1 union all select i + 1 from n where i < 200) insert into Actes "
                   "(Date, num_patient, num_presta, Flag_H) select '2008-06-17', 1, 1 + i % 2, 0 from n");
    Kill(On<New_Act>([](ScriptedDesk&, New_Act& sheet, const tests::Play::Done&) {
             const auto visible =
                 core::TheDatabase.OpenRecordset("select count(num) as S1 from Actes where Flag_H = 0");
             for (int row = 0; row < visible["S1"].Long(); ++row) {
                 sheet.Grid2.SetRow(row);
                 sheet.Image1[New_Act::Toggle].click();
             }
             sheet.Image1[New_Act::LeaveSheet].click();
         }),
         "select count(num), min(Flag_H), max(Flag_H) from Actes");
}

TEST_F(KilledScreens, SaveTheWholeOrderOfServices)
{
    using catalogue::J_PROD;
    practice.Write("with recursive n(i) as (select 2 union all select i + 1 from n where i < 99) "
                   "insert into Presta (denom, Ordre) select printf('Service %-100s', i), i from n");
    // Moves the last service after the first, so that all but one change position.
    Kill(On<J_PROD>([](ScriptedDesk&, J_PROD& screen, const tests::Play::Done&) {
             screen.Grid1.SetRow(screen.Grid1.Rows() - 1);
             screen.Grid1_Click();
             const bool isMoved = screen.Grid1.Text(1, 1).contains("Service 99");
             for (int place = screen.Grid1.Rows() - 1; place > 1 && !isMoved; --place)
                 screen.MoveService(J_PROD::MoveUp);
             screen.Crecettes_Click(J_PROD::Quit);
         }),
         "select num, Ordre from Presta order by num");
}

TEST_F(KilledScreens, SaveAllRates)
{
    using catalogue::Tarifs;
    practice.Write("insert into Tarif (C) values (0)");
    Kill(On<Tarifs>([](ScriptedDesk&, Tarifs& screen, const tests::Play::Done&) {
             for (int row = 0; row < screen.Grid1.Rows(); ++row) {
                 screen.Grid1.SetRow(row);
                 screen.Grid1_DblClick();
                 screen.RateField.setText(QString::number(500 + row));
                 screen.Image2_Click(Tarifs::AcceptEntry);
             }
             screen.Image2_Click(Tarifs::StoreAndQuit);
         }),
         "select * from Tarif");
}

TEST_F(KilledScreens, ThinWholeDays)
{
    // Each day has 3 acts of one service and 4 of another, the fifth act "R-". One act in three stays visible; those
    // "R-" are made visible again in one last step.
    constexpr int days = 40;
    const QString untouched = "7\n7\n7\n7\n7\n7\n7\n", thinned = "0\n1\n1\n0\n1\n1\n0\n",
                  whole = "0\n1\n1\n0\n0\n1\n0\n";
    practice.Write(QString("with recursive n(i) as (select 0 union all select i + 1 from n where i < 7 * %1 - 1) "
                           "insert into Actes (Date, num_presta, flag_R, Flag_H) select date('2008-01-01', (i / 7) || "
                           "' days'), iif(i % 7 < 3, 1, 2), iif(i % 7 = 4, 1, 2), 7 from n")
                       .arg(days));
    QStringList allowed{whole.repeated(days).chopped(1)};
    for (int day = 0; day <= days; ++day)
        allowed << (thinned.repeated(day) + untouched.repeated(days - day)).chopped(1);
    Kill(
        [](const tests::Play::Done&) {
            core::OpenDataFiles();
            acts::Actualisation("01/01/2008", "09/02/2008", 2).ThinPeriod();
            core::TheDatabase.Close();
        },
        "select Flag_H from Actes order by num", [&](int) { return allowed; });
}

TEST_F(KilledScreens, LoseNoReportedExpense)
{
    using expenses::F_Dep;
    struct Entry {
        F_Dep::Action action;
        int row;
        int amount;
    };
    static const Entry entries[] = {{F_Dep::New, 0, 1000}, {F_Dep::New, 1, 2000}, {F_Dep::Modify, 0, 1500},
                                    {F_Dep::Remove, 0, 0}, {F_Dep::New, 1, 3000}, {F_Dep::Modify, 0, 2500}};
    constexpr int parts = std::size(entries);
    constexpr const char* statement = "select Date, MM, objet, montant from Recettes order by num";
    static const auto stateAfter = [](int count) {
        QStringList rows;
        for (const auto& [action, row, amount] : std::span(entries).first(count)) {
            const QString written = QString("%1|6|Coton %2|%2").arg(Today).arg(amount);
            if (action == F_Dep::New)
                rows << written;
            else if (action == F_Dep::Modify)
                rows[row] = written;
            else
                rows.removeAt(row);
        }
        return rows.join('\n');
    };
    static int done = 0;
    const auto work = On<F_Dep>([](ScriptedDesk& desk, F_Dep& screen, const tests::Play::Done& reported) {
        for (const auto& [action, row, amount] : std::span(entries).subspan(done)) {
            if (action != F_Dep::New) {
                screen.Grid1.SetRow(row);
                screen.Grid1_Click();
            }
            if (action == F_Dep::Remove)
                desk.ExpectMessage("Confirmer supression de ligne N° 1", Icon::Question, "Confirmation",
                                   forms::Answer::Yes);
            screen.Crecettes[action].click();
            if (action != F_Dep::Remove) {
                screen.SSPanel3.Date.setText(Today);
                screen.SSPanel3.Object.setText(QString("Coton %1").arg(amount));
                screen.SSPanel3.Amount.setText(QString::number(amount));
                desk.ExpectMessage("Enregistrement terminé", Icon::Information, "ZEP Lumo");
                screen.SSPanel3.Image2[expenses::EntryPanel::Accept].click();
            }
            reported();
        }
    });
    Kill(
        [&work](const tests::Play::Done& reported) {
            const QString state = Found(statement);
            for (done = 0; stateAfter(done) != state && done < parts; ++done) {
            }
            work(reported);
        },
        statement, ReportedOrNext(parts, stateAfter));
}

TEST_F(KilledScreens, LoseNoReportedSettlement)
{
    using cash::J_CAISSE;
    constexpr int acts = 6;
    constexpr int actsBetweenReports = 3;
    for (int act = 0; act < acts; ++act)
        practice.Act({});
    practice.Act({.day = "16/06/2008", .montant = 40, .flag_R = data::PaymentCode::P});
    static const auto settle = [](ScriptedDesk& desk, J_CAISSE& till, const tests::Play::Done& done) {
        while (till.Grid3.Rows() > 0 && till.Grid3.Text(0, 0) != "") {
            const dao::Key act =
                core::TheDatabase.OpenRecordset("select min(num) as S1 from Actes where flag_R = 0")["S1"].Key();
            // A long report, whose pages bring the log close to the size of an idle checkpoint, so that one of the next
            // settlements triggers it.
            if (act % actsBetweenReports == 1)
                core::RefillScratchTable("Prov", [](core::ScratchRows& rows) {
                    rows.Add({{"Obs", QString(238 * 4096, 'x')}});
                });
            till.Grid3.SetRow(0);
            till.Grid3_DblClick();
            till.SSPanel2.Code.SetListIndex(static_cast<int>(2 + act % 4));
            till.SSPanel2.Amount.setText(QString::number(act * 100.5));
            desk.ExpectMessage("Correction enregistrée", Icon::Information, "ZEP Lumo");
            till.SSPanel2.Image3[cash::CorrectionPanel::Accept].click();
            done();
        }
        till.Unload();
    };
    const auto stateAfter = [](int settled) {
        QStringList rows;
        for (int act = 1; act <= acts; ++act)
            rows << (act <= settled ? QString("%1|%2").arg(2 + act % 4).arg(act * 100.5) : QString("0|0"));
        return (rows << "2|40").join('\n');
    };
    Kill(
        [](const tests::Play::Done& done) { // a day, to the archive copy
            On<J_CAISSE>(settle)(done);
            archives::CopyToArchives(core::DataFolder);
        },
        "select flag_R, montant from Actes order by num", ReportedOrNext(acts, stateAfter));
}
