// practice-preview DATABASE TEMPLATE PDF: prints a report into a PDF with the current texts and rows of the database,
// without a window system. Run by `practice preview`, which gives the PDF its name.

#include "data/ReportTemplates.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Console.h"
#include "platform/host/Host.h"
#include "platform/pages/PageLayout.h"
#include "platform/pages/TemplateCheck.h"
#include "platform/paper/OwnFonts.h"
#include "platform/paper/PagePainter.h"
#include "platform/paper/PdfFile.h"
#include "practice/commands/Streams.h"

#include <QGuiApplication>
#include <QLoggingCategory>

using practice::Done;
using practice::Misused;
using practice::Refused;

namespace {

/// The selection formula of the planning for its last day with an appointment.
QString LastDayOfPlanning(const QString& database)
{
    const dao::RowTable day =
        dao::ReadOnlyQuery(database).Read("select strftime('{Plani.date} = date(%Y,%m,%d)', max(date)) as formula "
                                          "from Plani",
                                          {}, {.rows = 1});
    return day.RowCount() == 1 && !day.Cell(0, 0).IsNull() ? day.Cell(0, 0).Text() : QString();
}

int PrintFaults(const QString& file, const QList<pages::Fault>& faults, QTextStream& errors)
{
    for (const pages::Fault& fault : faults)
        errors << pages::FaultText(file, fault) << "\n";
    return Refused;
}

int WriteReport(const QString& database, const QString& file, const QString& pdf, const practice::Streams& streams)
{
    const pages::ParsedTemplate parsed = pages::ReadTemplateFile(file, data::ReportTextNames);
    if (!parsed.faults.isEmpty())
        return PrintFaults(file, parsed.faults, streams.errors);
    const bool selects = parsed.design.select.contains(pages::SelectionPlaceholder);
    pages::ReadContentResult read =
        pages::ReadContent(parsed.design, {database, data::ReportTextSelect, data::ReportTextNames,
                                           selects ? LastDayOfPlanning(database) : QString()});
    if (!read.faults.isEmpty())
        return PrintFaults(file, read.faults, streams.errors);

    read.content.printDate = basic::DateText(host::Today());
    const pages::PageLayout layout(parsed.design, std::move(read.content));
    paper::PagePainter painter;
    paper::WritePdf(layout, painter, pdf);
    streams.output << QString("%1 page%2, %3 ligne%4\n")
                          .arg(layout.PageCount())
                          .arg(layout.PageCount() > 1 ? "s" : "")
                          .arg(layout.Data().rows.RowCount())
                          .arg(layout.Data().rows.RowCount() > 1 ? "s" : "");
    return Done;
}

} // namespace

int main(int argc, char** argv)
{
    host::DrawWithoutDisplay();
    QLoggingCategory::setFilterRules("default.warning=false"); // Qt's, about the missing desktop
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName("ZEP Lumo");
    paper::LoadOwnFonts(QGuiApplication::applicationDirPath());
    QTextStream input(stdin);
    QTextStream output(stdout);
    QTextStream errors(stderr);
    const QStringList given = QGuiApplication::arguments().mid(1);
    if (given.size() != 3)
        return Misused;
    try {
        return WriteReport(given[0], given[1], given[2], {input, output, errors});
    } catch (const basic::RuntimeError& error) {
        errors << "practice : " << error.Description() << "\n";
        return Refused;
    }
}
