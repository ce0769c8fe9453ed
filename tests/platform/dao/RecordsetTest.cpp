#include "SmallPractice.h"

namespace dao::test {
namespace {

class RecordsetRows : public SmallPractice {
protected:
    /// Adds a pending act through another set.
    Key Add() const
    {
        Recordset acts = Open("Actes");
        acts.AddNew();
        acts["flag_R"] = 0;
        acts.Update();
        return acts.LastKey();
    }

    /// Replaces the acts by acts 1 to `count`.
    void FillActs(int count)
    {
        const QString fill = "delete from Actes; with recursive n(i) as (select 1 union all select i + 1 from n where "
                             "i < %1) insert into Actes (num, montant) select i, i from n";
        ASSERT_EQ(Other(path).Run(fill.arg(count).toUtf8().constData()), SQLITE_OK);
    }
};

TEST_F(RecordsetRows, AreCountedWhenTheLastWasReached)
{
    Recordset rows = Open("select * from Actes where date =#03/02/2008# order by num");
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 1) << "not counted yet, and not empty";
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 3);
    EXPECT_EQ(rows["num"].Key(), 4);
    rows.MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), Error::NoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows["num"].Key(); }), Error::NoCurrentRecord);
    EXPECT_TRUE(rows.IsEOF());
    EXPECT_EQ(rows.RecordCount(), 3);
}

TEST_F(RecordsetRows, ReportAnEmptySet)
{
    for (const char* const statement :
         {"Prov", "select * from Actes where num = 99", "select num from Actes where num = 99"}) {
        Recordset rows = Open(statement);
        EXPECT_TRUE(rows.IsEOF());
        EXPECT_EQ(rows.RecordCount(), 0);
        for (const auto& move : {&Recordset::MoveFirst, &Recordset::MoveNext, &Recordset::MoveLast})
            EXPECT_EQ(ErrorOf([&] { (rows.*move)(); }), Error::NoCurrentRecord) << statement;
        const bool isAnswer = QString(statement).startsWith("select num");
        EXPECT_EQ(ErrorOf([&] { rows.FindFirst(1); }), isAnswer ? Error::InvalidOperation : Error::NoCurrentRecord);
        EXPECT_EQ(ErrorOf([&] { rows["num"].Text(); }), Error::NoCurrentRecord) << statement;
    }
}

TEST_F(RecordsetRows, AreInKeyOrderByDefaultAndOnTies)
{
    EXPECT_EQ(Keys("Select * from Actes where date >=#03/01/2008# order by num_presta"), "1 2 4 3 5");
    EXPECT_EQ(Keys("select * from Actes where date >=#03/01/2008# order by date desc"), "5 2 3 4 1");
    EXPECT_EQ(Keys("select * from Actes order by num desc"), "6 5 4 3 2 1");
}

TEST_F(RecordsetRows, KeepTheirMembersAndShowLiveValues)
{
    Recordset pending = Open("select * from Actes where Flag_R < 2 order by num");
    database.Execute("update Actes set flag_R = 5, montant = 99 where num = 3");
    const Key added = Add();
    EXPECT_EQ(Walk(pending), "2 3 5");
    pending.MoveFirst();
    pending.FindFirst(3);
    ASSERT_FALSE(pending.NoMatch());
    EXPECT_EQ(pending["flag_R"].Long(), 5);
    EXPECT_EQ(pending["montant"].Double(), 99);
    pending.FindFirst(added);
    EXPECT_TRUE(pending.NoMatch());
    EXPECT_EQ(pending["num"].Key(), 3) << "a miss leaves the row";
}

TEST_F(RecordsetRows, ShowTheValuesAtTheTimeTheyAreReached)
{
    Other other(path);
    Recordset rows = Open("select * from Actes where num < 4");
    rows.MoveNext();
    ASSERT_EQ(other.Run("update Actes set montant = montant + 1"), SQLITE_OK);
    EXPECT_EQ(rows["montant"].Double(), 50);
    rows.MoveNext();
    EXPECT_EQ(rows["montant"].Double(), 26);
    rows.MoveFirst();
    EXPECT_EQ(rows["montant"].Double(), 101.5);
}

TEST_F(RecordsetRows, DeletedBehindTheSetRaiseOnReadingOnly)
{
    Other other(path);
    for (const char* const statement :
         {"select * from Actes where num > 6", "select * from Actes order by date, num"}) {
        ASSERT_EQ(other.Run("begin; delete from Actes where num in (7, 8, 9); insert into Actes (num, Date) values "
                            "(7, '1990-01-01'), (8, '1990-01-01'), (9, '1990-01-01'); commit"),
                  SQLITE_OK);
        Recordset rows = Open(statement);
        rows.FindFirst(7);
        ASSERT_FALSE(rows.NoMatch()) << statement;
        ASSERT_EQ(other.Run("delete from Actes where num in (7, 8)"), SQLITE_OK);
        DBEngine.Idle(RefreshCache); // notices what others have written
        EXPECT_EQ(ErrorOf([&] { rows["num"].Key(); }), Error::RecordDeleted) << statement;
        rows.MoveNext();
        EXPECT_EQ(ErrorOf([&] { rows["num"].Key(); }), Error::RecordDeleted) << statement;
        EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), Error::RecordDeleted) << statement;
        EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), Error::RecordDeleted) << statement;
        rows.MoveNext();
        EXPECT_EQ(rows["num"].Key(), 9) << statement;
        rows.FindFirst(8);
        EXPECT_TRUE(rows.NoMatch()) << statement;
    }
}

TEST_F(RecordsetRows, AreFoundByTheirKeysWhileAnotherListIsHalfRead)
{
    for (const char* const statement : {"Patients", "select * from Patients where num > 0 order by nom"}) {
        Recordset halfRead = Open(statement);
        halfRead.MoveNext();
        Recordset rows = Open(statement);
        for (const auto& [key, name] : {std::pair(5, "Zidane"), std::pair(3, "D'Artagnan")}) {
            rows.FindFirst(key);
            EXPECT_EQ(rows["nom"].Text(), name);
        }
        for (const Key miss : {0, 6, -3}) {
            rows.FindFirst(miss);
            EXPECT_TRUE(rows.NoMatch());
            EXPECT_EQ(rows["num"].Key(), 3);
        }
        rows.FindFirst(4);
        EXPECT_FALSE(rows.NoMatch());
        rows.MoveNext();
        EXPECT_EQ(rows["num"].Key(), 5) << "the next one in the set's order";
        EXPECT_EQ(Walk(halfRead), QString(statement) == "Patients" ? "2 3 4 5" : "2 1 4 5");
    }
}

TEST_F(RecordsetRows, OfALongTableAreTraversedFoundAndCounted)
{
    constexpr int many = 40000; // more than are kept in memory
    FillActs(many);
    for (const bool isUpwards : {true, false}) {
        Recordset rows = Open(isUpwards ? "Actes" : "select * from Actes where montant > 0 order by num desc");
        for (int walked = 1; walked <= many; ++walked, rows.MoveNext())
            ASSERT_EQ(rows["montant"].Long(), isUpwards ? walked : many + 1 - walked);
        EXPECT_TRUE(rows.IsEOF());
        EXPECT_EQ(rows.RecordCount(), many);
        rows.MoveLast();
        EXPECT_EQ(rows["num"].Key(), isUpwards ? many : 1);
        for (const int key : {many - 5, 2, 5000, 4097, 4098}) {
            rows.FindFirst(key);
            EXPECT_EQ(rows["montant"].Long(), key);
            rows.MoveNext();
            EXPECT_EQ(rows["montant"].Long(), key + (isUpwards ? 1 : -1));
        }
    }
}

// Membership at all sizes: from the lowest key to the highest at opening, live rows, followed by rows added through the
// set.
TEST_F(RecordsetRows, OfAWholeTableAreThoseUpToTheHighestKeyAtTheOpening)
{
    for (const int count : {10, 10000}) {
        SCOPED_TRACE(count);
        FillActs(count);
        Other other(path);
        Recordset rows = Open("Actes");
        rows.AddNew();
        rows.Update();
        const Key own = rows.LastKey();
        const Key foreign = Add();
        ASSERT_EQ(other.Run("delete from Actes where num = 2"), SQLITE_OK);
        rows.MoveNext();
        EXPECT_EQ(rows["num"].Key(), 3) << "one that was deleted before it is reached is passed over";
        ASSERT_EQ(other.Run("insert into Actes (num, Date) values (2, '1999-12-31'), (-5, '1999-12-31')"), SQLITE_OK);
        rows.MoveFirst();
        EXPECT_EQ(Walk(rows, 3), "-5 1 2") << "one that was added below the highest key is a member";

        const QString last = QString::number(count);
        rows.FindFirst(count - 3);
        database.Execute("delete * from Actes where num = " + QString::number(count - 3));
        EXPECT_EQ(ErrorOf([&] { rows["num"].Key(); }), Error::RecordDeleted) << "the current one";
        EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), Error::RecordDeleted);
        EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), Error::RecordDeleted);
        database.Execute("delete * from Actes where num = " + QString::number(count - 1));
        EXPECT_EQ(Walk(rows, 3, true), QString::number(count - 2) + " " + last + " " + QString::number(own));
        rows.MoveNext();
        EXPECT_TRUE(rows.IsEOF());
        EXPECT_EQ(rows.RecordCount(), count) << "with -5 and its own, without two that are gone";

        rows.FindFirst(foreign);
        EXPECT_TRUE(rows.NoMatch());
        rows.FindFirst(count - 1);
        EXPECT_TRUE(rows.NoMatch());
        rows.FindFirst(own);
        EXPECT_EQ(rows["num"].Key(), own);
        rows.MoveLast();
        EXPECT_EQ(rows["num"].Key(), own);
        database.Execute("delete * from Actes where num > " + last);
        rows.MoveLast();
        EXPECT_EQ(rows["num"].Key(), count);
    }
}

TEST_F(RecordsetRows, OfAClearedTableAreDeleted)
{
    Recordset rows = Open("Actes");
    database.Execute("delete * from Actes");
    EXPECT_EQ(ErrorOf([&] { rows["num"].Key(); }), Error::RecordDeleted);
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), Error::NoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.MoveLast(); }), Error::NoCurrentRecord);
    EXPECT_EQ(rows.RecordCount(), 0);
    rows.AddNew();
    rows["num"] = 1;
    rows.Update();
    rows.MoveFirst();
    EXPECT_EQ(Walk(rows), "1");
}

TEST_F(RecordsetRows, AreReadByNameAndPosition)
{
    Recordset rows = Open("Actes");
    EXPECT_EQ(rows.FieldCount(), 13);
    EXPECT_EQ(rows["DATE"].Text(), "01/03/2008");
    EXPECT_EQ(rows.Collect("montant").Text(), "100.5");
    EXPECT_EQ(rows.Fields(9).Double(), 100.5);
    EXPECT_EQ(rows["montant"].Long(), 100) << "a tie goes to the even number";
    EXPECT_EQ(static_cast<int>(rows["flag_R"].Integer()), 2);
    EXPECT_EQ(ErrorOf([&] { rows["nul"]; }), Error::UnknownField);
    for (const int none : {-1, 13})
        EXPECT_EQ(ErrorOf([&] { rows.Fields(none); }), Error::UnknownField);
    EXPECT_EQ(ErrorOf([&] { rows["Type"].Double(); }), Error::TypeMismatch);

    rows.FindFirst(6);
    EXPECT_TRUE(rows["montant"].IsNull());
    EXPECT_EQ(ErrorOf([&] { rows["montant"].Double(); }), Error::InvalidNull);
    EXPECT_EQ(ErrorOf([&] { rows["Date"].Text(); }), Error::InvalidNull);
}

TEST_F(RecordsetRows, RaiseWhenTheyOrTheirDatabaseAreClosed)
{
    EXPECT_EQ(ErrorOf([] { Recordset().MoveFirst(); }), Error::ObjectClosed);
    Recordset rows = Open("Actes");
    Recordset copy = rows;
    rows.Close();
    EXPECT_FALSE(copy.IsOpen());
    EXPECT_EQ(ErrorOf([&] { copy.IsEOF(); }), Error::ObjectClosed);

    Recordset reading = Open("Patients");
    Recordset counted = Open("select count(*) as S1 from Actes");
    const Field count = counted["S1"];
    Database second = database;
    database.Close();
    database.Close();
    EXPECT_FALSE(reading.IsOpen());
    EXPECT_EQ(ErrorOf([&] { reading.MoveNext(); }), Error::ObjectClosed);
    EXPECT_EQ(ErrorOf([&] { count.Long(); }), Error::ObjectClosed);
    EXPECT_EQ(ErrorOf([&] { second.Execute("delete * from Prov"); }), Error::ObjectClosed);
    EXPECT_EQ(ErrorOf([&] { database.OpenRecordset("Prov"); }), Error::ObjectClosed);
    EXPECT_FALSE(QFile::exists(path + "-wal")) << "nothing stays beside a closed file";
}

} // namespace
} // namespace dao::test
