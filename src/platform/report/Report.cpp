#include "platform/report/Report.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Form.h"
#include "platform/report/PreviewWindow.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace report {
namespace {

constexpr int MostFaultsTold = 8;

/// The message that tells what is wrong with a template: file, line and reason of each mistake.
QString MessageOf(const QString& path, const QList<Fault>& faults)
{
    const QString file = QFileInfo(path).fileName();
    QStringList lines;
    for (const Fault& fault : faults.first(std::min<qsizetype>(faults.size(), MostFaultsTold)))
        lines << (fault.line > 0 ? QStringLiteral("%1, ligne %2 : %3").arg(file).arg(fault.line).arg(fault.reason)
                                 : QStringLiteral("%1 : %2").arg(file, fault.reason));
    if (faults.size() > MostFaultsTold)
        lines << QStringLiteral("et %1 autres erreurs").arg(faults.size() - MostFaultsTold);
    return lines.join(u'\n');
}

int Refuse(const QString& path, const QList<Fault>& faults)
{
    forms::MsgBox(MessageOf(path, faults), forms::Icon::Critical, "ZEP Lumo");
    return 1;
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

    TemplateText read;
    ReadContentResult printed;
    {
        const forms::Hourglass pointer;
        read = ReadTemplateFile(ReportFileName);
        if (read.faults.isEmpty())
            printed = ReadContent(read.report, dataFile, SelectionFormula);
    }
    if (!read.faults.isEmpty() || !printed.faults.isEmpty())
        return Refuse(ReportFileName, read.faults + printed.faults);

    printed.content.printDate = PrintDate.isValid() ? basic::DateText(PrintDate) : QString();
    PreviewWindow preview(read.report, std::move(printed.content), PdfName(read.report.title));
    forms::TheDesk().ShowModal(preview);
    return 0;
}

QString Report::PdfName(const QString& title) const
{
    static const QRegularExpression unfit(R"([\\/:*?"<>|[:cntrl:]])");
    QString name = ProposedName;
    if (name.isEmpty())
        name = PrintDate.isValid() ? title + " " + PrintDate.toString("dd-MM-yyyy") : title;
    return name.replace(unfit, "-").trimmed();
}

} // namespace report
