#pragma once

#include "platform/pages/Chart.h"

#include <QByteArray>
#include <QList>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <Qt>
#include <optional>

/// Reports without a display: reads a user-editable template, fills it with rows of the database and lays out pages.
namespace pages {

/// An error in a template. `line` counts from 1; 0 means the whole file.
struct Fault {
    int line = 0;
    QString reason;
};

/// A line above the rows. Placeholders in its texts: {date}, {page}, {pages}, {rows} and the texts of the Source;
/// {ch7|0.00} prints 0.00 if ch7 is empty.
struct HeadingLine {
    QString text;
    QString right; ///< a second text at the right edge of the same line
    Qt::Alignment alignment = Qt::AlignLeft;
    double points = 9;
    bool bold = false;
    bool italic = false;
    bool rule = false;        ///< draws a line below, across the page
    bool onEveryPage = false; ///< otherwise on the first page only
    double spaceBefore = 0;   ///< mm
};

/// A picture at the top of the first page; heading lines are printed over it.
struct Logo {
    QString file;       ///< name without a folder: in the template's folder
    QByteArray picture; ///< content of the file, PNG or JPEG
    double height = 0;  ///< mm; the width follows from it
    Qt::Alignment alignment = Qt::AlignLeft;
    int line = 0;
};

struct Column {
    QString heading;
    QString above; ///< a second heading above, shared with neighbouring columns that have the same one
    QString field;
    double width = 0; ///< mm
    Qt::Alignment alignment = Qt::AlignLeft;
    QString mask;        ///< a number mask, or "dd/mm/yyyy" for an ISO date; empty prints the value unchanged
    QStringList choices; ///< the value is the index of one of these texts
    bool blankZero = false;
    bool total = false;     ///< summed in subtotals and totals
    QString totalText;      ///< printed in the totals instead of the sum; placeholders as in a heading line
    bool hideEmpty = false; ///< omitted when no row has a value; the other columns share its width
    int line = 0;
};

/// A chart of the rows, above them on the first page.
struct ChartDesign {
    struct Series {
        QString heading;
        QString field;
        ChartSeries::Kind kind = ChartSeries::Kind::Bar;
        int line = 0;
    };
    double height = 90; ///< mm at most; lower so that the rows fit below it, and for a chart across of few labels
    QString labelField;
    QList<Series> series; ///< omitted when no row has a value
    QString unit;
    QString note;      ///< placeholders as in a heading line
    QString emptyText; ///< the same; printed if all values are 0
    bool across = false;
    int line = 0;
};

/// A heading for consecutive rows with the same value in `field`. Placeholders in its texts: the fields of the select.
struct Group {
    QString field;
    QString heading;
    QString subtotal; ///< empty prints none
    int line = 0;
};

/// A figure below the totals: a label and, at the right edge, a value. Placeholders as in a heading line.
struct EndingLine {
    QString label;
    QString value;
    QString mask;           ///< applied to the value if it is an amount
    bool keepEmpty = false; ///< printed even without a value
    bool bold = false;
    bool rule = false; ///< draws a line above
};

struct Footer {
    QString left;
    QString centre;
    QString right;
};

/// A parsed template: appearance of a report and the source of its rows. Measures in millimetres, text in points.
struct Template {
    QString title;
    QSizeF paper; ///< width and height; landscape if wider than high
    double top = 15, right = 15, bottom = 15, left = 15;
    double points = 9;
    std::optional<Logo> logo;
    QList<HeadingLine> heading;
    QString select;
    int selectLine = 0; ///< line of its first text
    QString emptyText;  ///< printed when there are no rows
    QList<Column> columns;
    std::optional<ChartDesign> chart;
    std::optional<Group> group;
    QString totalLabel;
    QList<EndingLine> ending;
    Footer footer;

    double BodyWidth() const { return paper.width() - left - right; }
};

/// Replaced in a select by the conditions of a selection formula.
inline const QString SelectionPlaceholder = QStringLiteral("{selection}");

struct ParsedTemplate {
    Template design;
    QList<Fault> faults; ///< in line order; `design` is valid only if there are none
};

/// Parses a template; `textNames` are the placeholders besides {date}, {page}, {pages} and {rows}. Never throws: errors
/// are in the faults.
ParsedTemplate ReadTemplate(const QByteArray& text, const QStringList& textNames);

/// Reads a template file and its logo. A file that is unreadable or larger than 64 KB is a fault of line 0; a logo must
/// be a PNG or JPEG file of at most 2 MB in the template's folder.
ParsedTemplate ReadTemplateFile(const QString& path, const QStringList& textNames);

} // namespace pages
