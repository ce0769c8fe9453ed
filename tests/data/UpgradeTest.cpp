#include "archives/ArchiveCopy.h"
#include "data/Practice.h"
#include "platform/dao/Connection.h"
#include "platform/dao/Engine.h"
#include "platform/dao/Workgroup.h"
#include "platform/store/Creation.h"
#include "platform/store/DatabaseReader.h"
#include "platform/store/FileHeader.h"
#include "support/OtherProgram.h"
#include "support/Printing.h"
#include "support/Unix.h"

#include <QFile>
#include <QScopedValueRollback>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

/// A practice of the first version, in which keys could be reused.
class OlderPractice : public testing::Test {
protected:
    OlderPractice()
    {
        dao::WriteWorkgroup(folder.filePath("system.mdw"), data::WorkspaceUser, "secret");
        dao::DBEngine.SystemDB = folder.filePath("system.mdw");
        workspace = dao::DBEngine.CreateWorkspace("Special", data::WorkspaceUser, "secret");
        Make();
    }

    void Make(const QString& schema = data::Schema().remove(" AUTOINCREMENT").remove(data::FeedTables())) const
    {
        QFile::remove(path);
        store::CreateDatabase(path, schema);
        Run("pragma user_version=1");
    }
    void Run(const char* sql) const { EXPECT_EQ(tests::OtherProgram(path).Run(sql), SQLITE_OK) << sql; }
    QString Answer(const char* sql) const { return tests::OtherProgram(path).Answer(sql); }
    QString Version() const { return Answer("pragma user_version"); }

    /// Opens the practice like the program and adds a row.
    dao::Key AddTo(const char* table) const
    {
        dao::Database database = workspace.OpenDatabase(path, data::PracticeRules());
        dao::Recordset rows = database.OpenRecordset(table);
        rows.AddNew();
        rows.Update();
        const dao::Key key = rows.LastKey();
        database.Close();
        return key;
    }

    QTemporaryDir folder;
    const QString path = folder.filePath("ZEP_ONE.MDB");
    dao::Workspace workspace;
};

} // namespace

TEST_F(OlderPractice, NeverReusesAKey)
{
    Run("insert into Presta values (1, 'Radio', 800, 0), (2, 'Écho', 950.5, 1);"
        "insert into Recettes (num, objet, montant) values (4, 'Coton', 20), (6, 'Gants', 12);"
        "insert into Actes (num, num_presta) values (1, 2), (2, 7), (3, 'sept'), (4, -1), (5, 99999999999);"
        "insert into Plani (num, Num_Presta) values (1, 9); insert into Actes_suppr (num, num_presta) values (1, 12)");

    EXPECT_EQ(AddTo("Presta"), 13);
    EXPECT_EQ(Version(), QString::number(store::SchemaVersion));
    EXPECT_EQ(Answer("select group_concat(num || denom || prix || Ordre, ' ') from Presta where num < 3"),
              "1Radio800.00 2Écho950.51");
    EXPECT_EQ(
        Answer(
            "select count(*) from sqlite_schema where name in ('Recettes_Date', 'ZEP settlements', 'ZEP deletions')"),
        "3");
    EXPECT_EQ(Answer("select seq from sqlite_sequence where name = 'Actes_suppr'"), "1");

    Run("delete from Presta; delete from Recettes where num = 6");
    EXPECT_EQ(AddTo("Presta"), 14);
    EXPECT_EQ(AddTo("Recettes"), 7);
    EXPECT_EQ(Answer("pragma integrity_check"), "ok");

    Make();
    Run("insert into Actes (num, num_presta) values (1, 5)");
    EXPECT_EQ(AddTo("Presta"), 6);
    EXPECT_EQ(AddTo("Recettes"), 1);
}

TEST_F(OlderPractice, OpensWhenItCantBeChanged)
{
    {
        const QScopedValueRollback<int> impatient(data::PracticeRules().patience, 0);
        tests::OtherProgram other(path);
        ASSERT_EQ(other.Run("begin immediate"), SQLITE_OK);
        EXPECT_TRUE(workspace.OpenDatabase(path, data::PracticeRules()).OpenRecordset("Presta").IsEOF());
    }
    EXPECT_EQ(Version(), "1");
    workspace.OpenDatabase(path, data::PracticeRules());
    EXPECT_EQ(Version(), QString::number(store::SchemaVersion)) << "at the next opening";

    Make("create table Presta (num integer, denom text, primary key (num)); create table Recettes (a); "
         "create table Actes (num integer primary key)");
    Run("insert into Presta values (3, 'Radio')");
    EXPECT_EQ(AddTo("Presta"), 4) << "tables and fields may be missing or other than expected";
}

TEST_F(OlderPractice, IsNotUpgradedByACopyOrOnReadOnlyMedia)
{
    NEEDS_UNIX("mode bits");
    Run("insert into Presta (num) values (1)");
    const QString copy = folder.filePath("copy.MDB");
    archives::CopyDatabase(path, copy);
    EXPECT_EQ(tests::OtherProgram(copy).Answer("pragma user_version"), "1");
    EXPECT_TRUE(store::CheckDatabase(path).isEmpty());
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0444), 0);
    EXPECT_EQ(ErrorOf([&] { workspace.OpenDatabase(path, data::PracticeRules()); }), Error::ReadOnly);
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(Version(), "1");
}
