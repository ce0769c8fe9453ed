#include "core/printing.h"

#include "core/configuration.h"
#include "core/globals.h"
#include "data/ReportTemplates.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Form.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/report/Report.h"

namespace core {

namespace {

QString TemplatePath(const PrintStep& step)
{
    return host::PathIn(step.folder.isEmpty() ? DataFolder : step.folder, ReportName);
}

void WriteHeadings(const std::vector<PrintStep::Heading>& headings)
{
    TextesTable.LockEdits(true);
    TextesTable.Edit();
    for (const auto& [field, text] : headings)
        TextesTable[field] = text;
    TextesTable.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
}

} // namespace

void ScratchRows::Add(const std::vector<Cell>& cells)
{
    table.AddNew();
    for (const auto& [field, value] : cells)
        table[field] = value;
    table.Update();
}

void RefillScratchTable(const QString& table, const std::function<void(ScratchRows&)>& fillRows)
{
    dao::Transaction refill(TheDatabase);
    TheDatabase.Execute("Delete * from " + table, dao::FailOnError);
    ScratchRows rows(TheDatabase.OpenRecordset(table));
    fillRows(rows);
    refill.Commit();
    dao::DBEngine.Idle(dao::RefreshCache); // the template reads through its own connection
}

void RunPrintStep(report::Report& Report1, const PrintStep& step)
{
    ReportName = step.reportName;
    if (!host::FileExists(TemplatePath(step), 0)) {
        forms::MsgBox("Fichier " + ReportName + " absent", forms::Icon::Information, step.refusalTitle);
        return;
    }
    {
        const forms::Hourglass pointer;
        WriteTextesFromConfig();
        WriteHeadings(step.headings);
        if (step.scratchTable != nullptr)
            RefillScratchTable(QLatin1String(step.scratchTable), step.fillRows);
    }
    Report1.DataFiles(0) = DatabasePath;
    Report1.Destination = 0;
    Report1.SelectionFormula = step.selectionFormula;
    Report1.TextSelect = data::ReportTextSelect;
    Report1.TextNames = data::ReportTextNames;
    Report1.ReportFileName = TemplatePath(step);
    Report1.PrintDate = host::Today();
    Report1.ProposedName = step.proposedName;
    Report1.MessageTitle = "ZEP Lumo";
    Report1.PrintReport();
}

std::function<void(ScratchRows&)> KeyRows(const dao::KeyList& keys)
{
    return [keys](ScratchRows& rows) {
        for (const dao::Key key : keys)
            rows.Add({{"num", key}});
    };
}

} // namespace core
