#include "SmallPractice.h"

namespace dao::test {
namespace {

class EditedRows : public SmallPractice {};

TEST_F(EditedRows, StartFromTheCurrentValuesAndAreWrittenAtUpdate)
{
    Other other(path);
    Recordset rows = Open("select * from Actes where num = 2");
    ASSERT_EQ(other.Run("update Actes set Heure = '10:30' where num = 2"), SQLITE_OK);
    EXPECT_TRUE(rows["Heure"].IsNull());
    rows.Edit();
    EXPECT_EQ(rows["Heure"].Text(), "10:30");
    rows["montant"] = 75.25;
    rows["flag_R"] = 2;
    rows["Type"] = Value();
    EXPECT_EQ(rows["montant"].Double(), 75.25);
    EXPECT_EQ(other.Answer("select montant from Actes where num = 2"), "50.0");
    rows.Update();
    EXPECT_EQ(other.Answer("select montant || ' ' || flag_R || ' ' || Heure || ' ' || Date from Actes where num = 2"),
              "75.25 2 10:30 2008-03-02");
    rows.Edit();
    rows["montant"] = 1;
    rows.CancelUpdate();
    EXPECT_EQ(rows["montant"].Double(), 75.25);
    EXPECT_EQ(other.Answer("select montant from Actes where num = 2"), "75.25");
}

TEST_F(EditedRows, AddedComeLast)
{
    Recordset rows = Open("select * from Actes where flag_R = 3");
    EXPECT_EQ(ErrorOf([&] { rows.LastKey(); }), Error::NoCurrentRecord);
    rows.AddNew();
    EXPECT_TRUE(rows["Type"].IsNull());
    rows["Date"] = "29/02/2008";
    rows.Update();
    EXPECT_EQ(rows["num"].Key(), 4) << "the row from before";
    EXPECT_EQ(rows.LastKey(), 7);
    rows.MoveLast();
    EXPECT_EQ(rows["num"].Key(), 7);
    EXPECT_EQ(rows["Date"].Text(), "29/02/2008");
    EXPECT_EQ(rows["montant"].Double(), 0) << "the table's default";
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveFirst();
    rows.FindFirst(7);
    EXPECT_EQ(rows["num"].Key(), 7);

    Recordset empty = Open("Prov");
    empty.AddNew();
    empty.Update();
    EXPECT_EQ(empty.RecordCount(), 1);
    empty.MoveFirst();
    EXPECT_TRUE(empty["unite"].IsNull());
}

TEST_F(EditedRows, AddedOneAfterAnotherMayHaveOtherFields)
{
    Recordset rows = Open("Actes");
    const std::vector<std::pair<const char*, Value>> added[] = {{{"montant", 5.5}, {"Type", "K1"}},
                                                                {{"montant", 6.5}, {"Type", "K2"}},
                                                                {{"Type", "K3"}, {"montant", 7.5}},
                                                                {{"montant", 8.5}, {"flag_R", 4}},
                                                                {}};
    for (const auto& cells : added) {
        rows.AddNew();
        for (const auto& [field, value] : cells)
            rows[field] = value;
        rows.Update();
    }
    Other other(path);
    EXPECT_EQ(other.Answer("select group_concat(montant || ifnull(Type, '-') || flag_R, ' ') from Actes where num > 6"),
              "5.5K10 6.5K20 7.5K30 8.5-4 0.0-0");
}

TEST_F(EditedRows, DeletedThroughTheSetLeaveIt)
{
    Recordset rows = Open("select * from Actes where date =#03/02/2008#");
    rows.MoveNext();
    rows.Delete();
    EXPECT_EQ(ErrorOf([&] { rows["num"].Key(); }), Error::RecordDeleted);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), Error::RecordDeleted);
    rows.MoveNext();
    EXPECT_EQ(rows["num"].Key(), 4);
    rows.MoveFirst();
    EXPECT_EQ(Walk(rows), "2 4");
    EXPECT_EQ(rows.RecordCount(), 2);
    for (rows.MoveFirst(); rows.RecordCount() > 0; rows.MoveNext())
        rows.Delete();
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), Error::NoCurrentRecord);
    EXPECT_EQ(Keys("Actes"), "1 5 6");
}

TEST_F(EditedRows, ConvertWhatIsWritten)
{
    Recordset rows = Open("Actes");
    rows.Edit();
    rows["Date"] = "31/12/1999";
    rows["num_presta"] = 2.5;
    rows["montant"] = "12.75";
    rows["Type"] = 30;
    rows["flag_R"] = "3";
    rows.Update();
    EXPECT_EQ(rows["Date"].Text(), "31/12/1999");
    EXPECT_EQ(rows["num_presta"].Long(), 2);
    EXPECT_EQ(rows["montant"].Double(), 12.75);
    EXPECT_EQ(rows["Type"].Text(), "30");
    EXPECT_EQ(static_cast<int>(rows["flag_R"].Integer()), 3);

    rows.Edit();
    rows["montant"] = Open("select * from Actes where num = 6")["montant"];
    rows["Date"] = Open("select * from Actes where num = 5")["Date"];
    for (const char* const date :
         {"", "29/02/2100", "29/02/2007", "2008-03-01", "1/3/2008", "32/01/2008", "ab/cd/efgh"})
        EXPECT_EQ(ErrorOf([&] { rows["Date"] = date; }), Error::ConversionFailed) << date;
    for (const char* const number : {"", "douze", "1,5", "nan", "1e999"})
        EXPECT_EQ(ErrorOf([&] { rows["montant"] = number; }), Error::ConversionFailed) << number;
    for (const auto& [field, number] : {std::pair("flag_R", 32768.0), {"flag_R", 32767.5}, {"num_presta", 3e9}})
        EXPECT_EQ(ErrorOf([&] { rows[field] = number; }), Error::Overflow) << number;
    EXPECT_EQ(ErrorOf([&] { rows["num"] = 3; }), Error::FieldNotUpdatable);
    rows.Update();
    EXPECT_EQ(rows["Date"].Text(), "03/03/2008") << "copied from another set";
    EXPECT_TRUE(rows["montant"].IsNull());
}

TEST_F(EditedRows, AskForTheirStepsInOrder)
{
    Recordset rows = Open("Actes");
    EXPECT_EQ(ErrorOf([&] { rows["montant"] = 1; }), Error::NoPendingEdit);
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), Error::NoPendingEdit);
    EXPECT_EQ(ErrorOf([&] { rows.CancelUpdate(); }), Error::NoPendingEdit);
    rows.Edit();
    rows["montant"] = 1;
    rows.MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), Error::NoPendingEdit) << "moving drops the edit";
    while (!rows.IsEOF())
        rows.MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), Error::NoCurrentRecord);

    Recordset counts = Open("select count(*) as S1 from Actes");
    EXPECT_EQ(ErrorOf([&] { counts.Edit(); }), Error::ReadOnly);
    EXPECT_EQ(ErrorOf([&] { counts.AddNew(); }), Error::ReadOnly);
    EXPECT_EQ(Open("Actes")["montant"].Double(), 100.5);
}

TEST_F(EditedRows, RefusedByTheTableAreNotWritten)
{
    Recordset rows = Open("select * from Presta order by ordre");
    rows.AddNew();
    rows["num"] = 12;
    rows["denom"] = "Laser";
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), Error::DuplicateKey);
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), Error::NoPendingEdit);
    EXPECT_EQ(Walk(rows), "11 12 10");
}

TEST_F(EditedRows, AreNeverTheOldRowAfterAFailedSearch)
{
    for (const char* const statement : {"Actes", "select * from Actes where num > 0"}) {
        Recordset rows = Open(statement);
        for (const Key miss : {99, 1'000'000}) {
            rows.FindFirst(2);
            rows.FindFirst(miss);
            ASSERT_TRUE(rows.NoMatch());
            EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), Error::NoCurrentRecord) << statement;
            EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), Error::NoCurrentRecord) << statement;
            EXPECT_EQ(rows["num"].Key(), 2) << "reading stays on the row from before";
        }
        for (const auto& move : {&Recordset::MoveNext, &Recordset::MoveFirst, &Recordset::MoveLast}) {
            (rows.*move)();
            EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), std::nullopt);
            rows.FindFirst(99);
        }
        rows.FindFirst(4);
        EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), std::nullopt);
    }
    EXPECT_EQ(Keys("Actes"), "1 2 3 4 5 6");
}

TEST_F(EditedRows, SeeAFieldAppendedToTheirTable)
{
    Recordset before = Open("Prov");
    TableDef table = database.TableDef("PROV");
    Recordset filled = Open("Prov");
    filled.AddNew();
    filled.Update();
    table.AppendField("Mt2", 0);
    EXPECT_EQ(table.FieldCount(), 6);
    EXPECT_EQ(table.FieldNames().last(), "Mt2");
    for (const char* const name : {"mt2", "NUM"})
        EXPECT_EQ(ErrorOf([&] { table.AppendField(name, 0); }), Error::FieldExists) << name;
    EXPECT_EQ(ErrorOf([&] { database.TableDef("Nulle"); }), Error::UnknownField);
    EXPECT_EQ(Open("Prov")["Mt2"].Double(), 0);
    Recordset rows = Open("select * from Prov where Mt2 = 0");
    rows.AddNew();
    rows["Mt2"] = 2.5;
    rows.Update();
    EXPECT_EQ(Open("select sum(Mt2) as S1 from Prov")["S1"].Double(), 2.5);
    EXPECT_EQ(before.RecordCount(), 0);
}

} // namespace
} // namespace dao::test
