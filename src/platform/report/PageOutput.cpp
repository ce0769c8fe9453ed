#include "platform/report/PageOutput.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/OwnerOnly.h"
#include "platform/report/PageLayout.h"
#include "platform/report/PageMeasures.h"
#include "platform/report/PagePainter.h"

#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <algorithm>

namespace report {
namespace {

constexpr int PdfResolution = 1200;

/// The whole sheet, lying as the template has it.
QPageLayout SheetOf(const Template& report)
{
    const bool lies = report.paper.width() > report.paper.height();
    const QSizeF upright = lies ? report.paper.transposed() : report.paper;
    QPageLayout sheet(QPageSize(upright, QPageSize::Millimeter, {}, QPageSize::FuzzyMatch),
                      lies ? QPageLayout::Landscape : QPageLayout::Portrait, {});
    sheet.setMode(QPageLayout::FullPageMode);
    return sheet;
}

/// Opens a file beside `file`'s path that only its owner can read; committing renames it over that path.
void OpenForOwner(QSaveFile& file)
{
    const dao::OwnerOnly made;
    if (file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return;
    const QFileInfo folder(QFileInfo(file.fileName()).path());
    if (!folder.isDir())
        throw basic::RuntimeError(basic::Error::PathNotFound);
    throw basic::RuntimeError(file.error() == QFileDevice::ResourceError ? basic::Error::DiskFull
                                                                         : basic::Error::PermissionDenied);
}

} // namespace

void WritePdf(const PageLayout& layout, PagePainter& painter, const QString& path)
{
    QSaveFile file(path);
    OpenForOwner(file);
    {
        QPdfWriter writer(&file);
        writer.setResolution(PdfResolution);
        writer.setPageLayout(SheetOf(layout.Printed()));
        writer.setTitle(layout.Printed().title);
        writer.setCreator(QStringLiteral("ZEP Lumo"));
        QPainter onPaper(&writer);
        for (int page = 0; page < layout.PageCount() && file.error() == QFileDevice::NoError; ++page) {
            if (page > 0)
                writer.newPage();
            painter.Paint(onPaper, layout.MakePage(page), PdfResolution / measures::PerInch);
        }
    }
    if (!file.commit()) // written, then refused: the disk or a quota is full
        throw basic::RuntimeError(basic::Error::DiskFull);
}

void PrintPages(const PageLayout& layout, PagePainter& painter, QPrinter& printer)
{
    printer.setPageLayout(SheetOf(layout.Printed()));
    printer.setFullPage(true);
    printer.setDocName(layout.Printed().title);
    const bool wholeReport = printer.printRange() != QPrinter::PageRange || printer.fromPage() < 1;
    const int lastPage = layout.PageCount() - 1;
    const int first = wholeReport ? 0 : std::min(printer.fromPage() - 1, lastPage);
    const int last = wholeReport ? lastPage : std::min(printer.toPage() - 1, lastPage);

    QPainter onPaper;
    if (!onPaper.begin(&printer))
        throw basic::RuntimeError(basic::Error::PrinterFailure);
    for (int page = first; page <= last; ++page) {
        if (page > first && !printer.newPage())
            throw basic::RuntimeError(basic::Error::PrinterFailure);
        painter.Paint(onPaper, layout.MakePage(page), printer.resolution() / measures::PerInch);
    }
    if (!onPaper.end())
        throw basic::RuntimeError(basic::Error::PrinterFailure);
}

} // namespace report
