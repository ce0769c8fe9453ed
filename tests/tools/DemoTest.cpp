#include "support/Golden.h"
#include "support/OtherProgram.h"
#include "tools/PracticeCommand.h"

#include <QDir>

namespace {

/// A line for each field of each table: how many rows have a value, how many values differ, the least, the greatest,
/// the sum, and a sum that shows which row has which value.
QString Content(const QString& folder)
{
    tests::OtherProgram other(folder + "/ZEP_ONE.MDB");
    const practice::PracticeData data(folder);
    QString text;
    for (const char* const table :
         {"Patients", "Actes", "Actes_suppr", "Presta", "Tarif", "Plani", "Recettes", "textes", "Permn"})
        for (const QString& field : data.Database().TableDef(table).FieldNames()) {
            const QString select = QString("select format('%d, %d, %s, %s, %.2f, %d', count(f), count(distinct f), "
                                           "min(f), max(f), sum(f), sum(rowid * unicode(substr(f, -1)))) "
                                           "from (select rowid, %1 as f from %2)")
                                       .arg(field, table);
            text += QString("%1.%2 %3\n").arg(table, field, other.Answer(select.toUtf8().constData()));
        }
    return text;
}

} // namespace

class Demo : public testing::Test {
protected:
    QString Make(const QString& name, const QStringList& options)
    {
        const CommandRun run(QStringList{"demo", place.filePath(name), "--until", "18/06/2024"} + options);
        EXPECT_EQ(run.code, 0) << run.errors.toStdString();
        EXPECT_TRUE(run.output.contains("Code d'accès : 2468"));
        return place.filePath(name);
    }

    QTemporaryDir place;
};

TEST_F(Demo, OfOneSeedIsAlwaysTheSame)
{
    tests::ExpectGolden(Content(Make("a", {"--acts", "400"})), PRACTICE_DEMO, QDir::currentPath() + "/demo.txt");
    EXPECT_NE(Content(Make("b", {"--acts", "400", "--seed", "2"})), Content(place.filePath("a")));
}

TEST_F(Demo, FillsEveryTabOfItsLastDay)
{
    const QString folder = Make("a", {"--acts", "400", "--patients", "60"});
    const practice::PracticeData data(folder);
    const auto count = [&data](const QString& condition) {
        return data.Database().OpenRecordset("select count(num) as S1 from " + condition)["S1"].Long();
    };
    const QString lastDay = "date = #06/18/2024#";
    EXPECT_EQ(count("Actes"), 400);
    EXPECT_EQ(count("Patients"), 60);
    EXPECT_EQ(count("Presta"), 12);
    for (int settlement = 0; settlement < 6; ++settlement)
        EXPECT_GE(count(QString("Actes where flag_R = %1 and %2").arg(settlement).arg(lastDay)), 2) << settlement;
    EXPECT_GE(count("Recettes where " + lastDay), 2);
    EXPECT_GE(count("Plani where " + lastDay), 1);
    EXPECT_EQ(count("Actes where date > #06/18/2024#"), 0);
    EXPECT_EQ(count("Actes where flag_R = 1 and montant = 0"), 0);
    EXPECT_EQ(count("Actes where flag_R = 0 and montant <> 0"), 0);
    EXPECT_EQ(data.Database().OpenRecordset("Tarif").Fields(31).Integer(), 2600);
    EXPECT_EQ(CommandRun({"check", folder}).code, 0);
}

TEST_F(Demo, GivesNoActOfAServiceThatIsGoneToANewOne)
{
    tests::OtherProgram other(Make("a", {"--acts", "8000", "--services", "3"}) + "/ZEP_ONE.MDB");
    EXPECT_EQ(other.Answer("select max(num_presta) from Actes"), "4") << "a few are of it";
    ASSERT_EQ(other.Run("insert into Presta (denom) values ('Nouvelle')"), SQLITE_OK);
    EXPECT_EQ(other.Answer("select num from Presta where denom = 'Nouvelle'"), "5");
}

TEST_F(Demo, RefusesAFolderInUseAndKeepsFoldersThatItDidNotMake)
{
    for (const char* const other : {"a.part", "a.part-abcdef"}) {
        ASSERT_TRUE(QDir(place.path()).mkpath(other));
        tests::WriteFile(place.filePath(other) + "/ZEP_TWO.MDB");
    }
    ASSERT_TRUE(QDir(place.path()).mkdir("a"));
    EXPECT_EQ(CommandRun({"check", Make("a", {"--acts", "12000"})}).code, 0);
    EXPECT_EQ(tests::OtherProgram(place.filePath("a/ZEP_ONE.MDB")).Answer("select count(*) from Actes"), "12000");
    EXPECT_EQ(QDir(place.path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList({"a", "a.part", "a.part-abcdef"}));

    const CommandRun run({"demo", place.filePath("a.part")});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.errors.contains("n'est pas vide")) << run.errors.toStdString();
    EXPECT_FALSE(QFile::exists(place.filePath("a.part/ZEP_ONE.MDB")));
}
