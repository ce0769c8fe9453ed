#include "core/globals.h"
#include "faults/FolderContent.h"
#include "support/MainWindow.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Printing.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using core::TheDatabase;
using forms::Icon;

namespace {

const QString ExpectedText =
    "Le fichier 'ZEP_ONE.MDB' n'est plus celui qui a été ouvert : il a été remplacé, déplacé ou supprimé "
    "pendant le travail. Rien de plus n'est enregistré ni archivé.";

struct Replacement {
    const char* name;
    void (*replace)(const QString& file, const QByteArray& yesterday);
};

const Replacement Replacements[] = {
    {"Overwriting", [](const QString& file, const QByteArray& bytes) { tests::WriteFile(file, bytes); }}, // as cp does
    {"Renaming",
     [](const QString& file, const QByteArray& bytes) {
         tests::WriteFile(file + ".new", bytes);
         ASSERT_EQ(::rename(QFile::encodeName(file + ".new").constData(), QFile::encodeName(file).constData()), 0);
     }},
    {"Moving", [](const QString& file, const QByteArray&) { ASSERT_TRUE(QFile::rename(file, file + ".moved")); }},
    {"Deleting", [](const QString& file, const QByteArray&) { ASSERT_TRUE(QFile::remove(file)); }},
};

/// A working day during which a user restores yesterday's copy by hand.
class ReplacedDatabase : public testing::TestWithParam<Replacement> {
protected:
    ReplacedDatabase()
    {
        act = practice.Act({.montant = 100, .flag_R = data::PaymentCode::P});
        auto& first = tests::StartProgram(desk, practice.Folder());
        tests::Quit(desk, first);
        yesterday = tests::BytesOf(archive);
    }

    /// The current content of the file, read by another program without the log that was set aside.
    QString Amount() const { return tests::OtherProgram(file).Answer("select montant from Actes where num = 1"); }

    bool IsLogKept() const { return !QDir(practice.Folder()).entryList({"ZEP_ONE.MDB-wal.set-aside*"}).isEmpty(); }

    static void Save(double dinars)
    {
        dao::Recordset acts = TheDatabase.OpenRecordset("Actes");
        acts.Edit();
        acts["montant"] = dinars;
        acts.Update();
    }

    tests::Practice practice;
    ScriptedDesk desk;
    const QString file = practice.File("ZEP_ONE.MDB");
    const QString archive = practice.File("ARCHIVES/ZEP_ONE.MDB");
    dao::Key act = 0;
    QByteArray yesterday;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(By, ReplacedDatabase, testing::ValuesIn(Replacements),
                         [](const auto& replacement) { return std::string(replacement.param.name); });

TEST_P(ReplacedDatabase, IsNeitherMixedWithTheLogNorArchived)
{
    ScriptedDesk today;
    auto& main = tests::StartProgram(today, practice.Folder());
    Save(250);
    GetParam().replace(file, yesterday);
    const bool hasFile = QFile::exists(file);

    today.ExpectMessage("Veuiller Confirmer Fin de Travail !!", Icon::Question, "ZEP Lumo", forms::Answer::Yes);
    today.ExpectMessage("Erreur N° 3044\n" + ExpectedText, Icon::Exclamation, "ZEP Lumo");
    main.Entry("mnuQ")->trigger();
    EXPECT_EQ(today.EndCode(), 1);
    EXPECT_EQ(tests::BytesOf(archive), yesterday);
    EXPECT_TRUE(IsLogKept()) << "what was saved today";
    EXPECT_EQ(QFile::exists(file), hasFile);
    if (hasFile) {
        EXPECT_EQ(Amount(), "100.0");
    }
}

TEST_P(ReplacedDatabase, RefusesChanges)
{
    ScriptedDesk today;
    tests::StartProgram(today, practice.Folder());
    Save(250);
    GetParam().replace(file, yesterday);
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_EQ(Raised([] { Save(300); }), "3044: " + ExpectedText);
    TheDatabase.Close();
    EXPECT_TRUE(IsLogKept());
    if (QFile::exists(file)) {
        EXPECT_EQ(Amount(), "100.0");
    }
}
