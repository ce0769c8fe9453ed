#pragma once

#include "platform/dao/ReadOnlyQuery.h"
#include "platform/pages/Template.h"

#include <QHash>

namespace pages {

/// The data source of a report.
struct Source {
    QString database;              ///< path
    QString textSelect;            ///< returns one row; templates print its fields at {name}
    QStringList textNames;         ///< the fields of textSelect, in lower case
    QString selectionFormula = {}; ///< condition for the rows, see ReadSelection; empty selects all
};

/// The data of a report, read in one snapshot.
struct Content {
    QHash<QString, QString> texts; ///< by name in lower case
    dao::RowTable rows;
    std::vector<int> fieldOf; ///< field in the rows for each template column
    int groupField = -1;
    std::vector<int> chartFields; ///< fields of the chart: the label, then the series
    QString printDate;            ///< dd/mm/yyyy or empty
};

struct ReadContentResult {
    Content content;
    QList<Fault> faults;
    bool isGivenUp = false; ///< if true, there is neither content nor faults
};

/// Reads the data of a report in one snapshot. Errors in the select and the selection formula, and fields missing from
/// the select, are faults with their template line; an unreadable database is a fault of line 0. Never throws.
///
/// While the rows are read, `isGivenUp` is called from time to time; true cancels. It may process events but must not
/// throw.
ReadContentResult ReadContent(const Template& design, const Source& source,
                              const std::function<bool()>& isGivenUp = {});

/// Finds the template's fields in the rows; missing ones are faults. Called by ReadContent.
QList<Fault> FindFields(const Template& design, Content& content);

} // namespace pages
