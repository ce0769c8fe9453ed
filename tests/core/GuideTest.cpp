#include "core/Guide.h"

#include "core/Form1.h"
#include "support/Accessibility.h"
#include "support/ScriptedDesk.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

using core::Guide;

namespace {

QString TextOf(const QString& page)
{
    QFile file(":/guide/" + page);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

TEST(GuidePages, LinkToPagesAndPicturesThatExist)
{
    static const QRegularExpression link(R"(\]\(([^)]+)\))");
    const QStringList pages = Guide::Pages();
    EXPECT_GE(pages.size(), 15);
    for (const QString& page : pages) {
        const QString text = TextOf(page);
        EXPECT_TRUE(text.startsWith("# ")) << page.toStdString();
        for (const auto& match : link.globalMatch(text))
            EXPECT_TRUE(QFile::exists(":/guide/" + match.captured(1)))
                << page.toStdString() << ": " << match.captured(1).toStdString();
    }
}

TEST(GuideWindow, OpensByF1OnThePageAboutTheScreenAndSearchesAllPages)
{
    ScriptedDesk desk;
    auto& main = desk.Open<core::Form1>(core::ScreenOpeners());
    desk.WhenModal<Guide>([](Guide& guide) {
        EXPECT_EQ(guide.Page.source().fileName(), "index.md");
        EXPECT_EQ(AccessibilityFaults(guide), QStringList());
        Type(guide.SearchText, "1 sur 3");
        Press(guide.SearchText, Qt::Key_Return);
        EXPECT_EQ(guide.Page.source().fileName(), "actes-visibles.md");
        EXPECT_EQ(guide.Page.textCursor().selectedText(), "1 sur 3");
        guide.SearchText.setText("n'est nulle part");
        Click(guide.SearchNext);
        EXPECT_EQ(guide.Found.text(), "Introuvable");
        Click(guide.Back);
        Press(guide, Qt::Key_Escape);
    });
    Press(main, Qt::Key_F1);
    EXPECT_EQ(Guide::PageOf("F_Inst"), "regler-les-instances.md");
}
