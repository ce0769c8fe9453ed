#include "practice/commands/DesktopEntry.h"
#include "support/Unix.h"
#include "tools/PracticeCommand.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

/// The data folder of the desktop's user, empty and the test's own.
class Shortcut : public testing::Test {
protected:
    void SetUp() override { qputenv("XDG_DATA_HOME", home.path().toUtf8()); }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }

    QStringList Entries() const
    {
        return QDir(home.filePath("applications")).entryList(QDir::Files | QDir::NoDotAndDotDot);
    }
    QString OnlyEntry() const
    {
        EXPECT_EQ(Entries().size(), 1);
        return QString::fromUtf8(BytesOf(home.filePath("applications/" + Entries().value(0))));
    }

    QTemporaryDir home;
    NewPractice practice;
};

} // namespace

TEST(DesktopEntry, EscapesWhateverPathsHold)
{
    practice::MenuEntry entry{.name = "  Dr\nD'Angelo\\",
                              .comment = "/tmp/été\tب\r",
                              .program = "/tmp/a \"b\" 'c' $HOME `id` %f \\n",
                              .folder = "/tmp/ligne\n # = [x] %f \"b\""};
    const QByteArray text = practice::DesktopEntryText(entry);
    EXPECT_EQ(QString::fromUtf8(text), R"([Desktop Entry]
Type=Application
Name=\s\sDr\nD'Angelo\\
Comment=/tmp/été\tب\r
Exec="/tmp/a \\"b\\" 'c' \\$HOME \\`id\\` %%f \\\\n"
Path=/tmp/ligne\n # = [x] %f "b"
Icon=zep-lumo
Terminal=false
StartupWMClass=ZEP Lumo
Categories=Office;
)");
    const QString validator = QStandardPaths::findExecutable("desktop-file-validate");
    const QTemporaryDir place;
    const QString file = place.filePath("zep-lumo-essai.desktop");
    tests::WriteFile(file, text);
    if (!validator.isEmpty()) {
        EXPECT_EQ(QProcess::execute(validator, {file}), 0);
    }
    entry.folder = "/\x1b[2J";
    EXPECT_EQ(ErrorOf([&] { practice::DesktopEntryText(entry); }), Error::BadArgument);
}

TEST_F(Shortcut, IsOneEntryOfAPracticeUntilItIsRemoved)
{
    NEEDS_UNIX("desktop entries");
    ASSERT_EQ(BuiltCommand({"shortcut", practice.Folder()}).code, 0);
    const QString place = QFileInfo(practice.Folder()).canonicalFilePath();
    EXPECT_TRUE(OnlyEntry().contains("\nName=Dr D'Angelo\n")) << OnlyEntry().toStdString();
    EXPECT_TRUE(OnlyEntry().contains("\nExec=\"" PRACTICE_PROGRAM "\"\nPath=" + place + "\n"))
        << OnlyEntry().toStdString();

    ASSERT_EQ(CommandRun({"set", practice.Folder(), "--letterhead", ""}).code, 0);
    const QString sameFolder = practice.Folder() + "/../cabinet/";
    ASSERT_EQ(BuiltCommand({"shortcut", sameFolder}).code, 0);
    EXPECT_TRUE(OnlyEntry().contains("\nName=cabinet\n")) << "the folder's name without a letterhead";

    ASSERT_TRUE(QDir(practice.Folder()).removeRecursively());
    EXPECT_EQ(CommandRun({"shortcut", practice.Folder()}).code, 1) << "no practice there";
    EXPECT_EQ(CommandRun({"shortcut", practice.Folder(), "--remove"}).code, 0) << "also when the folder is gone";
    EXPECT_EQ(Entries(), QStringList());
    const CommandRun again({"shortcut", practice.Folder(), "--remove"});
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.errors.contains("n'a pas d'entrée")) << again.errors.toStdString();
}
