#pragma once

#include "platform/dao/ReadOnlyQuery.h"
#include "platform/pages/Template.h"

#include <QHash>

namespace pages {

/// What a report reads besides its template.
struct Source {
    QString database;              ///< path
    QString textSelect;            ///< gives one row; templates print its fields at {name}
    QStringList textNames;         ///< the fields of textSelect, in lower case
    QString selectionFormula = {}; ///< condition on the rows, see ReadSelection; empty selects all
};

/// What a report prints, all of it read at one moment.
struct Content {
    QHash<QString, QString> texts; ///< by name in lower case
    dao::RowTable rows;
    std::vector<int> fieldOf; ///< for each column of the template, its field in the rows
    int groupField = -1;
    QString printDate; ///< dd/mm/yyyy or empty
};

struct ReadContentResult {
    Content content;
    QList<Fault> faults;
    bool isGivenUp = false; ///< neither content nor faults then
};

/// Reads what a report prints, in one read snapshot. Mistakes of the select and the selection formula, and fields that
/// the select doesn't give, are faults with their line of the template; a database that can't be read is a fault of
/// line 0. Raises nothing.
///
/// While the rows are read, `isGivenUp` is asked now and then; true ends the reading. It may handle events and raises
/// nothing.
ReadContentResult ReadContent(const Template& design, const Source& source,
                              const std::function<bool()>& isGivenUp = {});

/// Finds the template's fields in the rows; those that aren't there are faults. ReadContent calls it.
QList<Fault> FindFields(const Template& design, Content& content);

} // namespace pages
