#include "data/ReportTemplates.h"
#include "platform/report/PagesView.h"
#include "platform/report/PdfText.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/Report.h"
#include "platform/report/ReportPractice.h"
#include "support/Accessibility.h"
#include "support/FullDisk.h"
#include "support/ScriptedDesk.h"
#include "support/User.h"

#include <QAccessible>
#include <QDir>
#include <QFile>
#include <QPrinter>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

using report::PreviewWindow;
using tests::ReportPractice;

/// A report of several pages.
class Preview : public testing::Test {
protected:
    Preview()
    {
        Report1.DataFiles(0) = practice.Path();
        Report1.ReportFileName = practice.Template("ZEP_R2.RPT");
        Report1.TextSelect = data::ReportTextSelect;
        Report1.TextNames = data::ReportTextNames;
        Report1.PrintDate = QDate(2008, 6, 17);
        Report1.MessageTitle = "ZEP Lumo";
    }

    void Run(int rows, std::function<void(PreviewWindow&)> script)
    {
        practice.AddActs(rows, false);
        desk.WhenModal<PreviewWindow>([&](PreviewWindow& preview) {
            script(preview);
            if (preview.IsLoaded())
                Press(preview, Qt::Key_Escape);
        });
        EXPECT_EQ(Report1.PrintReport(), 0);
    }

    QStringList Files() const { return QDir(practice.Folder()).entryList(QDir::Files | QDir::Hidden); }

    ScriptedDesk desk;
    ReportPractice practice;
    report::Report Report1;
};

QWidget& PagesOf(PreviewWindow& preview)
{
    return *preview.findChild<report::PagesView*>("Pages");
}

TEST_F(Preview, IsUsableByKeyboardOnly)
{
    Run(400, [](PreviewWindow& preview) {
        EXPECT_EQ(preview.objectName(), "Preview");
        EXPECT_EQ(preview.windowTitle(), "Aperçu - Actes réglés");
        EXPECT_EQ(preview.PageCount.text(), "/ 10");
        QWidget& pages = PagesOf(preview);
        const struct {
            Qt::Key key;
            const char* page;
        } moves[] = {{Qt::Key_PageUp, "1"}, {Qt::Key_PageDown, "2"},  {Qt::Key_PageDown, "3"}, {Qt::Key_PageUp, "2"},
                     {Qt::Key_End, "10"},   {Qt::Key_PageDown, "10"}, {Qt::Key_PageUp, "9"},   {Qt::Key_Home, "1"}};
        for (const auto& [key, page] : moves) {
            Press(pages, key);
            EXPECT_EQ(preview.PageNumber.text(), page) << "after key " << key;
        }
        EXPECT_FALSE(preview.FirstButton.isEnabled());
        EXPECT_FALSE(preview.PreviousButton.isEnabled());
        Press(pages, Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(preview.PageNumber.text(), "2");
        Press(pages, Qt::Key_PageUp, Qt::ControlModifier);
        EXPECT_EQ(preview.PageNumber.text(), "1");

        Type(preview.PageNumber, "x7");
        Press(preview.PageNumber, Qt::Key_Return);
        EXPECT_EQ(preview.View().CurrentPage(), 6);
        EXPECT_TRUE(preview.View().accessibleName().contains("page 7 sur 10"));
        Press(pages, Qt::Key_W, Qt::ControlModifier);
        EXPECT_FALSE(preview.IsLoaded());
    });
}

TEST_F(Preview, ScreenReadersReadThePageLineByLine)
{
    Run(400, [](PreviewWindow& preview) {
        QAccessibleInterface* pages = QAccessible::queryAccessibleInterface(&PagesOf(preview));
        ASSERT_NE(pages, nullptr);
        EXPECT_EQ(pages->role(), QAccessible::Document);
        EXPECT_EQ(pages->text(QAccessible::Name), "Actes réglés, page 1 sur 10");
        QAccessibleTextInterface* text = pages->textInterface();
        ASSERT_NE(text, nullptr);
        const QStringList lines = text->text(0, text->characterCount()).split('\n');
        EXPECT_EQ(lines.value(1), "Médecine générale  (Alger)");
        EXPECT_TRUE(lines.contains("2  O'BRIEN-MARTIN  Jean-Frédéric  Radiologie  9-10  R-  150.50"));
        int start = 0, end = 0;
        EXPECT_EQ(text->textAtOffset(3, QAccessible::LineBoundary, &start, &end).trimmed(), lines.value(0));
        Press(PagesOf(preview), Qt::Key_End);
        EXPECT_EQ(pages->text(QAccessible::Name), "Actes réglés, page 10 sur 10");
        EXPECT_TRUE(text->text(0, text->characterCount()).contains("\n400  BENALI  Amina"));
    });
}

TEST_F(Preview, MovesBetweenPagesByItsPictures)
{
    Run(400, [](PreviewWindow& preview) {
        const auto shows = [&](forms::Picture& picture, const char* page, bool first, bool last) {
            Click(picture);
            EXPECT_EQ(preview.PageNumber.text(), page) << qPrintable(picture.objectName());
            EXPECT_EQ(preview.FirstButton.isEnabled(), !first);
            EXPECT_EQ(preview.PreviousButton.isEnabled(), !first);
            EXPECT_EQ(preview.NextButton.isEnabled(), !last);
            EXPECT_EQ(preview.LastButton.isEnabled(), !last);
        };
        shows(preview.LastButton, "10", false, true);
        shows(preview.PreviousButton, "9", false, false);
        shows(preview.FirstButton, "1", true, false);
        shows(preview.NextButton, "2", false, false);
    });
}

TEST_F(Preview, ZoomKeepsThePageInSight)
{
    Run(400, [](PreviewWindow& preview) {
        QWidget& pages = PagesOf(preview);
        EXPECT_TRUE(preview.View().FitsWidth());
        Press(pages, Qt::Key_End);
        Press(pages, Qt::Key_PageUp);
        const double fitted = preview.View().Zoom();
        for (int step = 0; step < 12; ++step) {
            Press(pages, Qt::Key_Plus, Qt::ControlModifier);
            EXPECT_EQ(preview.View().CurrentPage(), 8);
        }
        EXPECT_EQ(preview.View().Zoom(), report::PagesView::LargestZoom);
        EXPECT_FALSE(preview.ZoomInButton.isEnabled());
        Press(pages, Qt::Key_0, Qt::ControlModifier);
        EXPECT_EQ(preview.ZoomText.text(), "100 %");
        for (int step = 0; step < 12; ++step)
            Press(pages, Qt::Key_Minus, Qt::ControlModifier);
        EXPECT_EQ(preview.View().Zoom(), report::PagesView::SmallestZoom);
        Press(pages, Qt::Key_2, Qt::ControlModifier);
        EXPECT_DOUBLE_EQ(preview.View().Zoom(), fitted);
    });
}

TEST_F(Preview, AFittedSheetNeedsNoHorizontalScrollBar)
{
    Run(40, [](PreviewWindow& preview) {
        for (int width = 700; width < 1100; width += 7) {
            preview.resize(width, 600);
            support::ProcessEvents();
            ASSERT_TRUE(preview.View().FitsWidth());
            EXPECT_EQ(preview.View().horizontalScrollBar()->maximum(), 0) << "at a width of " << width;
        }
    });
}

TEST_F(Preview, EachControlHasANameForScreenReaders)
{
    Run(1, [](PreviewWindow& preview) {
        EXPECT_EQ(AccessibilityFaults(preview), QStringList());
        EXPECT_FALSE(preview.SavedPanel.isVisible());
        for (const QAbstractButton* button : preview.findChildren<QAbstractButton*>())
            EXPECT_FALSE(button->objectName().isEmpty() || button->toolTip().isEmpty())
                << qPrintable(button->objectName());
        Click(preview.CloseButton);
        EXPECT_FALSE(preview.IsLoaded());
    });
}

TEST_F(Preview, SavesThePdfUnderTheProposedName)
{
    QString proposed;
    Run(40, [&](PreviewWindow& preview) {
        preview.AskPdfPath = [&](PreviewWindow&, const QString& path) {
            proposed = QFileInfo(path).fileName();
            return practice.Folder() + "/actes";
        };
        Press(PagesOf(preview), Qt::Key_S, Qt::ControlModifier);
        EXPECT_TRUE(preview.OpenFolder.isVisible());
    });
    EXPECT_EQ(proposed, "Actes réglés 17-06-2008.pdf");
    const QList<tests::PdfPage> pages = tests::ReadPdf(practice.Folder() + "/actes.pdf");
    ASSERT_EQ(pages.size(), 2);
    EXPECT_TRUE(pages[0].text.contains("O'BRIEN-MARTIN Jean-Frédéric Radiologie"));
    EXPECT_TRUE(pages[1].text.contains("Imprimé le 17/06/2008 Page 2 / 2")) << qPrintable(pages[1].text);
    EXPECT_EQ(pages[0].points, QSizeF(595, 842));

    Report1.ProposedName = "../Caisse du 17/06";
    Run(0, [&](PreviewWindow& preview) {
        preview.AskPdfPath = [&](PreviewWindow&, const QString& path) {
            return proposed = QFileInfo(path).fileName(), QString();
        };
        Click(preview.SaveButton);
    });
    EXPECT_EQ(proposed, "..-Caisse du 17-06.pdf");
}

TEST_F(Preview, ReplacesAnExistingFileOnlyWhenTheUserSaysSo)
{
    const QString existing = practice.WriteTemplate("hier", "caisse.pdf");
    QStringList proposals;
    Run(1, [&](PreviewWindow& preview) {
        QStringList answers = {practice.Folder() + "/caisse", practice.Folder() + "/CAISSE.PDF"};
        preview.AskPdfPath = [&](PreviewWindow&, const QString& path) {
            proposals << QFileInfo(path).fileName();
            return answers.takeFirst();
        };
        desk.ExpectMessage("« caisse.pdf » existe déjà.\nLe remplacer ?", forms::Icon::Question, "ZEP Lumo",
                           forms::Answer::No);
        Click(preview.SaveButton);
        desk.Verify();
        EXPECT_EQ(proposals.value(1), "caisse.pdf"); // asked again, starting from the refused name
        EXPECT_EQ(practice.Read("caisse.pdf"), "hier");
        EXPECT_TRUE(practice.Read("CAISSE.PDF").startsWith("%PDF")); // a new file: nothing to ask

        ASSERT_TRUE(QFile::setPermissions(existing, QFile::Permissions(0x6644))); // readable by all
        preview.AskPdfPath = [&](PreviewWindow&, const QString&) { return practice.Folder() + "/caisse"; };
        desk.ExpectMessage("« caisse.pdf » existe déjà.\nLe remplacer ?", forms::Icon::Question, "ZEP Lumo",
                           forms::Answer::Yes);
        Click(preview.SaveButton);
    });
    for (const char* name : {"caisse.pdf", "CAISSE.PDF"}) {
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        EXPECT_TRUE(practice.Read(name).startsWith("%PDF")) << name;
        EXPECT_FALSE(QFile::permissions(practice.Folder() + "/" + name) & others) << name;
    }
}

TEST_F(Preview, AFullDiskLeavesNoPartialPdfAndKeepsTheOldOne)
{
    const QString path = practice.WriteTemplate("hier", "etat.pdf");
    QStringList before;
    Run(400, [&](PreviewWindow& preview) {
        before = Files();
        for (const rlim_t bytes : {0, 10, 5'000, 40'000}) {
            desk.ExpectMessage("Le PDF n'a pas été enregistré : Disque plein.\n" + QDir::toNativeSeparators(path),
                               forms::Icon::Critical, "ZEP Lumo");
            const tests::FullDisk disk(bytes);
            EXPECT_FALSE(preview.SavePdf(path));
        }
        EXPECT_FALSE(preview.SavedPanel.isVisible());
        desk.ExpectMessage("Le PDF n'a pas été enregistré : Chemin d'accès introuvable.\n/nulle/part.pdf",
                           forms::Icon::Critical, "ZEP Lumo");
        EXPECT_FALSE(preview.SavePdf("/nulle/part.pdf"));
        EXPECT_EQ(Files(), before);
    });
    EXPECT_EQ(practice.Read("etat.pdf"), "hier");
}

TEST_F(Preview, PrintsTheChosenPagesOnTheTemplatesPaper)
{
    const struct {
        int from;
        int to;
        QStringList pages; ///< numbers on the printed pages
    } ranges[] = {{2, 4, {"2", "3", "4"}},
                  {13, 99, {"13", "14", "15"}},
                  {1, 1, {"1"}},
                  {50, 60, {"15"}},
                  {0, 0, {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15"}}};
    Report1.ReportFileName = practice.Template("ZEP_DTAL.RPT");
    Run(400, [&](PreviewWindow& preview) {
        ASSERT_EQ(preview.Pages().PageCount(), 15);
        for (const auto& range : ranges) {
            const QString path = practice.Folder() + "/papier.pdf";
            preview.AskPrinter = [&](PreviewWindow&, QPrinter& printer) {
                printer.setOutputFormat(QPrinter::PdfFormat);
                printer.setOutputFileName(path);
                if (range.from > 0) { // otherwise all
                    printer.setPrintRange(QPrinter::PageRange);
                    printer.setFromTo(range.from, range.to);
                }
                return true;
            };
            Press(PagesOf(preview), Qt::Key_P, Qt::ControlModifier);
            QStringList printed;
            for (const tests::PdfPage& page : tests::ReadPdf(path)) {
                printed << page.text.section("Page ", -1).section(' ', 0, 0);
                EXPECT_EQ(page.points, QSizeF(842, 595));
            }
            EXPECT_EQ(printed, range.pages) << range.from << " to " << range.to;
        }
    });
}

TEST_F(Preview, ALongReadIsCancelledByEsc)
{
    const QByteArray endless =
        "title = \"Essai\"\n[rows]\nselect = \"with recursive n(i) as (select 1 union all select "
        "i + 1 from n) select count(*) as num from n\"\n"
        "[[column]]\nheading = \"N°\"\nfield = \"num\"\nwidth_mm = 20\n";
    Report1.ReportFileName = practice.WriteTemplate(endless);
    Report1.Patience = std::chrono::milliseconds(0);
    bool wasOffered = false;
    QTimer::singleShot(0, qApp, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() != "LongReading")
                continue;
            wasOffered = window->isVisible() && window->isModal();
            EXPECT_EQ(AccessibilityFaults(*window), QStringList());
            QTest::keyClick(window, Qt::Key_Escape);
        }
    });
    EXPECT_EQ(Report1.PrintReport(), 1); // without a message
    EXPECT_TRUE(wasOffered);
}

TEST_F(Preview, ATemplateErrorShowsAMessageOnly)
{
    Report1.ReportFileName = practice.WriteTemplate("title = \"Essai\"\n[rows]\nselect = \"select num from Rien\"\n"
                                                    "[[column]]\nheading = \"N°\"\nfield = \"num\"\nwidth_mm = 20\n",
                                                    "ZEP_R9.RPT");
    desk.ExpectMessage("ZEP_R9.RPT, ligne 3 : table inconnue « Rien »", forms::Icon::Critical, "ZEP Lumo");
    EXPECT_EQ(Report1.PrintReport(), 1);
    Report1.Destination = 1;
    EXPECT_EQ(ErrorOf([&] { Report1.PrintReport(); }), Error::InvalidProperty);
    EXPECT_EQ(ErrorOf([&] { Report1.DataFiles(1); }), Error::IndexOutOfRange);
}

} // namespace
