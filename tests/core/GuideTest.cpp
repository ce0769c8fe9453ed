#include "guide/Guide.h"

#include "core/Form1.h"
#include "core/globals.h"
#include "platform/basic/Version.h"
#include "platform/forms/Colours.h"
#include "support/Accessibility.h"
#include "support/Files.h"
#include "support/ScriptedDesk.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextTable>
#include <gtest/gtest.h>

using guide::Guide;

namespace {

class GuidePages : public testing::Test {
protected:
    void SetUp() override { core::ProgramFolder = QCoreApplication::applicationDirPath(); }
    void TearDown() override { core::ProgramFolder.clear(); }

    static QString TextOf(const QString& page)
    {
        return QString::fromUtf8(tests::BytesOf(Guide::Folder() + "/" + page));
    }

    static QStringList LinksOf(const QString& page)
    {
        static const QRegularExpression link(R"(\]\(([^)]+)\))");
        QStringList links;
        for (const auto& match : link.globalMatch(TextOf(page)))
            links << match.captured(1);
        return links;
    }
};

class GuideWindow : public GuidePages {
protected:
    ScriptedDesk desk;
};

} // namespace

TEST_F(GuidePages, AreAllInTheContentsAndLinkToPagesAndPicturesThatExist)
{
    const QDir folder(Guide::Folder());
    QStringList pages = Guide::Pages();
    QStringList shown;
    for (const QString& page : pages) {
        EXPECT_TRUE(TextOf(page).startsWith("# ")) << page.toStdString();
        for (const QString& link : LinksOf(page)) {
            EXPECT_TRUE(folder.exists(link)) << page.toStdString() << ": " << link.toStdString();
            shown << link;
        }
        EXPECT_TRUE(page == "index.md" || LinksOf(page).contains("index.md")) << page.toStdString();
    }
    pages.sort();
    EXPECT_EQ(pages, folder.entryList({"*.md"}, QDir::Files, QDir::Name));

    qint64 bytes = 0;
    for (const QFileInfo& picture : QDir(folder.filePath("images")).entryInfoList(QDir::Files)) {
        EXPECT_TRUE(shown.contains("images/" + picture.fileName())) << picture.fileName().toStdString();
        bytes += picture.size();
    }
    EXPECT_GT(bytes, 0);
    EXPECT_LT(bytes, 1'500'000);
}

TEST_F(GuidePages, NameEveryKeyThatAScreenHas)
{
    const QString page = TextOf("touches.md").replace(QChar::Nbsp, ' ');
    for (const forms::CommandKeys& keys : forms::KeyTable())
        EXPECT_TRUE(page.contains(QStringLiteral("\n| %1 | %2 |\n").arg(keys.text, keys.effect))) << keys.text;
}

TEST_F(GuideWindow, OpensByF1AndSearchesAllPages)
{
    forms::OnHelp(guide::ShowGuide);
    auto& main = desk.Open<core::Form1>(core::ScreenOpeners());
    desk.WhenModal<Guide>([](Guide& guide) {
        EXPECT_EQ(guide.windowTitle(), "Guide de ZEP Lumo");
        EXPECT_TRUE(guide.Version.text().endsWith(basic::Version()));
        EXPECT_EQ(AccessibilityFaults(guide), QStringList());
        EXPECT_FALSE(guide.Back.isEnabled());
        const QString contents = guide.Page.document()->toRawText();
        EXPECT_TRUE(contents.contains(QString("parle") + QChar(QChar::Nbsp) + ";")); // no line starts with ";"

        Press(guide.Page, Qt::Key_F, Qt::ControlModifier);
        Type(guide.SearchText, "1 sur 3");
        Press(guide.SearchText, Qt::Key_Return);
        EXPECT_EQ(guide.Page.source().fileName(), "actes-visibles.md");
        EXPECT_EQ(guide.Page.textCursor().selectedText(), "1 sur 3");

        guide.SearchText.setText("où on les saisit"); // on the next page alone
        Press(guide.Page, Qt::Key_F3);
        EXPECT_EQ(guide.Page.source().fileName(), "actes-supprimes.md");
        Press(guide.Page, Qt::Key_Left, Qt::AltModifier);

        guide.SearchText.setText("n'est nulle part");
        Press(guide.Page, Qt::Key_F3);
        EXPECT_EQ(guide.Found.text(), "Introuvable");
        EXPECT_EQ(guide.Page.source().fileName(), "actes-visibles.md") << "the page stays";

        Press(guide.Page, Qt::Key_Left, Qt::AltModifier);
        EXPECT_EQ(guide.Page.source().fileName(), "index.md") << "pages without the text aren't gone through";
        const QTextBlock heading = guide.Page.document()->firstBlock();
        EXPECT_EQ(heading.blockFormat().lineHeight(), 125);
        EXPECT_EQ(heading.begin().fragment().charFormat().foreground().color(), forms::TheColours().accent);
        Press(guide.Page, Qt::Key_Escape);
    });
    Press(main, Qt::Key_F1);
}

TEST_F(GuideWindow, IsLeftToItsContentsByF1AndFollowsLinksByTabAndEnter)
{
    Guide guide("F_Inst");
    guide.Load();
    guide.show();
    EXPECT_EQ(guide.windowTitle(), "Guide - Régler les actes en instance");
    Press(guide.Page, Qt::Key_F1);
    EXPECT_EQ(guide.Page.source().fileName(), "index.md");
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return})
        Press(guide.Page, key);
    EXPECT_EQ(guide.Page.source().fileName(), "ouvrir.md");
    const QTextBlock last = guide.Page.document()->lastBlock();
    ASSERT_EQ(last.text(), "Sommaire");
    EXPECT_EQ(last.begin().fragment().charFormat().foreground().color(), forms::TheColours().accent);
}

TEST_F(GuideWindow, SetsOffTheHeadingsOfItsTablesAndSpacesItsText)
{
    Guide guide("");
    guide.Load();
    guide.Page.setSource(QUrl::fromLocalFile(Guide::Folder() + "/touches.md"));
    const QTextTable* table = nullptr;
    for (QTextFrame* frame : guide.Page.document()->rootFrame()->childFrames())
        if (table == nullptr)
            table = qobject_cast<QTextTable*>(frame);
    ASSERT_NE(table, nullptr);
    for (int row = 0; row < 2; ++row) {
        const QBrush ground = table->cellAt(row, table->columns() - 1).format().background();
        EXPECT_EQ(row == 0 ? ground == QBrush(forms::TheColours().header) : ground.style() == Qt::NoBrush, true) << row;
    }
    EXPECT_EQ(guide.Page.document()->firstBlock().blockFormat().lineHeight(), 125);
    EXPECT_EQ(guide.Page.palette().color(QPalette::Text), forms::TheColours().text);
}

TEST_F(GuideWindow, SaysWhereTheMissingGuideShouldBe)
{
    core::ProgramFolder = "/nulle/part";
    Guide guide("");
    guide.Load();
    EXPECT_EQ(guide.Page.toPlainText(), "Le guide n'est pas installé : /nulle/part/guide/index.md manque.");
}
