// Any bytes as a template: reading ends with faults or with a template whose pages can be made. Its corpus is
// corpus/template here and the templates of the program.
#include "platform/report/PageLayout.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr int Rows = 120;

/// Rows with all kinds of values under the fields that the template asks for.
report::Content RowsFor(const report::Template& report)
{
    static const dao::Value values[] = {{}, 7, -12.5, "BENALI", "{ch4}", "2008-06-17", 1e300};
    report::Content content;
    for (const report::Column& column : report.columns)
        content.rows.fields << column.field;
    if (report.group)
        content.rows.fields << report.group->field;
    for (std::size_t cell = 0; cell < std::size_t(content.rows.fields.size()) * Rows; ++cell)
        content.rows.cells.push_back(values[cell % std::size(values)]);
    content.texts.insert("ch4", "Mouvements de fonds du  Mar 17/06/2008");
    return content;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(bytes), qsizetype(size));
    report::TemplateText read = report::ReadTemplate(text);
    if (!read.faults.isEmpty())
        return 0;
    report::Content content = RowsFor(read.report);
    if (!report::FindFields(read.report, content).isEmpty())
        std::abort(); // the rows have all its fields
    const report::PageLayout layout(read.report, std::move(content));
    for (int page = 0; page < layout.PageCount(); ++page)
        if (layout.MakePage(page).paper.isEmpty())
            std::abort();
    return 0;
}
