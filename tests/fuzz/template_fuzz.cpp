// Arbitrary bytes as a template: either faults, or a template whose pages can be laid out. Corpus: corpus/template and
// the templates of the program.
#include "data/ReportTemplates.h"
#include "fuzz/Fuzz.h"
#include "platform/pages/PageLayout.h"

#include <algorithm>
#include <cmath>

using fuzz::Require;

namespace {

/// Rows with all kinds of values for the template's fields.
pages::Content RowsFor(const pages::Template& design, int rows)
{
    static const dao::Value values[] = {{}, 7, -12.5, "BENALI", "{ch4}", "2008-06-17", 1e300, "\u0627\n\t{page}"};
    pages::Content content;
    for (const pages::Column& column : design.columns)
        content.rows.fields << column.field;
    if (design.chart) {
        content.rows.fields << design.chart->labelField;
        for (const pages::ChartDesign::Series& series : design.chart->series)
            content.rows.fields << series.field;
    }
    if (design.group) {
        content.rows.fields << design.group->field;
        for (const QString& text : {design.group->heading, design.group->subtotal})
            pages::FillPlaceholders(text, [&](const QString& name) { return content.rows.fields << name, QString(); });
    }
    for (std::size_t cell = 0;
         cell < static_cast<std::size_t>(content.rows.fields.size()) * static_cast<std::size_t>(rows); ++cell)
        content.rows.cells.push_back(values[cell % std::size(values)]);
    content.texts.insert("ch4", "Mouvements de fonds du  Mar 17/06/2008");
    return content;
}

void CheckFaults(const QByteArray& text, const QList<pages::Fault>& faults)
{
    const auto lines = text.count('\n') + 1;
    for (const pages::Fault& fault : faults) {
        Require(fault.line >= 0 && fault.line <= lines, "a fault is on a line of the file", fault.reason);
        Require(!fault.reason.isEmpty(), "a fault has a reason");
    }
    const auto byLine = [](const pages::Fault& left, const pages::Fault& right) { return left.line < right.line; };
    Require(std::is_sorted(faults.begin(), faults.end(), byLine), "faults are in the order of their lines");
}

/// Everything on the page is between its left and right edge.
void CheckPage(const pages::Page& page)
{
    constexpr double tolerance = 0.01;
    Require(!page.paper.isEmpty(), "a page has a size");
    const auto check = [&](const QRectF& box, const QString& text) {
        Require(std::isfinite(box.top()) && std::isfinite(box.height()), "a box has a position", text);
        Require(box.left() >= -tolerance && box.right() <= page.paper.width() + tolerance, "a box is on the paper",
                text);
        Require(box.width() >= -tolerance && box.height() >= 0, "a box isn't turned over", text);
    };
    for (const pages::Run& run : page.runs) {
        check(run.box, run.text);
        Require(!run.text.contains(QChar('\n')), "a run is one line", run.text);
    }
    for (const QRectF& shade : page.shades)
        check(shade, "shade");
    for (const pages::Shape& shape : page.shapes)
        for (const QPointF& point : shape.points)
            check({point, QSizeF(0, 0)}, "shape");
}

/// Lays out all pages for this many rows; returns the number of pages.
int CheckPages(const pages::Template& design, int rows)
{
    pages::Content content = RowsFor(design, rows);
    Require(pages::FindFields(design, content).isEmpty(), "the rows have all fields of the template");
    const pages::PageLayout layout(design, std::move(content));
    Require(layout.PageCount() >= 1, "a report has a page");
    for (int page = 0; page < layout.PageCount(); ++page)
        CheckPage(layout.MakePage(page));
    return layout.PageCount();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    const pages::ParsedTemplate read = pages::ReadTemplate(text, data::ReportTextNames);
    CheckFaults(text, read.faults);
    if (!read.faults.isEmpty())
        return 0;
    constexpr int many = 120;
    const int pagesWithoutRows = CheckPages(read.design, 0);
    Require(CheckPages(read.design, many) >= pagesWithoutRows, "more rows take no fewer pages");
    return 0;
}
