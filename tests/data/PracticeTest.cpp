#include "data/Practice.h"
#include "platform/dao/Engine.h"
#include "support/Files.h"
#include "support/Printing.h"
#include "support/Unix.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>

namespace {

const data::PracticeSetup SampleSetup{
    .accessCode = 2468,
    .letterhead = {"Dr D'Angelo", "Médecine générale", "Alger", "", "", "", "", "", "عيادة"},
    .language = data::TooltipLanguage::French};

QStringList Everything(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

} // namespace

TEST(WorkspacePassword, IsThatOfExistingPractices)
{
    const QByteArray password = data::BuildWorkspacePassword().toUtf8();
    EXPECT_EQ(QCryptographicHash::hash(password, QCryptographicHash::Sha256).toHex().first(16), "c51db9145d22d045");
}

TEST(CreatePractice, MakesAFolderForItsOwnerOnly)
{
    const QTemporaryDir place;
    const QString folder = place.filePath("cabinets/D'Angelo");
    data::CreatePractice(folder, SampleSetup);

    EXPECT_EQ(Everything(folder), QStringList({"ARCHIVES", "Planning.RPT", "ZEP_CFIG.CFG", "ZEP_DTAL.RPT",
                                               "ZEP_ONE.MDB", "ZEP_R1.RPT", "ZEP_R2.RPT", "ZEP_R3.RPT", "ZEP_R4.RPT",
                                               "ZEP_RCAP.RPT", "ZEP_RCP2.RPT", "ZEP_Rstt.RPT", "system.mdw"}));
    NEEDS_UNIX("mode bits");
    constexpr QFile::Permissions others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    const QStringList names = Everything(folder) + QStringList(".");
    for (const QString& name : names)
        EXPECT_FALSE(QFile::permissions(folder + "/" + name) & others) << name.toStdString();
}

TEST(CreatePractice, GivesTablesThatTheScreensCanOpen)
{
    const QTemporaryDir place;
    data::CreatePractice(place.path(), SampleSetup);
    dao::Engine engine;
    engine.SystemDB = place.filePath("system.mdw");
    const dao::Workspace workspace = engine.CreateWorkspace("Special", "ADMIN", data::BuildWorkspacePassword());
    const dao::Database database = workspace.OpenDatabase(place.filePath("ZEP_ONE.MDB"));

    for (const char* table :
         {"Patients", "Actes", "Actes_Suppr", "presta", "Tarif", "Plani", "recettes", "Prov", "RCP2"})
        EXPECT_TRUE(database.OpenRecordset(table).IsEOF()) << table;
    EXPECT_EQ(database.OpenRecordset("textes")["ch30"].Text(), "");
    dao::Recordset permanent = database.OpenRecordset("Permn"); // the day sheet reads its first row without a check
    EXPECT_TRUE(permanent["Date"].IsNull());
    EXPECT_EQ(permanent["Taux_PP"].Double(), 25.5);
    EXPECT_EQ(permanent["Taux_CNAS"].Double(), 9);
    EXPECT_EQ(permanent["RIB"].Text(), " ");
    permanent.AddNew(); // the values are those of the first row, not defaults of the table
    permanent.Update();
    permanent.MoveLast();
    for (const char* field : {"Registre", "RIB", "Taux_CNAS", "Taux_PP", "Taux_VF"})
        EXPECT_TRUE(permanent[field].IsNull()) << field;
}

TEST(CreatePractice, NeverOverwritesExistingFiles)
{
    for (const char* name : {"zep_one.mdb", "SYSTEM.MDW", "ZEP_CFIG.cfg"}) {
        const QTemporaryDir place;
        tests::WriteFile(place.filePath(name));
        EXPECT_EQ(ErrorOf([&] { data::CreatePractice(place.path(), SampleSetup); }), Error::FileExists) << name;
        EXPECT_EQ(Everything(place.path()), QStringList(name));
    }
}

TEST(CreatePractice, RefusesInvalidDataAndLeavesNothing)
{
    const QTemporaryDir place;
    const QString folder = place.filePath("cabinet");
    for (const auto& [code, line] : {std::pair(3, ""),
                                     {-32770, ""},
                                     {32768, ""},
                                     {2468, "診療所"},
                                     {2468, "12345678901234567890123456789012345678901"}}) {
        data::PracticeSetup bad = SampleSetup;
        bad.accessCode = code;
        bad.letterhead[0] = line;
        EXPECT_EQ(ErrorOf([&] { data::CreatePractice(folder, bad); }), Error::BadArgument) << code << line;
    }
    EXPECT_FALSE(QFile::exists(folder));

    data::PracticeSetup lowest = SampleSetup;
    lowest.accessCode = -32768;
    EXPECT_EQ(ErrorOf([&] { data::CreatePractice(folder, lowest); }), std::nullopt);
}

TEST(CreatePractice, KeepsATemplateThatAUserHasChanged)
{
    const QTemporaryDir place;
    tests::WriteFile(place.filePath("zep_r2.rpt"), "title = \"Mes actes\"");
    data::CreatePractice(place.path(), SampleSetup);

    EXPECT_EQ(tests::BytesOf(place.filePath("zep_r2.rpt")), "title = \"Mes actes\"");
    EXPECT_FALSE(Everything(place.path()).contains("ZEP_R2.RPT"));
    EXPECT_TRUE(Everything(place.path()).contains("ZEP_R3.RPT"));
}
