#pragma once

#include "platform/dao/ReadOnlyQuery.h"
#include "platform/report/Template.h"

#include <QHash>

namespace report {

/// What a report prints, as read at one moment: the texts of `textes`, and the rows of the template's select.
struct Content {
    QHash<QString, QString> texts; ///< by field name in lower case, blanks around taken off
    dao::RowTable rows;
    std::vector<int> fieldOf; ///< for each column of the template, its place in the rows
    int groupField = -1;
    QString printDate; ///< dd/mm/yyyy or empty
};

struct ReadContentResult {
    Content content;
    QList<Fault> faults;
};

/// Reads what `report` prints from the database at `path`, in one read snapshot. Faults of the select, of fields that
/// it doesn't give and of the selection formula are returned with their line of the template; a database that can't be
/// read is a fault of line 0. Raises nothing.
ReadContentResult ReadContent(const Template& report, const QString& path, const QString& selectionFormula);

/// All mistakes of a template file: its own, and those of its select over the tables of the database at `path`.
QList<Fault> CheckTemplate(const QString& file, const QString& path);

/// Finds the template's fields in the rows; what isn't there is a fault. ReadContent does it.
QList<Fault> FindFields(const Template& report, Content& content);

/// What a column prints of a value: its choice, its mask or the value as it is; nothing for Null.
QString CellText(const Column& column, const dao::Value& value);

/// A number under a mask, without the blanks that the mask leaves before the first digit; plain text without a mask.
QString NumberText(double number, const QString& mask);

/// A text of the practice as it is printed: an amount that a screen has written under a mask ("-   883 348.15",
/// " 100.00 ") is written under `mask`, or without a mask loses the blanks of its empty places. Other texts stay.
QString AmountText(const QString& text, const QString& mask = {});

/// The number of a value in a sum: 0 for Null and for text.
double NumberIn(const dao::Value& value);

/// `text` on one line: tabs, line breaks and other control characters become blanks, blanks around it go; longer text
/// than any sheet is wide is cut.
QString PlainLine(const QString& text);

} // namespace report
