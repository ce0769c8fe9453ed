#include "practice/commands/DesktopEntry.h"
#include "tools/PracticeCommand.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

/// What a desktop takes a value of an entry for.
QString Unescaped(const QString& value)
{
    QString text;
    for (qsizetype at = 0; at < value.size(); ++at) {
        if (value[at] != '\\') {
            text += value[at];
            continue;
        }
        const QString escapes = "sntr\\";
        const qsizetype escape = escapes.indexOf(value.mid(++at, 1));
        EXPECT_GE(escape, 0) << value.toStdString();
        text += QString(" \n\t\r\\").mid(escape, 1);
    }
    return text;
}

QString ValueOf(const QByteArray& entry, const QString& key)
{
    for (const QString& line : QString::fromUtf8(entry).split('\n'))
        if (line.startsWith(key + "="))
            return Unescaped(line.mid(key.size() + 1).trimmed());
    ADD_FAILURE() << "no " << key.toStdString();
    return {};
}

/// The one word of a command line, quotes and place marks resolved as a desktop does it.
QString WordOf(const QString& command)
{
    EXPECT_TRUE(command.size() > 1 && command.startsWith('"') && command.endsWith('"')) << command.toStdString();
    QString word;
    for (qsizetype at = 1; at < command.size() - 1; ++at) {
        EXPECT_NE(command[at], '"') << "the word ends early";
        const bool escapes = command[at] == '\\' || (command[at] == '%' && command[at + 1] == '%');
        EXPECT_TRUE(escapes || !QString("`$%").contains(command[at])) << command.toStdString();
        word += command[escapes ? ++at : at];
    }
    return word;
}

/// The data folder of the desktop's user, empty and the test's own.
class Shortcut : public testing::Test {
protected:
    void SetUp() override { qputenv("XDG_DATA_HOME", home.path().toUtf8()); }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }

    QStringList Entries() const
    {
        return QDir(home.filePath("applications")).entryList(QDir::Files | QDir::NoDotAndDotDot);
    }
    QByteArray OnlyEntry() const
    {
        EXPECT_EQ(Entries().size(), 1);
        QFile file(home.filePath("applications/" + Entries().value(0)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir home;
    NewPractice practice;
};

} // namespace

TEST(DesktopEntry, GivesBackWhateverPathsHold)
{
    const QString paths[] = {"/home/dr/cabinet", "/tmp/a \"b\" 'c' $HOME `id` %f %% \\ \\n ; # = [x]",
                             "/tmp/ligne\net\ttab\r", "/tmp/مكتب الطبيب/été", "/tmp/fin\\"};
    for (const QString& path : paths) {
        const QByteArray entry = practice::DesktopEntryText({.name = "  Dr\nD'Angelo\\",
                                                             .comment = path,
                                                             .program = path,
                                                             .folder = path,
                                                             .icon = "zep-lumo",
                                                             .windowClass = "ZEP Lumo"});
        EXPECT_EQ(ValueOf(entry, "Path"), path);
        EXPECT_EQ(ValueOf(entry, "Comment"), path);
        EXPECT_EQ(ValueOf(entry, "Name"), "  Dr\nD'Angelo\\");
        EXPECT_EQ(WordOf(ValueOf(entry, "Exec")), path);
        EXPECT_EQ(entry.count('\n'), 10) << "no line of a path's own";
    }
    EXPECT_EQ(
        ErrorOf([] {
            practice::DesktopEntryText(
                {.name = "a", .comment = "", .program = "/a", .folder = "/\x1b[2J", .icon = "", .windowClass = ""});
        }),
        Error::BadArgument);
}

TEST(DesktopEntry, SatisfiesTheDesktopsOwnCheck)
{
    const QString validator = QStandardPaths::findExecutable("desktop-file-validate");
    if (validator.isEmpty())
        GTEST_SKIP() << "desktop-file-validate isn't installed";
    const QTemporaryDir place;
    QFile file(place.filePath("zep-lumo-essai.desktop"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(practice::DesktopEntryText({.name = "Dr \\ D'Angelo;",
                                           .comment = "été",
                                           .program = "/tmp/a \"b\" $c `d` %e \\f",
                                           .folder = "/tmp/a\nb",
                                           .icon = "zep-lumo",
                                           .windowClass = "ZEP Lumo"}));
    file.close();
    EXPECT_EQ(QProcess::execute(validator, {file.fileName()}), 0);
}

TEST_F(Shortcut, IsOneEntryOfAPracticeUntilItIsRemoved)
{
    ASSERT_EQ(BuiltCommand({"shortcut", practice.Folder()}).code, 0);
    const QByteArray entry = OnlyEntry();
    EXPECT_EQ(ValueOf(entry, "Name"), "Dr D'Angelo");
    EXPECT_EQ(ValueOf(entry, "Path"), QFileInfo(practice.Folder()).canonicalFilePath());
    EXPECT_EQ(WordOf(ValueOf(entry, "Exec")), PRACTICE_PROGRAM);

    ASSERT_EQ(CommandRun({"set", practice.Folder(), "--letterhead", ""}).code, 0);
    const QString sameFolder = practice.Folder() + "/../cabinet/";
    ASSERT_EQ(BuiltCommand({"shortcut", sameFolder}).code, 0);
    EXPECT_EQ(ValueOf(OnlyEntry(), "Name"), "cabinet") << "the folder's name without a letterhead";

    ASSERT_TRUE(QDir(practice.Folder()).removeRecursively());
    EXPECT_EQ(CommandRun({"shortcut", practice.Folder()}).code, 1) << "no practice there";
    EXPECT_EQ(CommandRun({"shortcut", practice.Folder(), "--remove"}).code, 0) << "also when the folder is gone";
    EXPECT_EQ(Entries(), QStringList());
    const CommandRun again({"shortcut", practice.Folder(), "--remove"});
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.errors.contains("n'a pas d'entrée")) << again.errors.toStdString();
}
