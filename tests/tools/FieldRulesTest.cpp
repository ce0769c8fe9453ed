#include "practice/check/Structure.h"
#include "practice/fields/FieldValues.h"
#include "support/FolderInMemory.h"
#include "support/OtherProgram.h"
#include "tools/PracticeCommand.h"

#include <QMap>
#include <QRandomGenerator>
#include <QRegularExpression>

namespace {

/// Texts at the limits of every kind of field, and past them.
constexpr const char* Texts[] = {
    "",           "0",          "1",          "-1",         "5",          "6",          "9",
    "10",         "32767",      "-32769",     "2147483648", "C",          "k30",        "K31",
    "2008",       "17/06/2008", "2008-02-29", "31/06/2008", "01/01/0100", "31/12/0099", "1900-02-29",
    "2100-01-01", "8:05",       "24:00",      "12,5",       "1234.375",   "-0",         "1e15",
    "-1e14",      "O'Brien",    "\xC2\xA0",   "vers 8 h\t", "a;b",
};

/// Most cells are such as the field takes, so that many rows are taken.
QString RandomCell(const practice::FieldRule& field, QRandomGenerator& random)
{
    const bool isAny = random.bounded(20) == 0;
    QString text;
    do
        text = Texts[random.bounded(int(std::size(Texts)))];
    while (!isAny && !ReadField(field, text.trimmed()).problem.isEmpty());
    return '"' + text + '"';
}

QStringList RandomRows(const practice::TableRule& table, QRandomGenerator& random)
{
    constexpr int count = 100;
    QStringList header;
    for (const practice::FieldRule& field : table.fields)
        header << field.name;
    QStringList lines{header.join(';')};
    while (lines.size() <= count) {
        QStringList cells;
        for (const practice::FieldRule& field : table.fields)
            cells << (field.kind == practice::FieldKind::Key ? QString::number(lines.size())
                                                             : RandomCell(field, random));
        lines << cells.join(';');
    }
    return lines;
}

/// Exports a practice with hostile texts, imports it into a new one, and compares every field of every row.
void ExpectSameAfterExport(const NewPractice& practice)
{
    const NewPractice second;
    tests::OtherProgram both(second.Folder() + "/ZEP_ONE.MDB");
    const auto run = [&both](const QString& sql) {
        EXPECT_EQ(both.Run(qPrintable(sql)), SQLITE_OK) << qPrintable(sql);
    };
    run("attach '" + practice.Folder() + "/ZEP_ONE.MDB' as other");
    for (const practice::TableRule& table : practice::ImportTables()) {
        for (const practice::FieldRule& field : table.fields) {
            if (field.kind != practice::FieldKind::Text)
                continue;
            // A blank text is Null for import, and a field of Permn that is Null there keeps its blank.
            run(QString("update other.%1 set %2 = nullif(replace(%2, 'a;b', '\"=1;,' || char(13, 10, 13) || '😀'';\" "
                        "بن علي'), ' ')")
                    .arg(table.name, field.name));
            run(QString("update main.%1 set %2 = null").arg(table.name, field.name));
        }
    }
    const QString folder = practice.File("export" + QString::number(QDir(practice.File("")).count()));
    EXPECT_EQ(CommandRun({"export", practice.Folder(), folder}).code, 0);
    const CommandRun imported({"import", second.Folder(), folder, "--update"});
    EXPECT_EQ(imported.code, 0) << imported.errors.toStdString();
    for (const practice::TableRule& table : practice::ImportTables()) {
        const QString difference =
            "select count(*) || '/' || (select count(*) from main.%1) = '0/' || (select count(*) "
            "from other.%1) from (select * from main.%1 except select * from other.%1)";
        EXPECT_EQ(both.Answer(qPrintable(difference.arg(table.name))), "1") << table.name;
    }
}

} // namespace

TEST(FieldRules, LetTheCheckFindNoErrorInWhatImportTakesAndExportGivesBack)
{
    const tests::FolderInMemory memory;
    const NewPractice practice;
    QRandomGenerator random(2026);
    for (int round = 0; round < 5; ++round) {
        QMap<QString, QStringList> files;
        for (const practice::TableRule& table : practice::ImportTables())
            files[table.name] = RandomRows(table, random);
        const auto import = [&](const QString& option) {
            for (const auto& [table, lines] : files.asKeyValueRange())
                practice.Write("csv/" + table + ".csv", lines.join('\n').toUtf8());
            return CommandRun({"import", practice.Folder(), practice.File("csv"), option, "--update"}).errors;
        };
        static const QRegularExpression refused("^(\\w+)\\.csv, ligne (\\d+)", QRegularExpression::MultilineOption);
        for (const QRegularExpressionMatch& line : refused.globalMatch(import("--dry-run")))
            files[line.captured(1)][line.captured(2).toInt() - 1].clear();
        for (const practice::TableRule& table : practice::ImportTables())
            EXPECT_GE(files[table.name].size() - files[table.name].count(""), table.hasOneRow ? 2 : 10) << table.name;
        EXPECT_EQ(import("--update"), "");
        const CommandRun check({"check", practice.Folder()});
        EXPECT_EQ(check.code, 0) << check.output.toStdString();
        ExpectSameAfterExport(practice);
    }
}

TEST(FieldRules, NameEveryFieldOfTheSchemaInItsOrder)
{
    for (const practice::Structure::Table& table : practice::ExpectedStructure().tables) {
        const practice::TableRule* const rule = practice::FindTable(table.name);
        EXPECT_EQ(rule == nullptr, table.name == "Prov" || table.name == "RCP2") << table.name.toStdString();
        for (int position = 0; rule != nullptr && position < table.fields.size(); ++position)
            EXPECT_EQ(rule->Find(table.fields[position].name), position) << table.fields[position].name.toStdString();
    }
}
