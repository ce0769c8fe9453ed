#include "platform/pages/TemplateCheck.h"
#include "platform/paper/PagePainter.h"
#include "platform/paper/PdfFile.h"
#include "platform/report/ReportPractice.h"
#include "support/Printing.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

using tests::ReportPractice;

/// A template with a logo of 10 mm and enough rows for two pages.
QByteArray TemplateWith(const QByteArray& logo)
{
    return "title = \"Essai\"\n[logo]\n" + logo + R"(
[[heading]]
text = "Cabinet"
[rows]
select = "with recursive n(i) as (select 1 union all select i + 1 from n where i < 99) select i from n"
[[column]]
heading = "N"
field = "i"
width_mm = 20
)";
}

/// A red picture twice as wide as high.
QByteArray RedPicture(const char* format)
{
    QImage picture(40, 20, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QByteArray file;
    QBuffer buffer(&file);
    EXPECT_TRUE(picture.save(&buffer, format));
    return file;
}

class Logo : public testing::Test {
protected:
    pages::PageLayout Layout(const QByteArray& logo)
    {
        const pages::ParsedTemplate read =
            pages::ReadTemplateFile(practice.WriteTemplate(TemplateWith(logo)), practice.Source().textNames);
        EXPECT_TRUE(read.faults.isEmpty()) << qPrintable(read.faults.value(0).reason);
        return {read.design, pages::ReadContent(read.design, practice.Source()).content};
    }

    /// The columns with red ink, at ten dots a millimetre.
    static std::pair<int, int> RedOf(const pages::Page& page)
    {
        QImage sheet(2100, 400, QImage::Format_RGB32);
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        paper::PagePainter().Paint(painter, page, 10);
        painter.end();
        int first = sheet.width();
        int last = -1;
        for (int x = 0; x < sheet.width(); ++x)
            if (const QColor ink = sheet.pixelColor(x, 200);
                ink.red() > 200 && ink.green() < 60) { // 20 mm from the top
                first = std::min(first, x);
                last = x;
            }
        return {first, last};
    }

    ReportPractice practice;
};

TEST_F(Logo, StandsAtItsSideOfTheFirstPageInItsOwnProportions)
{
    practice.WriteTemplate(RedPicture("PNG"), "logo.png");
    practice.WriteTemplate(RedPicture("JPEG"), "logo.jpg");
    const auto left = Layout("file = \"logo.png\"\nheight_mm = 10");
    EXPECT_NEAR(RedOf(left.MakePage(0)).first, 150, 2);
    EXPECT_NEAR(RedOf(left.MakePage(0)).second, 350, 2);
    ASSERT_GT(left.PageCount(), 1);
    EXPECT_TRUE(left.MakePage(1).pictures.empty());

    const auto right = Layout("file = \"logo.jpg\"\nheight_mm = 10\nalign = \"right\"");
    EXPECT_NEAR(RedOf(right.MakePage(0)).first, 1750, 2);
    EXPECT_NEAR(RedOf(right.MakePage(0)).second, 1950, 2);
}

TEST_F(Logo, IsAPictureBesideItsTemplateOrAMistake)
{
    practice.WriteTemplate("pas une image", "texte.png");
    practice.WriteTemplate(RedPicture("PNG") + QByteArray(2 << 20, 'x'), "grand.png");
    practice.WriteTemplate(RedPicture("PNG").first(30), "tronque.png");
    const struct {
        const char* logo;
        int line;
        const char* reason;
    } rows[] = {
        {"file = \"rien.png\"", 2, "logo « rien.png » : le fichier n'existe pas ou ne peut pas être lu"},
        {"file = \".\"", 2, "logo « . » : le fichier n'existe pas ou ne peut pas être lu"},
        {"file = \"texte.png\"", 2, "logo « texte.png » : ce n'est pas une image PNG ou JPEG"},
        {"file = \"grand.png\"", 2, "logo « grand.png » : le fichier dépasse 2 Mo"},
        {"file = \"../logo.png\"", 3, "le logo est à côté du modèle : un nom de fichier sans dossier"},
        {"height_mm = 10", 2, "« file » manque dans [logo]"},
    };
    for (const auto& row : rows) {
        const auto faults = pages::CheckTemplate(practice.WriteTemplate(TemplateWith(row.logo)), practice.Source());
        ASSERT_EQ(faults.size(), 1) << row.logo;
        EXPECT_EQ(faults[0].line, row.line) << row.logo;
        EXPECT_EQ(faults[0].reason, row.reason);
    }
    // One that can't be decoded leaves its place empty and the report whole.
    EXPECT_EQ(RedOf(Layout("file = \"tronque.png\"").MakePage(0)).second, -1);
}

} // namespace
