#pragma once

#include "platform/dao/Recordset.h"

#include <QString>
#include <functional>
#include <utility>
#include <vector>

namespace report {
class Report;
}

namespace core {

/// Writes the rows of a report into its scratch table.
class ScratchRows {
public:
    using Cell = std::pair<const char*, dao::Value>;

    explicit ScratchRows(dao::Recordset scratch) : table(std::move(scratch)) {}

    /// Adds one row; fields not named stay empty.
    void Add(const std::vector<Cell>& cells);

private:
    dao::Recordset table;
};

/// Describes one report; declared by the screen that prints, run by RunPrintStep.
struct PrintStep {
    /// A text for a field of `textes`; other fields keep the texts of the previous report.
    struct Heading {
        const char* field;
        QString text;
    };

    QString reportName;                 ///< file name of the template
    std::vector<Heading> headings = {}; ///< besides the letterhead
    const char* scratchTable = nullptr; ///< "Prov" or "RCP2"; null if the report needs no rows
    std::function<void(ScratchRows&)> fillRows = {};
    QString selectionFormula = {};
    QString refusalTitle = "ZEP Lumo"; ///< title of the message about a missing template
    QString folder = {};               ///< of the template; empty is the data folder
    QString proposedName = {};         ///< PDF name without extension; empty is the template's title and the print date
};

/// Prepares a report and shows it in the preview: writes letterhead and headings into `textes` and the rows into the
/// cleared scratch table, then runs the template.
///
/// A missing template is reported ("Fichier ZEP_R1.RPT absent") and changes nothing. The rows are written in one
/// transaction: if filling fails, the scratch table keeps its former rows and the error is passed on. The rows remain
/// for inspection until the next report. Returns when the preview is closed.
void RunPrintStep(report::Report& Report1, const PrintStep& step);

/// Clears and fills a scratch table in one transaction, visible to other connections on return. Part of RunPrintStep.
void RefillScratchTable(const QString& table, const std::function<void(ScratchRows&)>& fillRows);

/// Rows of one key each, in list order; the template joins the rest.
std::function<void(ScratchRows&)> KeyRows(const dao::KeyList& keys);

} // namespace core
