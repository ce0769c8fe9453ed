#include "platform/dao/Engine.h"
#include "platform/store/DatabaseReader.h"
#include "practice/fields/FieldRules.h"
#include "support/Unix.h"
#include "tools/PracticeCommand.h"

#include <cstdio>
#include <functional>

namespace {

QByteArray Cell(const dao::Field& field)
{
    return field.IsNull() || field.Text().isEmpty() ? QByteArray()
                                                    : '"' + field.Text().replace("\"", "\"\"").toUtf8() + '"';
}

/// All rows of a table as a CSV file.
QByteArray Exported(const QString& folder, const practice::TableRule& table)
{
    const practice::PracticeData data(folder);
    QByteArray text;
    for (const practice::FieldRule& field : table.fields)
        text += (text.isEmpty() ? "" : ",") + QByteArray(field.name);
    for (dao::Recordset rows = data.Database().OpenRecordset(table.name); !rows.IsEOF(); rows.MoveNext()) {
        text += "\n";
        for (const practice::FieldRule& field : table.fields)
            text += (text.endsWith('\n') ? "" : ",") + Cell(rows[field.name]);
    }
    return text + "\n";
}

/// A practice and a folder of CSV files beside it.
class ImportFolder : public testing::Test {
protected:
    CommandRun Import(const QStringList& options = {}) const
    {
        return CommandRun(QStringList{"import", practice.Folder(), practice.File("csv")} + options);
    }
    void Put(const QString& name, const QByteArray& text) const { practice.Write("csv/" + name, text); }
    double Charge() const { return practice.Ask("select Charge1 from Permn").Double(); }

    const NewPractice practice;
};

} // namespace

TEST_F(ImportFolder, BringsAWholePracticeOver)
{
    const QString demo = practice.File("demo");
    ASSERT_EQ(CommandRun({"demo", demo, "--acts", "3000"}).code, 0);
    for (const practice::TableRule& table : practice::ImportTables())
        Put(QString(table.name).toUpper() + ".csv", Exported(demo, table));
    for (const QString& scratch : practice::ScratchTables())
        Put(scratch + ".CSV", "whatever");
    Put("README.txt", "no table");

    CommandRun run = Import({"--update"});
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.contains("Actes : 3000 lignes ajoutées.\n")) << run.output.toStdString();
    EXPECT_TRUE(run.output.contains("Tarif : 1 ligne ajoutée.\n")) << run.output.toStdString();
    EXPECT_TRUE(run.output.contains(": Prov, RCP2, textes.\n")) << run.output.toStdString();
    for (const practice::TableRule& table : practice::ImportTables())
        EXPECT_EQ(Exported(practice.Folder(), table).toStdString(), Exported(demo, table).toStdString());
    EXPECT_EQ(store::CheckDatabase(practice.Folder() + "/ZEP_ONE.MDB"), QStringList());

    run = Import();
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.contains("Actes : 3000 lignes déjà là.\n")) << run.output.toStdString();
    EXPECT_TRUE(run.output.endsWith("Rien à importer : rien n'a été modifié.\n")) << run.output.toStdString();
    EXPECT_FALSE(run.output.contains("ajoutée"));
}

TEST_F(ImportFolder, ReplacesTheSingleRowsWhenAsked)
{
    Put("Permn.csv", "Charge1,Date,RC\n1500.5,2008-06-17,OUI\n");
    Put("Tarif.csv", "C,K0\n500,600\n");
    CommandRun run = Import();
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.contains("Permn : 1 ligne laissée telle quelle, le fichier a d'autres valeurs "
                                    "(Charge1, Date, RC) : --update les prend."))
        << run.output.toStdString();
    EXPECT_EQ(practice.Ask("select K0 from Tarif").Long(), 600) << "there was none";
    EXPECT_TRUE(practice.Ask("select Charge1 from Permn").IsNull());

    Put("Tarif.csv", "C,K0\n500,650\n");
    run = Import();
    EXPECT_TRUE(run.output.endsWith("Rien à importer : rien n'a été modifié.\n")) << run.output.toStdString();
    EXPECT_EQ(practice.Ask("select K0 from Tarif").Long(), 600);
    run = Import({"--update"});
    EXPECT_TRUE(run.output.contains("En tout : 2 lignes modifiées.")) << run.output.toStdString();
    EXPECT_EQ(practice.Ask("select K0 from Tarif").Long(), 650);
    EXPECT_EQ(Charge(), 1500.5);
    EXPECT_EQ(practice.Ask("select Date from Permn").Text(), "17/06/2008");
    EXPECT_EQ(practice.Ask("select Taux_PP from Permn").Double(), 25.5) << "not named, not touched";
    EXPECT_EQ(practice.Count("Patients"), 0);
}

TEST_F(ImportFolder, AddsNothingAnywhereWhenOneFileIsBad)
{
    NEEDS_UNIX("mkfifo");
    Put("Patients.csv", "num,nom\n1,a\n");
    Put("Presta.csv", "num,denom,Ordre\n1,ECG,0\n");
    const struct {
        const char* name;
        const char* text;
        const char* problem;
    } bad[] = {
        {"Actes.csv", "num,Date,HH,montant,flag_R\n1,17/06/08,0,0,0\n", "Actes.csv, ligne 2 : Date : l'année"},
        {"Plani.csv", "num,date,HH,Num_Presta\n\"1,\n", "Plani.csv : Ligne 2 : guillemets jamais refermés.\n"},
        {"Ordonnances.csv", "num\n1\n", "Ordonnances.csv : ce n'est pas une table"},
        {"patients.csv", "num,nom\n1,a\n", "Plusieurs fichiers pour Patients : Patients.csv, patients.csv."},
        {"Recettes.csv", "", "Recettes.csv : Le fichier est vide"},
    };
    for (const auto& each : bad) {
        Put(each.name, each.text);
        const CommandRun run = Import();
        EXPECT_EQ(run.code, 1) << each.name;
        EXPECT_TRUE(run.errors.contains(each.problem)) << run.errors.toStdString();
        EXPECT_TRUE(run.errors.endsWith("Import refusé : 1 problème, rien n'a été modifié.\n"))
            << run.errors.toStdString();
        EXPECT_EQ(practice.Count("Patients") + practice.Count("Presta"), 0) << each.name;
        QFile::remove(practice.File(QString("csv/") + each.name));
    }
    const QString acts = practice.File("csv/Actes.csv");
    const std::pair<const char*, std::function<int()>> obstacles[] = {
        {"link", [&acts] { return ::symlink("rien", qPrintable(acts)); }},
        {"pipe", [&acts] { return ::mkfifo(qPrintable(acts), 0600); }},
        {"folder", [&acts] { return QDir().mkdir(acts) ? 0 : 1; }},
    };
    for (const auto& [kind, make] : obstacles) {
        ASSERT_EQ(make(), 0) << kind;
        const CommandRun run = Import();
        EXPECT_EQ(run.code, 1) << kind;
        EXPECT_TRUE(run.errors.contains(acts)) << run.errors.toStdString();
        EXPECT_EQ(practice.Count("Patients") + practice.Count("Presta"), 0) << kind;
        ASSERT_EQ(std::remove(qPrintable(acts)), 0);
    }
    EXPECT_EQ(CommandRun({"import", practice.Folder(), practice.File("nowhere")}).code, 1);
    EXPECT_TRUE(CommandRun({"import", practice.Folder(), practice.Folder()}).errors.contains("aucun fichier CSV"));
    EXPECT_TRUE(Import().output.contains("En tout : 2 lignes ajoutées."));
}
