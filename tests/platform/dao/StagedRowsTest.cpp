#include "SmallPractice.h"

#include "platform/dao/StagedRows.h"
#include "platform/store/DatabaseReader.h"

#include <optional>

namespace dao::test {
namespace {

/// Acts put aside: keys from `first` on, one for each of so many days from a day on.
class StagedActs : public SmallPractice {
protected:
    void Stage(Key first, int count, const QDate& day)
    {
        rows.emplace(database, "Actes", QStringList{"num", "date", "Montant"});
        for (int act = 0; act < count; ++act)
            EXPECT_TRUE(rows->Add({first + act, day.addDays(act).toString("dd/MM/yyyy"), act}));
        rows->Compare();
    }

    bool Write()
    {
        Transaction transaction(database);
        const bool written = rows->Write();
        if (written)
            transaction.Commit();
        return written;
    }

    /// The table by its rows and by each of its indexes.
    void ExpectActs(int count, double total)
    {
        for (const char* const index : {"NOT INDEXED", "INDEXED BY Actes_Date_Montant", "INDEXED BY Actes_Presta_Date"})
            EXPECT_EQ(
                other
                    .Answer(qPrintable(QString("select count(*) || ' ' || total(montant) from Actes %1 where Date "
                                               "is not null or num_presta is not null")
                                           .arg(index)))
                    .toStdString(),
                QString("%1 %2").arg(count).arg(total, 0, 'f', 1).toStdString())
                << index;
        EXPECT_EQ(store::CheckDatabase(path), QStringList());
    }

    std::optional<StagedRows> rows;
    Other other{path};
};

TEST_F(StagedActs, TakeEachKeyOnceAndNeedOne)
{
    rows.emplace(database, "Actes", QStringList{"num", "Date"});
    EXPECT_TRUE(rows->Add({50, "17/06/2008"}));
    EXPECT_FALSE(rows->Add({50, "18/06/2008"}));
    EXPECT_EQ(ErrorOf([&] { rows->Add({Value(), "17/06/2008"}); }), Error::NullNotAllowed);
    EXPECT_EQ(ErrorOf([&] { rows->Add({51, "31/06/2008"}); }), Error::ConversionFailed);
    rows->Compare();
    EXPECT_EQ(rows->Fresh(), 1);
    EXPECT_TRUE(Write());
    EXPECT_EQ(Open("select * from Actes where num = 50")["Date"].Text(), "17/06/2008");
    EXPECT_EQ(Open("select * from Actes where num = 50")["montant"].Double(), 0) << "the default of the table";

    const auto opening = [this](const QString& table, const QStringList& fields) {
        return ErrorOf([&] { const StagedRows refused(database, table, fields); });
    };
    EXPECT_EQ(opening("Permn", {"Date"}), Error::UnknownField) << "no key";
    EXPECT_EQ(opening("Actes", {"Date"}), Error::UnknownField) << "its key isn't there";
    EXPECT_EQ(opening("Actes", {"num", "Jour"}), Error::UnknownField);
}

// Rows behind all others are copied page by page, those among others one by one.
TEST_F(StagedActs, GetIntoTableAndIndexesBehindOrAmongOthers)
{
    Stage(1000, 3000, QDate(2010, 1, 1));
    ASSERT_EQ(other.Run("begin immediate; rollback"), SQLITE_OK) << "nothing is locked so far";
    ExpectActs(6, 185.5);
    EXPECT_TRUE(Write());
    const double total = 185.5 + 2999. * 3000 / 2;
    ExpectActs(3006, total);
    Stage(5000, 2000, QDate(2010, 6, 1));
    EXPECT_TRUE(Write());
    ExpectActs(5006, total + 1999. * 2000 / 2);
}

TEST_F(StagedActs, AmongOthersFillTheirPages)
{
    const auto pages = [this] { return other.Answer("pragma page_count").toInt(); };
    Stage(1000, 5000, QDate(2010, 1, 1));
    EXPECT_TRUE(Write());
    const int single = pages();
    Stage(10000, 5000, QDate(2010, 1, 1));
    EXPECT_TRUE(Write());
    EXPECT_LT(pages(), 3 * single);
}

TEST_F(StagedActs, DifferInMoreThanBlanks)
{
    ASSERT_EQ(other.Run("update Patients set ville = ' Alger ', diagno = ' '"), SQLITE_OK);
    rows.emplace(database, "Patients", QStringList{"num", "tel", "ville", "diagno"});
    rows->Add({4, Value(), "Alger", Value()});
    rows->Add({5, "0661", "alger", Value()});
    rows->Compare();
    EXPECT_EQ(rows->Same(), 1);
    ASSERT_EQ(rows->Changed(), 1);
    EXPECT_EQ(rows->Differences(5)[0].fields, QStringList("ville"));
}

TEST_F(StagedActs, AreComparedByTheFieldsThatAreNamed)
{
    rows.emplace(database, "Actes", QStringList{"Date", "num", "Flag_H", "Type"});
    rows->Add({"01/03/2008", 1, Value(), "C"});
    rows->Add({"02/03/2008", 2, 0, Value()});
    rows->Add({"03/03/2008", 3, 0, "K5"});
    rows->Add({"03/03/2008", 7, 0, "K5"});
    rows->Compare();
    EXPECT_EQ(rows->Same(), 1);
    EXPECT_EQ(rows->Changed(), 2);
    EXPECT_EQ(rows->Fresh(), 1);
    const auto differences = rows->Differences(5);
    ASSERT_EQ(differences.size(), 2U);
    EXPECT_EQ(differences[0].key, 2);
    EXPECT_EQ(differences[0].fields, QStringList("Flag_H"));
    EXPECT_EQ(differences[1].fields, QStringList({"Date", "Flag_H"}));
    EXPECT_EQ(rows->Differences(1).size(), 1U);
    EXPECT_TRUE(Write());
    EXPECT_EQ(
        other.Answer("select group_concat(montant) from (select montant from Actes where Flag_H is 0 order by num)"),
        "50.0,25.0,0.0");
    EXPECT_EQ(store::CheckDatabase(path), QStringList());
}

} // namespace
} // namespace dao::test
