#pragma once

#include "platform/dao/Recordset.h"

#include <QString>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

namespace report {
class Report;
}

namespace core {

/// Takes the rows of a report into its scratch table.
class ScratchRows {
public:
    using Cell = std::pair<const char*, dao::Value>;

    explicit ScratchRows(dao::Recordset scratch) : table(std::move(scratch)) {}

    /// Adds one row; the fields that aren't named stay empty.
    void Add(std::initializer_list<Cell> cells);

private:
    dao::Recordset table;
};

/// What one report takes: declared by the screen that prints, run by RunPrintStep.
struct PrintStep {
    /// A text for a field of `textes`; a report leaves the other fields as the report before it wrote them.
    struct Heading {
        const char* field;
        QString text;
    };

    QString reportName;                 ///< file name of the template
    std::vector<Heading> headings = {}; ///< besides the letterhead
    const char* scratchTable = nullptr; ///< "Prov" or "RCP2"; null where the report needs no rows
    std::function<void(ScratchRows&)> fillRows = {};
    QString selectionFormula = {};
    QString refusalTitle = "ZEP Lumo"; ///< of the message that the template is missing
    QString folder = {};               ///< where the template lies; empty is the data folder
    QString proposedName = {}; ///< of a PDF, without ending; empty is the template's title and the day of printing
};

/// Prepares a report and shows it in the preview: letterhead and headings into `textes`, the rows into the emptied
/// scratch table, then the template.
///
/// A missing template is reported ("Fichier ZEP_R1.RPT absent") and changes nothing. The rows are written in one
/// transaction: when filling fails, the scratch table keeps its former rows and the error goes on to the caller. What
/// was written stays for inspection until the next report. Returns when the preview is closed.
void RunPrintStep(report::Report& Report1, const PrintStep& step);

/// Empties a scratch table and fills it anew in one transaction, visible to other connections on return: the part of
/// the printing step that writes rows.
void RefillScratchTable(const QString& table, const std::function<void(ScratchRows&)>& fillRows);

/// Rows that hold a key each, in list order; the template finds the rest by them.
std::function<void(ScratchRows&)> KeyRows(const dao::KeyList& keys);

} // namespace core
