#include "platform/report/Report.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Form.h"
#include "platform/pages/PageLayout.h"
#include "platform/pages/TemplateCheck.h"
#include "platform/report/LongReading.h"
#include "platform/report/PreviewWindow.h"

#include <QRegularExpression>

namespace report {
namespace {

constexpr qsizetype MostFaultsShown = 8;

/// File, line and reason of each error; of many, the first ones and the number of the others.
QString MessageOf(const QString& file, const QList<pages::Fault>& faults)
{
    QStringList lines;
    for (const pages::Fault& fault : faults.first(std::min(faults.size(), MostFaultsShown)))
        lines << pages::FaultText(file, fault);
    const qsizetype more = faults.size() - MostFaultsShown;
    if (more > 0)
        lines << (more == 1 ? QStringLiteral("et une autre erreur") : QStringLiteral("et %1 autres erreurs").arg(more));
    return lines.join(u'\n');
}

struct ReadReport {
    pages::Template design;
    pages::Content content;
    QList<pages::Fault> faults;
    bool isGivenUp = false;
};

ReadReport Read(const QString& file, const pages::Source& source, std::chrono::milliseconds patience)
{
    const forms::Hourglass pointer;
    const pages::ParsedTemplate parsed = pages::ReadTemplateFile(file, source.textNames);
    if (!parsed.faults.isEmpty())
        return {{}, {}, parsed.faults};
    LongReading reading(patience);
    pages::ReadContentResult read = pages::ReadContent(parsed.design, source, [&] { return reading.IsGivenUp(); });
    return {parsed.design, std::move(read.content), read.faults, read.isGivenUp};
}

} // namespace

QString& Report::DataFiles(int index)
{
    if (index != 0)
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    return dataFile;
}

int Report::PrintReport()
{
    if (Destination != 0)
        throw basic::RuntimeError(basic::Error::InvalidProperty);

    ReadReport read = Read(ReportFileName, {dataFile, TextSelect, TextNames, SelectionFormula}, Patience);
    if (read.isGivenUp)
        return 1;
    if (!read.faults.isEmpty()) {
        forms::MsgBox(MessageOf(ReportFileName, read.faults), forms::Icon::Critical, MessageTitle);
        return 1;
    }
    read.content.printDate = PrintDate.isValid() ? basic::DateText(PrintDate) : QString();
    const QString pdfName = PdfName(read.design.title);
    PreviewWindow preview(std::make_unique<pages::PageLayout>(std::move(read.design), std::move(read.content)), pdfName,
                          MessageTitle);
    forms::TheDesk().ShowModal(preview);
    return 0;
}

QString Report::PdfName(const QString& title) const
{
    static const QRegularExpression forbidden(R"([\\/:*?"<>|[:cntrl:]])");
    QString name = ProposedName;
    if (name.isEmpty())
        name = PrintDate.isValid() ? title + " " + PrintDate.toString("dd-MM-yyyy") : title;
    return name.replace(forbidden, "-").trimmed();
}

} // namespace report
