#include "data/ReportTemplates.h"
#include "platform/report/PagesView.h"
#include "platform/report/PdfText.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/Report.h"
#include "platform/report/ReportPractice.h"
#include "support/Accessibility.h"
#include "support/FullDisk.h"
#include "support/ScreenText.h"
#include "support/ScriptedDesk.h"
#include "support/Unix.h"
#include "support/User.h"

#include <QAccessible>
#include <QDir>
#include <QFile>
#include <QPrinter>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWindow>
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

TEST_F(Preview, MovesBetweenPagesByKeysAndPictures)
{
    Run(400, [](PreviewWindow& preview) {
        EXPECT_EQ(preview.objectName(), "Preview");
        EXPECT_EQ(preview.windowTitle(), "Aperçu - Actes réglés");
        EXPECT_EQ(preview.PageCount.text(), "/ 10");
        tests::ExpectGoldenScreen(tests::ScreenAsText(preview), ZEP_GOLDEN "/preview.txt", ZEP_PRINTED "/preview.txt");
        const auto expectPage = [&](int page) {
            EXPECT_EQ(preview.PageNumber.text(), QString::number(page));
            EXPECT_TRUE(preview.View().accessibleName().contains(QString("page %1 sur 10").arg(page)));
            for (const auto* back : {&preview.FirstButton, &preview.PreviousButton})
                EXPECT_EQ(back->isEnabled(), page != 1) << page;
            for (const auto* on : {&preview.NextButton, &preview.LastButton})
                EXPECT_EQ(on->isEnabled(), page != 10) << page;
        };
        QWidget& pages = PagesOf(preview);
        const std::pair<Qt::Key, int> moves[] = {{Qt::Key_PageUp, 1}, {Qt::Key_PageDown, 2}, {Qt::Key_PageDown, 3},
                                                 {Qt::Key_PageUp, 2}, {Qt::Key_End, 10},     {Qt::Key_PageDown, 10},
                                                 {Qt::Key_PageUp, 9}, {Qt::Key_Home, 1}};
        for (const auto& [key, page] : moves) {
            Press(pages, key);
            expectPage(page);
        }
        Press(pages, Qt::Key_PageDown, Qt::ControlModifier);
        expectPage(2);
        Press(pages, Qt::Key_PageUp, Qt::ControlModifier);
        expectPage(1);
        int page = 10;
        for (forms::Picture* picture :
             {&preview.LastButton, &preview.PreviousButton, &preview.FirstButton, &preview.NextButton}) {
            Click(*picture);
            expectPage(page);
            page = page == 10 ? 9 : page == 9 ? 1 : 2;
        }
        Type(preview.PageNumber, "x5");
        Press(preview.PageNumber, Qt::Key_Tab);
        expectPage(2); // typed and not confirmed
        Type(preview.PageNumber, "x7");
        Press(preview.PageNumber, Qt::Key_Return);
        expectPage(7);
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
        EXPECT_EQ(text->offsetAtPoint(QPoint(300, 300)), 0) << "readers go by lines";
        Press(PagesOf(preview), Qt::Key_End);
        EXPECT_EQ(pages->text(QAccessible::Name), "Actes réglés, page 10 sur 10");
        EXPECT_TRUE(text->text(0, text->characterCount()).contains("\n400  BENALI  Amina"));
    });
}

TEST_F(Preview, ZoomKeepsThePageInSight)
{
    Run(400, [](PreviewWindow& preview) {
        QWidget& pages = PagesOf(preview);
        EXPECT_EQ(AccessibilityFaults(preview), QStringList());
        EXPECT_FALSE(preview.SavedPanel.isVisible());
        for (int width = 700; width < 1100; width += 7) {
            preview.resize(width, 600);
            support::ProcessEvents();
            ASSERT_EQ(preview.View().Fitted(), report::PagesView::Fit::Width);
            EXPECT_EQ(preview.View().horizontalScrollBar()->maximum(), 0) << "at a width of " << width;
        }
        Press(pages, Qt::Key_End);
        Press(pages, Qt::Key_PageUp);
        const double fitted = preview.View().Zoom();
        const auto pressTimes = [&](Qt::Key key, int times) {
            for (int step = 0; step < times; ++step) {
                Press(pages, key, Qt::ControlModifier);
                EXPECT_EQ(preview.View().CurrentPage(), 8);
            }
            return preview.View().Zoom();
        };
        EXPECT_EQ(pressTimes(Qt::Key_Plus, 12), report::PagesView::LargestZoom);
        EXPECT_FALSE(preview.ZoomInButton.isEnabled());
        EXPECT_EQ(pressTimes(Qt::Key_0, 1), 1);
        EXPECT_EQ(preview.ZoomText.text(), "100 %");
        Click(preview.ZoomInButton);
        EXPECT_GT(preview.View().Zoom(), 1);
        Click(preview.ZoomOutButton);
        EXPECT_EQ(preview.View().Zoom(), 1);
        EXPECT_EQ(pressTimes(Qt::Key_Minus, 12), report::PagesView::SmallestZoom);
        EXPECT_DOUBLE_EQ(pressTimes(Qt::Key_2, 1), fitted);
        EXPECT_LT(pressTimes(Qt::Key_3, 1), fitted);
        const double sheet = preview.View().Zoom() * 297 * preview.logicalDpiY() / 25.4;
        EXPECT_NEAR(sheet, preview.View().viewport()->height() - 32, 1); // the whole page between its margins
        const QImage seen = preview.View().viewport()->grab().toImage();
        const int left = int(seen.width() - sheet * 210 / 297) / 2;
        EXPECT_EQ(seen.pixelColor(left + 5, 21), Qt::white);
        EXPECT_NE(seen.pixelColor(left - 5, 21), Qt::white);
        Click(preview.CloseButton);
        EXPECT_FALSE(preview.IsLoaded());
    });
    Run(1, [](PreviewWindow& preview) { // opens as the last one was fitted
        EXPECT_EQ(preview.View().Fitted(), report::PagesView::Fit::WholePage);
        Click(preview.FitWidthButton);
        EXPECT_EQ(preview.View().Fitted(), report::PagesView::Fit::Width);
    });
}

TEST_F(Preview, SavesThePdfUnderTheProposedName)
{
    QStringList proposed;
    const auto saveAs = [&](const QString& name) {
        return [&proposed, name](PreviewWindow& preview) {
            preview.AskPdfPath = [&proposed, name](PreviewWindow&, const QString& path) {
                proposed << path;
                return name;
            };
            Press(PagesOf(preview), Qt::Key_S, Qt::ControlModifier);
            EXPECT_EQ(preview.OpenFolder.isVisible(), !name.isEmpty());
            Click(preview.SaveButton);
        };
    };
    desk.ExpectMessage("« actes.pdf » existe déjà.\nLe remplacer ?", forms::Icon::Question, "ZEP Lumo",
                       forms::Answer::Yes);
    Run(40, saveAs(practice.Folder() + "/actes"));
    EXPECT_EQ(QFileInfo(proposed.value(0)).fileName(), "Actes réglés 17-06-2008.pdf");
    EXPECT_EQ(proposed.value(1), practice.Folder() + "/Actes réglés 17-06-2008.pdf") << "beside the one before";
    const QList<tests::PdfPage> pages = tests::ReadPdf(practice.Folder() + "/actes.pdf");
    ASSERT_EQ(pages.size(), 2);
    EXPECT_TRUE(pages[0].text.contains("O'BRIEN-MARTIN Jean-Frédéric Radiologie"));
    EXPECT_TRUE(pages[1].text.contains("Imprimé le 17/06/2008 Page 2 / 2")) << qPrintable(pages[1].text);
    EXPECT_EQ(pages[0].points, QSizeF(595, 842));

    Report1.ProposedName = "../Caisse du 17/06";
    Run(0, saveAs(""));
    EXPECT_EQ(QFileInfo(proposed.last()).fileName(), "..-Caisse du 17-06.pdf");
}

TEST_F(Preview, ReplacesAnExistingFileOnlyWhenTheUserSaysSo)
{
    const QString existing = practice.WriteTemplate("hier", "caisse.pdf");
    ASSERT_TRUE(QFile::setPermissions(existing, QFile::Permissions(0x6644))); // readable by all
    QStringList proposals;
    Run(1, [&](PreviewWindow& preview) {
        QStringList answers = {"/caisse", "/autre.PDF", "/caisse"};
        preview.AskPdfPath = [&](PreviewWindow&, const QString& path) {
            proposals << QFileInfo(path).fileName();
            return practice.Folder() + answers.takeFirst();
        };
        for (const auto answer : {forms::Answer::No, forms::Answer::Yes}) {
            desk.ExpectMessage("« caisse.pdf » existe déjà.\nLe remplacer ?", forms::Icon::Question, "ZEP Lumo",
                               answer);
            Click(preview.SaveButton);
            desk.Verify();
            EXPECT_EQ(practice.Read("caisse.pdf") == "hier", answer == forms::Answer::No);
            EXPECT_TRUE(practice.Read("autre.PDF").startsWith("%PDF")); // a new file: nothing to ask
        }
    });
    EXPECT_EQ(proposals.value(1), "caisse.pdf"); // asked again, starting from the refused name
    NEEDS_UNIX("mode bits");
    for (const char* name : {"caisse.pdf", "autre.PDF"}) {
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        EXPECT_TRUE(practice.Read(name).startsWith("%PDF")) << name;
        EXPECT_FALSE(QFile::permissions(practice.Folder() + "/" + name) & others) << name;
    }
}

TEST_F(Preview, AFullDiskLeavesNoPartialPdfAndKeepsTheOldOne)
{
    NEEDS_UNIX("limit of the size of files");
    const QString path = practice.WriteTemplate("hier", "etat.pdf");
    QStringList before;
    Run(400, [&](PreviewWindow& preview) {
        before = Files();
        for (const unsigned bytes : {0, 10, 5'000, 40'000}) {
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
                  {13, 99, {"13", "14"}},
                  {1, 1, {"1"}},
                  {50, 60, {"14"}},
                  {0, 0, {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14"}}};
    Report1.ReportFileName = practice.Template("ZEP_DTAL.RPT");
    Run(400, [&](PreviewWindow& preview) {
        ASSERT_EQ(preview.Pages().PageCount(), 14);
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
    QWidget caller;
    caller.show();
    caller.activateWindow();
    support::ProcessEvents();
    QTimer::singleShot(0, qApp, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() != "LongReading")
                continue;
            wasOffered = window->isVisible() && window->isModal();
            EXPECT_EQ(window->windowHandle()->transientParent(), caller.windowHandle()) << "it stays before its caller";
            EXPECT_EQ(AccessibilityFaults(*window), QStringList());
            QTest::keyClick(window, Qt::Key_Escape);
        }
    });
    EXPECT_EQ(Report1.PrintReport(), 1); // without a message
    EXPECT_TRUE(wasOffered);
}

TEST_F(Preview, TemplateErrorsShowAMessageOnly)
{
    const QString column = "[[column]]\nheading = \"N°\"\nfield = \"num\"\nwidth_mm = 20\n";
    const QString select = "[rows]\nselect = \"select num from Rien\"\n";
    Report1.ReportFileName = practice.WriteTemplate(("title = \"Essai\"\n" + select + column).toUtf8(), "ZEP_R9.RPT");
    desk.ExpectMessage("ZEP_R9.RPT, ligne 3 : table inconnue « Rien »", forms::Icon::Critical, "ZEP Lumo");
    EXPECT_EQ(Report1.PrintReport(), 1);

    QStringList lines;
    for (int line = 1; line <= 8; ++line)
        lines << QString("ZEP_R9.RPT, ligne %1 : « a%1 » est inconnu dans le modèle").arg(line);
    QString mistakes;
    for (int line = 1; line <= 10; ++line) {
        mistakes += QString("a%1 = 1\n").arg(line);
        if (line < 9)
            continue;
        practice.WriteTemplate((mistakes + QString(select).replace("Rien", "Prov") + column).toUtf8(), "ZEP_R9.RPT");
        desk.ExpectMessage(lines.join('\n') + (line == 9 ? "\net une autre erreur" : "\net 2 autres erreurs"),
                           forms::Icon::Critical, "ZEP Lumo");
        EXPECT_EQ(Report1.PrintReport(), 1);
    }
    Report1.Destination = 1;
    EXPECT_EQ(ErrorOf([&] { Report1.PrintReport(); }), Error::InvalidProperty);
    EXPECT_EQ(ErrorOf([&] { Report1.DataFiles(1); }), Error::IndexOutOfRange);
}

} // namespace
