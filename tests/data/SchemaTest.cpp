#include "data/Practice.h"
#include "platform/store/Creation.h"
#include "platform/store/Opening.h"
#include "support/Printing.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

constexpr const char* Rows = R"(
    with recursive n(i) as (select 1 union all select i + 1 from n where i < 400)
        insert into Actes (Date, date_Presta, AA, MM, num_presta, flag_R)
        select date('2008-06-01', (i % 40) || ' days'), '2008-06-17', 2008, 6, i % 12, i % 6 from n;
    insert into Actes_suppr (Date_Suppr) select Date from Actes;
    insert into Recettes (Date) select Date from Actes;
    insert into Plani (date, Num_Presta, HH) select Date, num_presta, num % 10 from Actes;
    insert into Patients (N_carte) select num from Actes;
)";

/// A database with the tables of a practice and a few hundred rows, to examine how statements are executed.
struct SchemaDatabase {
    store::Statement Prepare(const QString& statement) const
    {
        store::Statement prepared(database.get(), statement.toStdString());
        for (int parameter = 1; parameter <= sqlite3_bind_parameter_count(prepared.Raw()); ++parameter)
            prepared.Bind(parameter, store::Value("2008-06-17"));
        return prepared;
    }

    /// The tables and indexes that a statement reads, "scans" for a full scan, "sorts" for lack of an index.
    QStringList AccessOf(const QString& statement) const
    {
        QStringList access = TreesRead(statement);
        store::Statement running = Prepare(statement);
        while (running.Step()) {
        }
        if (sqlite3_stmt_status(running.Raw(), SQLITE_STMTSTATUS_FULLSCAN_STEP, 0) > 0)
            access << "scans";
        if (sqlite3_stmt_status(running.Raw(), SQLITE_STMTSTATUS_SORT, 0) > 0)
            access << "sorts";
        return access;
    }

    /// The tables and indexes opened by the statement's bytecode.
    QStringList TreesRead(const QString& statement) const
    {
        constexpr int opcode = 1, secondOperand = 3;
        QStringList names;
        for (store::Statement program = Prepare("explain " + statement); program.Step();) {
            if (program.TextAt(opcode) != "OpenRead" && program.TextAt(opcode) != "OpenWrite")
                continue;
            const QString root = QString::fromStdString(program.TextAt(secondOperand));
            store::Statement name = Prepare("select name from sqlite_schema where rootpage = " + root);
            if (name.Step() && !names.contains(QString::fromStdString(name.TextAt(0))))
                names << QString::fromStdString(name.TextAt(0));
        }
        names.sort();
        return names;
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath("ZEP_ONE.MDB");
    const store::SqliteHandle database = [this] {
        store::CreateDatabase(path, data::Schema() + Rows);
        return store::OpenForWork(path, {});
    }();
};

QString WithLiterals(QString statement)
{
    return statement.replace("num_presta = ?", "num_presta = 3")
        .replace("flag_R < ?", "flag_R < 2")
        .replace("flag_R > ?", "flag_R > 1")
        .replace("?", "'2008-06-17'");
}

} // namespace

// Every statement that a screen repeats or runs over a whole table uses an index, with bound values or literals; if the
// table isn't listed, it isn't read at all.
TEST(Schema, HasIndexesForTheStatementsOfTheScreens)
{
    const SchemaDatabase database;
    const std::pair<const char*, QStringList> rows[] = {
        {"select sum(montant) from Actes where date < ?", {"Actes_Date_Montant"}},
        {"select sum(montant) from Recettes where date < ?", {"Recettes_Date"}},
        {"select count(num), sum(montant) from Actes where date = ? and num_presta = ?", {"Actes_Presta_Date"}},
        {"select count(num), sum(montant) from Actes where date >= ? and date <= ? and num_presta = ?",
         {"Actes_Presta_Date"}},
        {"select count(num) from Actes where date = ? and num_presta = ?", {"Actes_Date_Presta"}},
        {"select count(num) from Actes where date = ? and flag_H = 0 and num_presta = ?",
         {"Actes", "Actes_Date_Presta"}},
        {"select * from Actes where date = ? and num_presta = ? order by num", {"Actes", "Actes_Date_Presta"}},
        {"select * from Actes where date = ? and flag_R > ? order by num", {"Actes", "Actes_Date_Reglement"}},
        {"select num from Actes where date >= ? and date <= ? and flag_R < ? order by num",
         {"Actes_Date_Reglement", "sorts"}},
        // These return the first row without sorting.
        {"select * from Actes where flag_R < ? order by date, num", {"Actes", "Actes_Date_Reglement", "scans"}},
        {"select * from Actes order by date, num", {"Actes", "Actes_Date_Reglement", "scans"}},
        {"select * from Actes order by date desc, num desc", {"Actes", "Actes_Date_Reglement", "scans"}},
        {"select * from Actes order by num", {"Actes", "scans"}},
        {"select * from Recettes where date >= ? and date <= ? order by date, num", {"Recettes", "Recettes_Date"}},
        {"select * from Actes_suppr order by date_suppr, num", {"Actes_suppr", "Actes_suppr_Date", "scans"}},
        {"select num from Actes where date_Presta = ? and num_presta = ?", {"Actes_DatePresta"}},
        {"select count(num) from Actes where MM = ? and AA = ? and num_presta = ?", {"Actes_Mois"}},
        {"select * from Patients where N_carte = ? order by num", {"Patients", "Patients_Carte"}},
        {"select count(num) from Plani where Num_Presta = ? and date = ? and HH = ?", {"Plani_Date"}},
        {"select * from Plani where Num_Presta = ? and date = ? order by HH, num", {"Plani", "Plani_Date"}},
    };
    for (const auto& [statement, access] : rows) {
        EXPECT_EQ(database.AccessOf(statement), access) << statement;
        EXPECT_EQ(database.AccessOf(WithLiterals(statement)), access) << statement;
    }
    for (const char* update :
         {"update Actes set Flag_H = 1 where date = ?", "update Actes set Flag_H = 0 where date >= ? and date <= ?"})
        EXPECT_FALSE(database.AccessOf(update).contains("scans")) << update;
}
