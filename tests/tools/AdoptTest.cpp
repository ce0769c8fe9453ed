#include "platform/store/DatabaseReader.h"
#include "support/OldDatabases.h"
#include "support/Unix.h"
#include "tools/PracticeCommand.h"

using tests::OldTable;

namespace {

/// The folder of an old practice, and the place of the new one beside it.
class OldPractice {
public:
    explicit OldPractice(const QString& database)
    {
        QDir().mkpath(Folder());
        QFile::copy(tests::OldFile(database + ".mdb"), Folder() + "/ZEP_ONE.MDB");
        QFile::copy(tests::OldFile("ZEP_CFIG.CFG"), Folder() + "/ZEP_CFIG.CFG");
        Write("ZEP_R1.RPT", "another format");
        Write("system.mdw", "another format");
    }

    QString Folder() const { return place.filePath("ancien"); }
    QString NewFolder() const { return place.filePath("nouveau"); }
    QString Place() const { return place.path(); }
    void Write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(Folder() + "/" + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    CommandRun Adopt() const { return CommandRun({"adopt", Folder(), NewFolder()}); }

    QMap<QString, QByteArray> Content() const
    {
        QMap<QString, QByteArray> content;
        for (const QString& name : QDir(Folder()).entryList(QDir::Files | QDir::Hidden))
            content[name] = BytesOf(Folder() + "/" + name);
        return content;
    }

private:
    QTemporaryDir place;
};

QString TextOf(const store::StoredValue& value)
{
    using enum store::StoredValue::Kind;
    switch (value.kind) {
    case Null:
        return {};
    case Whole:
        return QString::number(value.whole);
    case Real:
        return QString::number(value.real, 'g', QLocale::FloatingPointShortest);
    case Text:
        break;
    }
    return QString::fromUtf8(value.text, value.length).trimmed();
}

/// The rows of the new practice by key, with the fields that the old one had.
std::vector<QStringList> AdoptedRows(const QString& folder, const QString& table, const QStringList& fields)
{
    const store::DatabaseReader reader(folder + "/ZEP_ONE.MDB");
    const QString sql = QString("select \"%1\" from %2 order by rowid").arg(fields.join("\", \""), table);
    store::Statement select = reader.Select(sql.toStdString());
    std::vector<QStringList> rows;
    while (select.Step()) {
        rows.emplace_back();
        for (int column = 0; column < fields.size(); ++column)
            rows.back() << TextOf(select.At(column));
    }
    return rows;
}

/// Compares the new practice with what the old database contains, without the tables that are filled for prints.
void ExpectAdopted(const QString& folder, std::map<QString, OldTable> content)
{
    for (const char* scratch : {"Prov", "RCP2", "textes"})
        content.erase(scratch);
    EXPECT_EQ(content.size(), 8U);
    for (auto& [table, expected] : content) {
        for (QStringList& row : expected.rows) {
            for (QString& cell : row)
                cell = cell.trimmed();
        }
        EXPECT_EQ(AdoptedRows(folder, table, expected.fields), expected.rows) << table.toStdString();
    }
}

/// A database of which fields have another name of the same length.
QByteArray Renamed(QByteArray database, const QString& field, const QString& name)
{
    const auto bytes = [](const QString& text) {
        return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    };
    const QByteArray length(1, static_cast<char>(2 * field.size()));
    return database.replace(length + '\0' + bytes(field), length + '\0' + bytes(name));
}

void LeaveOut(OldTable& table, const QStringList& keys)
{
    std::erase_if(table.rows, [&keys](const QStringList& row) { return keys.contains(row[0]); });
}

} // namespace

TEST(Adopt, TakesEveryFieldAndLeavesTheOldFolderAsItIs)
{
    for (const QString name : {"usual", "usual2003"}) {
        const OldPractice old(name);
        const auto before = old.Content();
        const CommandRun run = old.Adopt();
        EXPECT_EQ(run.code, 0) << run.errors.toStdString() << run.output.toStdString();
        EXPECT_TRUE(run.output.startsWith("Patients : 200 lignes reprises.\nActes : 2000 lignes reprises.\n"));
        EXPECT_EQ(run.output.count("modèles d'états"), 1);
        ExpectAdopted(old.NewFolder(), tests::OldContentOf(name));
        EXPECT_EQ(BytesOf(old.NewFolder() + "/ZEP_CFIG.CFG"), before["ZEP_CFIG.CFG"]);
        EXPECT_TRUE(BytesOf(old.NewFolder() + "/ZEP_R1.RPT").contains("[")); // a template of the program
        EXPECT_EQ(old.Content(), before);
        EXPECT_EQ(QDir(old.Place()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                  QStringList({"ancien", "nouveau"}));
    }
    const OldPractice damaged("usual");
    damaged.Write("ZEP_CFIG.CFG", BytesOf(tests::OldFile("ZEP_CFIG.CFG")).first(4000));
    EXPECT_EQ(damaged.Adopt().code, 1); // taken, but not in order
}

TEST(Adopt, NamesWhatItCanNotTakeAndTakesTheRest)
{
    const OldPractice old("odd");
    QFile::remove(old.Folder() + "/ZEP_ONE.MDB");
    const QByteArray september = QByteArray::fromHex("0900ea07"); // MM and AA of an act
    QByteArray database = Renamed(BytesOf(tests::OldFile("odd.mdb")), "Sexe", "Sexx");
    old.Write("zep_one.mdb", database.replace(database.indexOf(september), 1, "\x08"));
    const CommandRun run = old.Adopt();
    EXPECT_EQ(run.code, 1) << run.errors.toStdString();
    EXPECT_EQ(run.output.section('\n', 0, 10),
              "Patients : le champ Sexx n'est pas repris.\n"
              "Patients, num 7 : Naiss : une date d'avant 1900, qui ne se lit pas ; le champ reste vide.\n"
              "Actes, num 4 : montant sans valeur ; la ligne n'est pas reprise.\n"
              "Actes, num 11 : flag_R : 7 est hors de l'intervalle 0 à 5 ; la ligne n'est pas reprise.\n"
              "Actes, num 12 : HH : 12 est hors de l'intervalle 0 à 9 ; la ligne n'est pas reprise.\n"
              "Actes, num 13 : Type : « K31 » n'est pas un code d'acte (C, K0 à K30) ; le champ reste vide.\n"
              "Actes, num 14 : Date sans valeur ; la ligne n'est pas reprise.\n"
              "Actes, num 57 : MM : 8 ne correspond pas à la date, qui est suivie.\n"
              "Plani, num 2 : HH sans valeur ; la ligne n'est pas reprise.\n"
              "Tarif, ligne 2 : Tarif n'a qu'une ligne ; la ligne n'est pas reprise.\n"
              "Patients : 200 lignes reprises.");
    EXPECT_TRUE(run.output.contains("Actes : 1996 lignes reprises, 4 laissées.\n"));
    EXPECT_TRUE(run.output.contains("Remarque : Presta : prix sans valeur (1 ligne, num 1)\n"));
    EXPECT_TRUE(run.output.contains("Le cabinet est en ordre.\n"));

    auto expected = tests::OldContentOf("odd");
    expected["Patients"].rows[6][3].clear();
    for (QStringList& row : expected["Patients"].rows)
        row[4].clear();
    expected["Actes"].rows[12][10].clear();
    LeaveOut(expected["Actes"], {"4", "11", "12", "14"});
    LeaveOut(expected["Plani"], {"2"});
    expected["Tarif"].rows.pop_back();
    ExpectAdopted(old.NewFolder(), expected);
    const store::DatabaseReader reader(old.NewFolder() + "/ZEP_ONE.MDB");
    store::Statement lastKey = reader.Select("select seq from sqlite_sequence where name = 'Presta'");
    EXPECT_TRUE(lastKey.Step());
    EXPECT_EQ(lastKey.WholeAt(0), 99); // of a service that is gone
}

TEST(Adopt, RefusesWhatIsNoOldPracticeOrNoEmptyTarget)
{
    NEEDS_UNIX("mkfifo");
    struct Refusal {
        const char* reason;
        std::function<QString(const OldPractice& old)> prepare; ///< returns the new folder
    };
    const Refusal refusals[] = {
        {"ZEP_CFIG.CFG manque",
         [](const OldPractice& old) {
             QFile::remove(old.Folder() + "/ZEP_CFIG.CFG");
             return old.NewFolder();
         }},
        {"ZEP_ONE.MDB manque",
         [](const OldPractice& old) {
             QFile::remove(old.Folder() + "/ZEP_ONE.MDB");
             EXPECT_EQ(mkfifo(qPrintable(old.Folder() + "/ZEP_ONE.MDB"), 0600), 0);
             return old.NewFolder();
         }},
        {"n'est pas une base de l'ancien format",
         [](const OldPractice& old) {
             old.Write("ZEP_ONE.MDB", "SQLite format 3");
             return old.NewFolder();
         }},
        {"est abîmé",
         [](const OldPractice& old) {
             old.Write("ZEP_ONE.MDB", BytesOf(tests::OldFile("usual.mdb")).first(4096 * 100));
             return old.NewFolder();
         }},
        {"Patients : le champ num manque",
         [](const OldPractice& old) {
             old.Write("ZEP_ONE.MDB", Renamed(BytesOf(tests::OldFile("usual.mdb")), "num", "clé"));
             return old.NewFolder();
         }},
        {"n'est pas vide",
         [](const OldPractice& old) {
             QDir().mkpath(old.NewFolder() + "/.cache");
             return old.NewFolder();
         }},
        {"n'est pas vide", [](const OldPractice& old) { return old.Folder(); }},
        {"est dans l'ancien dossier", [](const OldPractice& old) { return old.Folder() + "/x/nouveau"; }},
        {"est dans l'ancien dossier",
         [](const OldPractice& old) {
             EXPECT_TRUE(QFile::link(old.Folder(), old.Place() + "/lien"));
             return old.Place() + "/lien/nouveau";
         }},
    };
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.reason);
        const OldPractice old("usual");
        const QString target = refusal.prepare(old);
        const auto before = old.Content();
        const CommandRun run({"adopt", old.Folder(), target});
        EXPECT_EQ(run.code, 2);
        EXPECT_TRUE(run.errors.contains(refusal.reason)) << run.errors.toStdString();
        EXPECT_TRUE(target == old.Folder() || !QFile::exists(target + "/ZEP_ONE.MDB"));
        EXPECT_EQ(old.Content(), before);
    }
}
