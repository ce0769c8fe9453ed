#include "platform/report/PrintPages.h"

#include "platform/basic/RuntimeError.h"
#include "platform/pages/PageLayout.h"
#include "platform/pages/PageMeasures.h"
#include "platform/paper/PagePainter.h"
#include "platform/paper/Sheet.h"

#include <QPainter>
#include <QPrinter>
#include <algorithm>

namespace report {

void PrintPages(const pages::PageLayout& layout, paper::PagePainter& painter, QPrinter& printer)
{
    printer.setPageLayout(paper::SheetOf(layout.Design()));
    printer.setFullPage(true);
    printer.setDocName(layout.Design().title);
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
        painter.Paint(onPaper, layout.MakePage(page), printer.resolution() / pages::measures::PerInch);
    }
    if (!onPaper.end())
        throw basic::RuntimeError(basic::Error::PrinterFailure);
}

} // namespace report
