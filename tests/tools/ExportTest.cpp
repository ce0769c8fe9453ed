#include "support/FullDisk.h"
#include "support/Unix.h"
#include "tools/PracticeCommand.h"

TEST(Export, WritesNothingOverWhatIsThere)
{
    NEEDS_UNIX("limit of the size of files");
    const NewPractice practice;
    const auto run = [&](const QStringList& rest) {
        return CommandRun(QStringList{"export", practice.Folder()} + rest);
    };
    const QString folder = practice.File("csv");
    EXPECT_EQ(run({folder, "actes", "Patients", "Actes"}).output, "Actes.csv : 0 ligne.\nPatients.csv : 0 ligne.\n");
    const QByteArray header = BytesOf(folder + "/Actes.csv");
    EXPECT_TRUE(header.startsWith("\xEF\xBB\xBFnum;Date;MM;AA;date_Presta;"));

    const QString own = practice.Write("csv/plani.csv", "num,date\n");
    const CommandRun refused = run({folder, "Presta", "Plani"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.errors.contains("plani.csv » existe déjà ; --force le remplace."));
    EXPECT_EQ(BytesOf(own), "num,date\n");
    EXPECT_EQ(run({folder, "Plani", "--force"}).code, 0);
    EXPECT_TRUE(BytesOf(own).contains("num;date;Num_Presta;HH;num_patient"));

    practice.Write("csv/Actes.csv", "SQLite format 3");
    EXPECT_EQ(run({folder, "--force"}).code, 1);
    EXPECT_EQ(BytesOf(folder + "/Actes.csv"), "SQLite format 3");
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden),
              QStringList({"Actes.csv", "Patients.csv", "plani.csv"}));

    EXPECT_EQ(run({practice.File("autre"), "ZEP marks"}).code, 2);
    const tests::FullDisk disk(100); // enough for the first of them
    EXPECT_EQ(run({practice.File("autre"), "Plani", "Permn"}).code, 1);
    EXPECT_FALSE(QFile::exists(practice.File("autre")));
}
