#include "platform/report/PreviewWindow.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/forms/KeyFilters.h"
#include "platform/pages/PageLayout.h"
#include "platform/paper/PagePainter.h"
#include "platform/paper/PdfFile.h"
#include "platform/report/AskPdfPath.h"
#include "platform/report/PagesView.h"
#include "platform/report/PrintPages.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>
#include <QUrl>
#include <cmath>

namespace report {
namespace {

/// How the next preview opens: the user's last choice.
PagesView::Fit& LastFit()
{
    static PagesView::Fit fit = PagesView::Fit::Width;
    return fit;
}

constexpr double ZoomSteps[] = {0.25, 0.5, 0.75, 1, 1.25, 1.5, 2, 3, 4};

QString WithPdfEnding(const QString& path)
{
    return QFileInfo(path).suffix().compare("pdf", Qt::CaseInsensitive) == 0 ? path : path + ".pdf";
}

bool AskPrinterInDialog(PreviewWindow& preview, QPrinter& printer)
{
    QPrintDialog dialog(&printer, &preview);
    dialog.setObjectName(QStringLiteral("PrintDialog"));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, preview.Pages().PageCount());
    return dialog.exec() == QDialog::Accepted;
}

} // namespace

PreviewWindow::PreviewWindow(std::unique_ptr<pages::PageLayout> report, const QString& proposedName,
                             const QString& title)
    : Form("Preview", "Aperçu - " + report->Design().title), AskPdfPath(report::AskPdfPath),
      AskPrinter(AskPrinterInDialog), layout(std::move(report)), painter(std::make_unique<paper::PagePainter>()),
      view(std::make_unique<PagesView>(*layout)), pdfName(proposedName), messageTitle(title)
{
    BuildForm();
    ConnectHandlers();
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::ConnectHandlers()
{
    using forms::On;
    using forms::Picture;
    On(PrintButton, &Picture::clicked, *this, [this] { AskAndPrint(); });
    On(SaveButton, &Picture::clicked, *this, [this] { AskAndSave(); });
    On(FirstButton, &Picture::clicked, *this, [this] { view->ShowPage(0); });
    On(PreviousButton, &Picture::clicked, *this, [this] { MoveBy(-1); });
    On(NextButton, &Picture::clicked, *this, [this] { MoveBy(1); });
    On(LastButton, &Picture::clicked, *this, [this] { view->ShowPage(layout->PageCount() - 1); });
    On(ZoomOutButton, &Picture::clicked, *this, [this] { ZoomBy(-1); });
    On(ZoomInButton, &Picture::clicked, *this, [this] { ZoomBy(1); });
    On(FitWidthButton, &Picture::clicked, *this, [this] { FitWidth(); });
    On(FitPageButton, &Picture::clicked, *this, [this] { FitPage(); });
    On(CloseButton, &Picture::clicked, *this, [this] { Unload(); });
    On(*view, &PagesView::ViewChanged, *this, [this] { ShowState(); });
    PageNumber.KeyPress = [](int& keyCode) { forms::KeyFilterDigits(keyCode); };
    On(PageNumber, &forms::TextBox::Entered, *this, [this] { GoToTypedPage(); });
    On(PageNumber, &forms::TextBox::LostFocus, *this, [this] { ShowState(); });
    On(OpenFolder, &forms::Button::clicked, *this,
       [this] { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(savedPath).absolutePath())); });
}

void PreviewWindow::Form_Load()
{
    view->FitTo(LastFit());
    view->setFocus();
    ShowState();
}

void PreviewWindow::FitWidth()
{
    LastFit() = PagesView::Fit::Width;
    view->FitTo(LastFit());
}

void PreviewWindow::FitPage()
{
    LastFit() = PagesView::Fit::WholePage;
    view->FitTo(LastFit());
}

void PreviewWindow::EscapePressed()
{
    Unload();
}

void PreviewWindow::ShowState()
{
    const int page = view->CurrentPage();
    const bool isFirst = page == 0;
    const bool isLast = page == layout->PageCount() - 1;
    PageNumber.setText(QString::number(page + 1));
    PageCount.setText(QStringLiteral("/ %1").arg(layout->PageCount()));
    ZoomText.setText(QStringLiteral("%1 %").arg(std::lround(view->Zoom() * 100)));
    FirstButton.setEnabled(!isFirst);
    PreviousButton.setEnabled(!isFirst);
    NextButton.setEnabled(!isLast);
    LastButton.setEnabled(!isLast);
    ZoomOutButton.setEnabled(view->Zoom() > PagesView::SmallestZoom);
    ZoomInButton.setEnabled(view->Zoom() < PagesView::LargestZoom);
}

void PreviewWindow::GoToTypedPage()
{
    view->ShowPage(PageNumber.text().toInt() - 1);
    ShowState();
    view->setFocus();
}

void PreviewWindow::MoveBy(int count)
{
    view->ShowPage(view->CurrentPage() + count);
}

void PreviewWindow::ZoomBy(int steps)
{
    const double now = view->Zoom();
    if (steps > 0) {
        const auto* larger = std::ranges::find_if(ZoomSteps, [now](double step) { return step > now * 1.01; });
        view->SetZoom(larger == std::end(ZoomSteps) ? PagesView::LargestZoom : *larger);
        return;
    }
    double smaller = PagesView::SmallestZoom;
    for (const double step : ZoomSteps)
        if (step < now * 0.99)
            smaller = step;
    view->SetZoom(smaller);
}

bool PreviewWindow::RunCommand(int key)
{
    switch (key) {
    case Qt::Key_S:
        return AskAndSave(), true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return ZoomBy(1), true;
    case Qt::Key_Minus:
        return ZoomBy(-1), true;
    case Qt::Key_0:
        return view->SetZoom(1), true;
    case Qt::Key_2:
        return FitWidth(), true;
    case Qt::Key_3:
        return FitPage(), true;
    default:
        return false;
    }
}

bool PreviewWindow::MoveByKey(int key)
{
    switch (key) {
    case Qt::Key_PageUp:
        return MoveBy(-1), true;
    case Qt::Key_PageDown:
        return MoveBy(1), true;
    case Qt::Key_Home:
        return view->ShowPage(0), true;
    case Qt::Key_End:
        return view->ShowPage(layout->PageCount() - 1), true;
    default:
        return false;
    }
}

void PreviewWindow::keyPressEvent(QKeyEvent* event)
{
    const bool withControl = event->modifiers().testFlag(Qt::ControlModifier);
    bool handled = false;
    forms::Guarded([&] { handled = withControl ? RunCommand(event->key()) : MoveByKey(event->key()); });
    if (!handled)
        Form::keyPressEvent(event);
}

void PreviewWindow::AskAndSave()
{
    const QString folder = savedPath.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                                               : QFileInfo(savedPath).absolutePath();
    QString path = QDir(folder).filePath(pdfName + ".pdf");
    do {
        path = AskPdfPath(*this, path);
        if (path.isEmpty())
            return;
        path = WithPdfEnding(path);
    } while (!MayReplace(path));
    SavePdf(path);
}

bool PreviewWindow::MayReplace(const QString& path) const
{
    return !QFileInfo(path).isFile() ||
           forms::MsgBox(QStringLiteral("« %1 » existe déjà.\nLe remplacer ?").arg(QFileInfo(path).fileName()),
                         forms::Icon::Question, messageTitle, forms::Buttons::YesNo) == forms::Answer::Yes;
}

bool PreviewWindow::SavePdf(const QString& path)
{
    try {
        const forms::Hourglass pointer;
        paper::WritePdf(*layout, *painter, path);
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("Le PDF n'a pas été enregistré : %1.\n%2")
                          .arg(error.Description(), QDir::toNativeSeparators(path)),
                      forms::Icon::Critical, messageTitle);
        return false;
    }
    savedPath = path;
    SavedText.setText("PDF enregistré\u00A0: " + QDir::toNativeSeparators(path));
    SavedPanel.show();
    return true;
}

void PreviewWindow::AskAndPrint()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(layout->Design().paper.width() > layout->Design().paper.height()
                                   ? QPageLayout::Landscape
                                   : QPageLayout::Portrait);
    if (AskPrinter(*this, printer))
        Print(printer);
}

bool PreviewWindow::Print(QPrinter& printer)
{
    try {
        const forms::Hourglass pointer;
        PrintPages(*layout, *painter, printer);
        return true;
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("L'état n'a pas été imprimé : %1.").arg(error.Description()),
                      forms::Icon::Critical, messageTitle);
        return false;
    }
}

} // namespace report
