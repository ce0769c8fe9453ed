#include "platform/report/PageOutput.h"
#include "platform/report/PageText.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/Report.h"
#include "platform/report/ReportPractice.h"
#include "support/Accessibility.h"
#include "support/ScriptedDesk.h"
#include "support/User.h"

#include <QDir>
#include <QFile>
#include <QPrinter>
#include <QScrollBar>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

using report::PreviewWindow;
using tests::ReportPractice;

/// A report of several pages on its way to the preview.
class Preview : public testing::Test {
protected:
    Preview()
    {
        Report1.DataFiles(0) = practice.Path();
        Report1.ReportFileName = practice.Template("ZEP_R2.RPT");
        Report1.PrintDate = QDate(2008, 6, 17);
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

TEST_F(Preview, IsDrivenByTheKeyboardAlone)
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
        EXPECT_TRUE(preview.LastButton.isEnabled());

        Type(preview.PageNumber, "x7");
        Press(preview.PageNumber, Qt::Key_Return);
        EXPECT_EQ(preview.View().CurrentPage(), 6);
        EXPECT_TRUE(preview.View().accessibleName().contains("page 7 sur 10"));
        EXPECT_TRUE(preview.View().accessibleDescription().contains("O'BRIEN-MARTIN"));
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
            support::Settle();
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
    QFile pdf(practice.Folder() + "/actes.pdf");
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    const QByteArray bytes = pdf.readAll();
    EXPECT_TRUE(bytes.startsWith("%PDF") && bytes.trimmed().endsWith("%%EOF"));
    EXPECT_EQ(bytes.count("/Type /Page\n"), 2);

    Report1.ProposedName = "../Caisse du 17/06";
    Run(0, [&](PreviewWindow& preview) {
        preview.AskPdfPath = [&](PreviewWindow&, const QString& path) {
            return proposed = QFileInfo(path).fileName(), QString();
        };
        Click(preview.SaveButton);
    });
    EXPECT_EQ(proposed, "..-Caisse du 17-06.pdf");
}

/// No file of the process may grow beyond `bytes` while it lives: what a full disk does.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before{};
};

TEST_F(Preview, AFullDiskLeavesNoHalfPdfAndTheFormerOneWhole)
{
    const QString path = practice.WriteTemplate("hier", "etat.pdf");
    QStringList before;
    Run(400, [&](PreviewWindow& preview) {
        before = Files();
        for (const rlim_t bytes : {0, 10, 5'000, 40'000}) {
            desk.ExpectMessage("Le PDF n'a pas été enregistré : Disque plein.\n" + QDir::toNativeSeparators(path),
                               forms::Icon::Critical, "ZEP Lumo");
            const FullDisk disk(bytes);
            EXPECT_FALSE(preview.SavePdf(path));
        }
        EXPECT_FALSE(preview.SavedPanel.isVisible());
        desk.ExpectMessage("Le PDF n'a pas été enregistré : Chemin d'accès introuvable.\n/nulle/part.pdf",
                           forms::Icon::Critical, "ZEP Lumo");
        EXPECT_FALSE(preview.SavePdf("/nulle/part.pdf"));
        EXPECT_EQ(Files(), before);
    });
    QFile former(path);
    ASSERT_TRUE(former.open(QIODevice::ReadOnly));
    EXPECT_EQ(former.readAll(), "hier");
}

TEST_F(Preview, PrintsTheChosenPagesOnTheTemplatesPaper)
{
    const QString path = practice.Folder() + "/papier.pdf";
    Report1.ReportFileName = practice.Template("ZEP_DTAL.RPT");
    Run(400, [&](PreviewWindow& preview) {
        preview.AskPrinter = [&](PreviewWindow&, QPrinter& printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(path);
            printer.setPrintRange(QPrinter::PageRange);
            printer.setFromTo(2, 4);
            return true;
        };
        Press(PagesOf(preview), Qt::Key_P, Qt::ControlModifier);
    });
    QFile pdf(path);
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    const QByteArray bytes = pdf.readAll();
    EXPECT_EQ(bytes.count("/Type /Page\n"), 3);
    EXPECT_TRUE(bytes.contains("/MediaBox [0 0 842.000000 595.000000]"))
        << bytes.mid(bytes.indexOf("/MediaBox"), 40).constData();
}

TEST_F(Preview, ATemplateWithAMistakeIsAMessageAndNoWindow)
{
    Report1.ReportFileName = practice.WriteTemplate("title = \"Essai\"\n[rows]\nselect = \"select num from Rien\"\n"
                                                    "[[column]]\nheading = \"N°\"\nfield = \"num\"\nwidth_mm = 20\n",
                                                    "ZEP_R9.RPT");
    desk.ExpectMessage("ZEP_R9.RPT, ligne 3 : table inconnue « Rien »", forms::Icon::Critical, "ZEP Lumo");
    EXPECT_EQ(Report1.PrintReport(), 1);
    Report1.Destination = 1;
    EXPECT_THROW(Report1.PrintReport(), basic::RuntimeError);
    EXPECT_THROW(Report1.DataFiles(1), basic::RuntimeError);
}

} // namespace
