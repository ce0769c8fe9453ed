// Any bytes as a template: reading ends with faults or with a template whose pages can be made. Its corpus is
// corpus/template here and the templates of the program.
#include "fuzz/Fuzz.h"
#include "platform/report/PageLayout.h"

#include <algorithm>
#include <cmath>

using fuzz::Require;

namespace {

/// Rows with all kinds of values under the fields that the template asks for.
report::Content RowsFor(const report::Template& report, int rows)
{
    static const dao::Value values[] = {{}, 7, -12.5, "BENALI", "{ch4}", "2008-06-17", 1e300, "\u0627\n\t{page}"};
    report::Content content;
    for (const report::Column& column : report.columns)
        content.rows.fields << column.field;
    if (report.group)
        content.rows.fields << report.group->field;
    for (std::size_t cell = 0; cell < std::size_t(content.rows.fields.size()) * std::size_t(rows); ++cell)
        content.rows.cells.push_back(values[cell % std::size(values)]);
    content.texts.insert("ch4", "Mouvements de fonds du  Mar 17/06/2008");
    return content;
}

void CheckFaults(const QByteArray& text, const QList<report::Fault>& faults)
{
    const auto lines = text.count('\n') + 1;
    for (const report::Fault& fault : faults) {
        Require(fault.line >= 0 && fault.line <= lines, "a fault stands on a line of the file", fault.reason);
        Require(!fault.reason.isEmpty(), "a fault tells its reason");
    }
    const auto byLine = [](const report::Fault& left, const report::Fault& right) { return left.line < right.line; };
    Require(std::is_sorted(faults.begin(), faults.end(), byLine), "faults stand in the order of their lines");
}

/// Everything on the page lies between its left and right edge at a place that is a number.
void CheckPage(const report::Page& page)
{
    constexpr double tolerance = 0.01;
    Require(!page.paper.isEmpty(), "a page has a size");
    const auto check = [&](const QRectF& box, const QString& text) {
        Require(std::isfinite(box.top()) && std::isfinite(box.height()), "a box has a place", text);
        Require(box.left() >= -tolerance && box.right() <= page.paper.width() + tolerance, "a box is on the paper",
                text);
        Require(box.width() >= -tolerance && box.height() >= 0, "a box isn't turned over", text);
    };
    for (const report::Run& run : page.runs) {
        check(run.box, run.text);
        Require(!run.text.contains(QChar('\n')), "a run is one line", run.text);
    }
    for (const QRectF& shade : page.shades)
        check(shade, "shade");
}

/// Makes all pages over so many rows; returns the number of pages.
int CheckPages(const report::Template& report, int rows)
{
    report::Content content = RowsFor(report, rows);
    Require(report::FindFields(report, content).isEmpty(), "the rows have all fields of the template");
    const report::PageLayout layout(report, std::move(content));
    Require(layout.PageCount() >= 1, "a report has a page");
    for (int page = 0; page < layout.PageCount(); ++page)
        CheckPage(layout.MakePage(page));
    return layout.PageCount();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(bytes), qsizetype(size));
    const report::TemplateText read = report::ReadTemplate(text);
    CheckFaults(text, read.faults);
    if (!read.faults.isEmpty())
        return 0;
    constexpr int many = 120;
    const int pagesWithoutRows = CheckPages(read.report, 0);
    Require(CheckPages(read.report, many) >= pagesWithoutRows, "more rows take no fewer pages");
    return 0;
}
