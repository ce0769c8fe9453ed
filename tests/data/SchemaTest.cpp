#include "data/Practice.h"
#include "support/Printing.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

namespace {

/// An empty store with the tables of a practice, to ask how it would run a statement.
class Store {
public:
    Store()
    {
        sqlite3* opened = nullptr;
        sqlite3_open(":memory:", &opened);
        store.reset(opened);
        EXPECT_EQ(sqlite3_exec(opened, data::Schema().toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(opened);
    }

    /// The steps of the plan, joined; values stand in the statement as "?" or written out.
    QString Plan(const QString& statement) const
    {
        sqlite3_stmt* prepared = nullptr;
        const QByteArray text = ("explain query plan " + statement).toUtf8();
        EXPECT_EQ(sqlite3_prepare_v2(store.get(), text.constData(), -1, &prepared, nullptr), SQLITE_OK)
            << sqlite3_errmsg(store.get());
        for (int place = 1; place <= sqlite3_bind_parameter_count(prepared); ++place)
            sqlite3_bind_text(prepared, place, "2008-06-17", -1, SQLITE_STATIC);
        QStringList steps;
        constexpr int detail = 3;
        while (sqlite3_step(prepared) == SQLITE_ROW)
            steps << reinterpret_cast<const char*>(sqlite3_column_text(prepared, detail));
        sqlite3_finalize(prepared);
        return steps.join(" + ");
    }

private:
    struct Closer {
        void operator()(sqlite3* opened) const { sqlite3_close(opened); }
    };
    std::unique_ptr<sqlite3, Closer> store;
};

QString WithLiterals(QString statement)
{
    return statement.replace("num_presta = ?", "num_presta = 3")
        .replace("flag_R < ?", "flag_R < 2")
        .replace("flag_R > ?", "flag_R > 1")
        .replace("?", "'2008-06-17'");
}

} // namespace

// Every statement that a screen repeats or runs over the whole table finds its rows through an index, whether the
// values are bound or written out; where a step is named "COVERING" the table isn't touched at all.
TEST(Schema, ServesTheStatementsOfTheScreens)
{
    const Store store;
    const struct {
        const char* statement;
        const char* plan;
    } rows[] = {
        {"select sum(montant) from Actes where date < ?",
         "SEARCH Actes USING COVERING INDEX Actes_Date_Montant (Date<?)"},
        {"select sum(montant) from Recettes where date < ?",
         "SEARCH Recettes USING COVERING INDEX Recettes_Date (Date<?)"},
        {"select count(num), sum(montant) from Actes where date = ? and num_presta = ?",
         "SEARCH Actes USING COVERING INDEX Actes_Presta_Date (num_presta=? AND Date=?)"},
        {"select count(num), sum(montant) from Actes where date >= ? and date <= ? and num_presta = ?",
         "SEARCH Actes USING COVERING INDEX Actes_Presta_Date (num_presta=? AND Date>? AND Date<?)"},
        {"select count(num) from Actes where date = ? and num_presta = ?",
         "SEARCH Actes USING COVERING INDEX Actes_Date_Presta (Date=? AND num_presta=?)"},
        {"select count(num) from Actes where date = ? and flag_H = 0 and num_presta = ?",
         "SEARCH Actes USING INDEX Actes_Date_Presta (Date=? AND num_presta=?)"},
        {"select * from Actes where date = ? and num_presta = ? order by num",
         "SEARCH Actes USING INDEX Actes_Date_Presta (Date=? AND num_presta=?)"},
        {"select * from Actes where date = ? and flag_R > ? order by num",
         "SEARCH Actes USING INDEX Actes_Date_Reglement (Date=?)"},
        {"select num from Actes where date >= ? and date <= ? and flag_R < ? order by num",
         "SEARCH Actes USING COVERING INDEX Actes_Date_Reglement (Date>? AND Date<?) + USE TEMP B-TREE FOR ORDER BY"},
        // The first row of these is there at once: no sort.
        {"select * from Actes where flag_R < ? order by date, num", "SCAN Actes USING INDEX Actes_Date_Reglement"},
        {"select * from Actes where flag_R < ? order by date, num limit 1",
         "SCAN Actes USING INDEX Actes_Date_Reglement"},
        {"select * from Actes order by date, num limit 1", "SCAN Actes USING INDEX Actes_Date_Reglement"},
        {"select * from Actes order by date desc, num desc limit 1", "SCAN Actes USING INDEX Actes_Date_Reglement"},
        {"select * from Actes order by num", "SCAN Actes"},
        {"select * from Recettes where date >= ? and date <= ? order by date, num",
         "SEARCH Recettes USING INDEX Recettes_Date (Date>? AND Date<?)"},
        {"select * from Actes_suppr order by date_suppr, num", "SCAN Actes_suppr USING INDEX Actes_suppr_Date"},
        {"select num from Actes where date_Presta = ? and num_presta = ?",
         "SEARCH Actes USING COVERING INDEX Actes_DatePresta (date_Presta=? AND num_presta=?)"},
        {"select count(num) from Actes where MM = ? and AA = ? and num_presta = ?",
         "SEARCH Actes USING COVERING INDEX Actes_Mois (AA=? AND MM=? AND num_presta=?)"},
        {"select * from Patients where N_carte = ? order by num",
         "SEARCH Patients USING INDEX Patients_Carte (N_carte=?)"},
        {"select count(num) from Plani where Num_Presta = ? and date = ? and HH = ?",
         "SEARCH Plani USING COVERING INDEX Plani_Date (date=? AND Num_Presta=? AND HH=?)"},
        {"select * from Plani where Num_Presta = ? and date = ? order by HH, num",
         "SEARCH Plani USING INDEX Plani_Date (date=? AND Num_Presta=?)"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(store.Plan(row.statement), QString(row.plan)) << row.statement;
        EXPECT_EQ(store.Plan(WithLiterals(row.statement)), QString(row.plan)) << row.statement;
    }
    EXPECT_TRUE(store.Plan("update Actes set Flag_H = 1 where date = ?").startsWith("SEARCH Actes USING INDEX"));
    EXPECT_TRUE(store.Plan("update Actes set Flag_H = 0 where date >= ? and date <= ?").startsWith("SEARCH"));
}
