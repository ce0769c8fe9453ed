#include "core/opening.h"
#include "core/Auteur.h"
#include "core/Form1.h"
#include "core/Q_Date_2.h"
#include "core/configuration.h"
#include "data/Practice.h"
#include "platform/dao/Engine.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/store/FileHeader.h"
#include "support/Globals.h"
#include "support/MainWindow.h"
#include "support/ScreenTest.h"
#include "support/Unix.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QTest>

using core::Auteur;
using core::Form1;
using forms::Answer;
using forms::Buttons;
using forms::Icon;

namespace {

class Opening : public tests::ScreenTest<Form1> {
protected:
    Form1& Start()
    {
        return desk.Open<Form1>(core::ScreenOpeners{{"mnu_Caisse", [this] { ++cashOpened; }},
                                                    {"NActes", [this] { ++actsOpened; }},
                                                    {"mnu_Inst", [this] { ++pendingOpened; }}});
    }

    void TypeCode(Form1& main, const QString& code) { tests::TypeCode(desk, main, practice.Folder(), code); }
    void Quit(Form1& main) { tests::Quit(desk, main); }

    int cashOpened = 0;
    int actsOpened = 0;
    int pendingOpened = 0;
};

} // namespace

TEST_F(Opening, ShowsLetterheadAndMenusAfterTheRightCode)
{
    tests::OtherProgram(practice.File("ZEP_ONE.MDB")).Run("pragma user_version = 1");
    auto& main = Start();
    EXPECT_EQ(main.windowTitle(), " ");
    EXPECT_EQ(main.windowIconText(), "ZEP Lumo");
    EXPECT_FALSE(main.Entry("mnu_13")->isVisible());
    EXPECT_FALSE(main.Entry("NActes")->isVisible());
    EXPECT_FALSE(main.Label1[0].isVisible());
    EXPECT_TRUE(core::DisplayChanged);
    EXPECT_EQ(main.maximumWidth(), QWIDGETSIZE_MAX); // it can be maximised
    const auto shownTasks = [&] {
        QStringList shown;
        for (const auto* task : main.findChildren<forms::Picture*>(QRegularExpression("^Task-")))
            if (task->isVisible())
                shown << task->accessibleName() + " " + task->accessibleDescription();
        return shown;
    };
    EXPECT_EQ(shownTasks(), QStringList("Explorer ... Ctrl+O"));

    TypeCode(main, " 6 "); // stored value 3, doubled; surrounding blanks are ignored

    EXPECT_EQ(shownTasks().size(), 14); // all but "Quitter", and "Évolution"
    EXPECT_TRUE(shownTasks().contains("Caisse du Jour F7"));
    EXPECT_FALSE(main.Entry("mnu_aprpos")->isVisible());
    EXPECT_TRUE(main.Entry("mnu_13")->isVisible());
    EXPECT_FALSE(main.Entry("mnu_tarif")->isEnabled()); // has no screen here
    EXPECT_EQ(tests::OtherProgram(practice.File("ZEP_ONE.MDB")).Answer("pragma user_version"),
              QString::number(store::SchemaVersion));
    EXPECT_EQ(main.Label1[0].text(), "Cabinet d'Été");
    EXPECT_TRUE(main.Label1[2].isVisible());
    EXPECT_TRUE(main.Label4[0].isVisible());
    EXPECT_EQ(core::LetterheadField(3), QString("Alger").leftJustified(20));
    EXPECT_TRUE(core::TheDatabase.IsOpen());
    EXPECT_EQ(core::TheDatabase.TableDef("Prov").FieldCount(), 6);
    EXPECT_EQ(AccessibilityFaults(main), QStringList());
    Q_EMIT main.Image1.MouseOver(); // "Quitter" under the pointer, and not
    EXPECT_TRUE(main.Image2.isVisible());
    EXPECT_EQ(main.Image2.geometry(), main.Image1.geometry());
    QMouseEvent away(QEvent::MouseMove, QPointF(5, 200), QPointF(5, 200), Qt::NoButton, {}, {});
    QApplication::sendEvent(&main, &away);
    EXPECT_FALSE(main.Image2.isVisible());

    Quit(main);
    EXPECT_EQ(desk.EndCode(), 0);
    EXPECT_TRUE(QFile::exists(practice.File("ARCHIVES/ZEP_ONE.MDB")));
}

TEST_F(Opening, StaysSilentOnAWrongCodeAndSelectsItForTheNextTry)
{
    auto& main = Start();
    desk.WhenModal<Auteur>([this](Auteur& dialog) {
        dialog.Dir1.SetPath(practice.Folder());
        for (const char* code : {"3", "12", "06", "7"}) { // each replaces the one before
            QTest::keyClicks(&dialog.Text1, code);
            QTest::keyClick(&dialog.Text1, Qt::Key_Return);
            EXPECT_TRUE(dialog.Text1.hasFocus());
            EXPECT_EQ(dialog.Text1.selectedText(), code);
        }
        Press(dialog, Qt::Key_Escape);
    });
    main.Entry("mnu_aprpos")->trigger();
    EXPECT_TRUE(main.Entry("mnu_aprpos")->isVisible());
    EXPECT_FALSE(core::TheDatabase.IsOpen());
    EXPECT_EQ(desk.BeepCount(), 0);

    Quit(main); // no practice is open: no database step, no copy
    EXPECT_FALSE(QFile::exists(practice.File("ARCHIVES/ZEP_ONE.MDB")));
}

TEST_F(Opening, StartsInTheCodeIfTheFolderHasAPractice)
{
    const QString before = QDir::currentPath();
    QDir::setCurrent(practice.Folder());
    auto& dialog = desk.Open<Auteur>();
    EXPECT_TRUE(dialog.Text1.hasFocus());
    QDir::setCurrent(practice.File("ARCHIVES"));
    auto& elsewhere = desk.Open<Auteur>();
    EXPECT_TRUE(elsewhere.Dir1.hasFocus());
    EXPECT_FALSE(dialog.findChild<QLabel*>("LHint")->isVisible()); // once a practice is chosen
    EXPECT_TRUE(elsewhere.findChild<QLabel*>("LHint")->isVisible());
    QDir::setCurrent(before);

    ExpectRefusal("Indiquez un lecteur ou le chemin d'un dossier.");
    Click(elsewhere.Image1); // nothing typed
    elsewhere.Dir1.SetPath("/usr");
    Type(elsewhere.Dir1, "sh"); // /usr/share, or another match
    EXPECT_TRUE(elsewhere.Dir1.currentItem()->text().trimmed().startsWith("sh"));
}

TEST_F(Opening, FocusesTheMenuAndHasShortcutsForItsMainEntries)
{
    auto& main = Start();
    EXPECT_TRUE(main.focusWidget()->inherits("QMenuBar"));
    Press(*main.focusWidget(), Qt::Key_Return);
    Press(*main.focusWidget(), Qt::Key_Escape);
    for (const auto& [key, modifiers] : {std::pair(Qt::Key_M, Qt::AltModifier), {Qt::Key_F10, Qt::NoModifier}}) {
        Press(main, key, modifiers);
        ASSERT_NE(QApplication::activePopupWidget(), nullptr) << key;
        EXPECT_EQ(QApplication::activePopupWidget()->actions().first()->objectName(), "mnu_aprpos");
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    }
    EXPECT_FALSE(desk.EndCode().has_value());
    TypeCode(main, "6");
    practice.Act({});
    practice.Appointment("17/06/2008");
    Press(main, Qt::Key_F6);
    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) { Click(picker.Image2[core::Q_Date_2::AcceptDay]); });
    Press(main, Qt::Key_F7);
    Press(main, Qt::Key_F8);
    EXPECT_EQ(actsOpened, 1);
    EXPECT_EQ(cashOpened, 1);
    EXPECT_EQ(pendingOpened, 1);
}

TEST_F(Opening, NamesTheMissingFile)
{
    auto& main = Start();
    QFile::remove(practice.File("system.mdw"));
    ExpectRefusal("Fichier 'system.mdw' absent");
    TypeCode(main, "6");
    QFile::remove(practice.File("ZEP_CFIG.CFG"));
    ExpectRefusal("Fichier 'ZEP_CFIG.cfg' absent");
    TypeCode(main, "6");
    EXPECT_EQ(core::DataFolder, "");
}

TEST_F(Opening, NamesTheCommandForAnOldDatabaseWhateverItsWorkgroupIs)
{
    NEEDS_UNIX("quotes within quotes in a command line");
    auto& main = Start();
    const QString folder = practice.File("l'ancien");
    QDir().mkpath(folder);
    QFile::copy(practice.File("ZEP_CFIG.CFG"), folder + "/zep_cfig.cfg");
    for (const auto& [name, bytes] : {std::pair("zep_one.mdb", QByteArray("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24)),
                                      {"SYSTEM.MDW", "another format"}}) {
        QFile file(folder + "/" + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    const QString quoted = "'" + practice.Folder() + "/l'\\''ancien";
    desk.WhenModal<Auteur>([&](Auteur& dialog) {
        dialog.Dir1.SetPath(folder);
        Type(dialog.Text1, "8");
        Press(dialog.Text1, Qt::Key_Return); // silence on a wrong code
        desk.ExpectMessage("Cette base est d'un format plus ancien.\nPour en faire un cabinet de ce programme, tapez "
                           "dans un terminal :\n\npractice adopt " +
                               quoted + "' " + quoted +
                               "-nouveau'\n\nL'ancien dossier ne change pas. Ouvrez ensuite le nouveau.",
                           Icon::Exclamation, "ATTENTION");
        dialog.Text1.clear();
        Type(dialog.Text1, "6");
        Press(dialog.Text1, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        Click(dialog.Image2[Auteur::Cancel]);
    });
    main.Entry("mnu_aprpos")->trigger();
    EXPECT_TRUE(main.Entry("mnu_aprpos")->isVisible());
}

TEST_F(Opening, AcceptsACodeOnlyInTheFolderOfADatabase)
{
    practice.Open();
    tests::ResetGlobals();
    auto& dialog = desk.Open<Auteur>();
    EXPECT_FALSE(dialog.Text1.isVisible());
    dialog.Dir1.SetPath(practice.Folder());
    EXPECT_TRUE(dialog.Text1.isVisible());
    EXPECT_TRUE(dialog.Image2[Auteur::Accept].isVisible());
    QTest::mouseClick(dialog.File1.viewport(), Qt::LeftButton, {},
                      dialog.File1.visualItemRect(dialog.File1.item(0)).center());
    EXPECT_FALSE(dialog.File1.item(0)->isSelected()); // its line can't be chosen
    EXPECT_FALSE(dialog.File1.hasFocus());
    EXPECT_EQ(dialog.Label1.text(), QDir::toNativeSeparators(practice.Folder()));
    EXPECT_EQ(AccessibilityFaults(dialog), QStringList());

    dialog.Text1.setText(" ");
    Press(dialog.Text1, Qt::Key_Return);
    Click(dialog.Image2[Auteur::Accept]);
    EXPECT_TRUE(dialog.isVisible());

    dialog.Dir1.SetPath(practice.File("ARCHIVES"));
    EXPECT_FALSE(dialog.Text1.isVisible());
    Press(dialog.Dir1, Qt::Key_Up); // the folder above, by Enter
    Press(dialog.Dir1, Qt::Key_Return);
    EXPECT_EQ(dialog.Dir1.Path(), practice.Folder());
    EXPECT_TRUE(dialog.Text1.hasFocus());
    const struct {
        QString typed, path, refusal;
    } rows[] = {{"/", QDir("/").absolutePath(), ""},
                {"Q", QDir("/").absolutePath(), "Lecteur 'Q:' introuvable"}, // a letter alone is a drive
                {"Q:", QDir("/").absolutePath(), "Lecteur 'Q:' introuvable"},
                {practice.Folder(), practice.Folder(), ""},
                {"/aucun:", practice.Folder(), "Dossier '/aucun:' introuvable"}};
    for (const auto& row : rows) {
        dialog.Text2.clear();
        Type(dialog.Text2, row.typed);
        if (!row.refusal.isEmpty())
            ExpectRefusal(row.refusal);
        Press(dialog.Text2, Qt::Key_Return);
        EXPECT_EQ(dialog.Dir1.Path(), row.path);
        EXPECT_EQ(dialog.Text1.hasFocus(), row.path == practice.Folder() && row.refusal.isEmpty())
            << row.typed.toStdString();
        EXPECT_EQ(dialog.Text2.hasSelectedText(), !row.refusal.isEmpty()) << row.typed.toStdString();
    }
}

TEST_F(Opening, KeepsWorkingWhenQuittingIsDeclined)
{
    auto& main = Start();
    TypeCode(main, "6");
    desk.ExpectMessage("Veuiller Confirmer Fin de Travail !!", Icon::Question, "ZEP Lumo", Answer::No);
    main.close();
    EXPECT_TRUE(main.isVisible());
    EXPECT_TRUE(core::TheDatabase.IsOpen());
    EXPECT_FALSE(desk.EndCode().has_value());
}

TEST_F(Opening, ReplacesAWriteProtectedArchive)
{
    QFile old(practice.File("ARCHIVES/ZEP_ONE.MDB"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("yesterday");
    old.close();
    host::SetFileAttributes(old.fileName(), 1);
    auto& main = Start();
    TypeCode(main, "6");
    Quit(main);
    EXPECT_EQ(host::FileAttributes(old.fileName()), 0);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_TRUE(old.readAll().startsWith("SQLite format 3"));
}

TEST_F(Opening, ReportsAFailedArchiveCopyAndEnds)
{
    auto& main = Start();
    TypeCode(main, "6");
    QDir(practice.File("ARCHIVES")).removeRecursively();
    tests::Quit(desk, main, basic::RuntimeError(basic::Error::PathNotFound));
    EXPECT_EQ(desk.EndCode(), 0);
    EXPECT_TRUE(QFile::exists(practice.File("ZEP_ONE.MDB")));
}

TEST_F(Opening, AddsTheSecondAmountToProvOnceAndMayOpenAgain)
{
    practice.Open();
    EXPECT_EQ(core::TheDatabase.TableDef("Prov").FieldCount(), 6);
    EXPECT_EQ(core::TheDatabase.TableDef("Prov").FieldNames().last(), "Mt2");
    core::OpenDataFiles(); // the catalogue opens them again each time
    EXPECT_EQ(core::TheDatabase.TableDef("Prov").FieldCount(), 6);
    EXPECT_EQ(core::PrestaTable.RecordCount(), 1);
}
