#pragma once

#include <QByteArray>
#include <QList>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <Qt>
#include <optional>

/// Reports without a display: a template that a user can edit is read, filled with rows of the database and laid out on
/// pages.
namespace pages {

/// A mistake in a template. `line` counts from 1; 0 means the whole file.
struct Fault {
    int line = 0;
    QString reason;
};

/// A line above the rows. Its texts have placeholders: {date}, {page}, {pages}, {rows} and the texts of the Source;
/// {ch7|0.00} prints 0.00 where ch7 is empty.
struct HeadingLine {
    QString text;
    QString right; ///< a second text at the right edge of the same line
    Qt::Alignment alignment = Qt::AlignLeft;
    double points = 9;
    bool bold = false;
    bool italic = false;
    bool rule = false;        ///< a line under it, over the whole width
    bool onEveryPage = false; ///< otherwise on the first page only
    double spaceBefore = 0;   ///< mm
};

/// A picture at the top edge of the first page's body; the heading lines are printed over it.
struct Logo {
    QString file;       ///< its name, without a folder: it lies beside the template
    QByteArray picture; ///< what the file holds, PNG or JPEG
    double height = 0;  ///< mm; the width follows from it
    Qt::Alignment alignment = Qt::AlignLeft;
    int line = 0;
};

struct Column {
    QString heading;
    QString above; ///< a second heading above it, in common with the neighbouring columns that have the same
    QString field;
    double width = 0; ///< mm
    Qt::Alignment alignment = Qt::AlignLeft;
    QString mask; ///< a display mask for numbers, or "dd/mm/yyyy" for an ISO date; empty prints the value as it is
    QStringList choices; ///< the value is the number, from 0, of one of these texts
    bool blankZero = false;
    bool total = false;     ///< summed in subtotals and totals
    QString totalText;      ///< printed in the totals instead of the sum; has the placeholders of a heading line
    bool hideEmpty = false; ///< left out when no row has a value; its room goes to the others, if there is one
    int line = 0;
};

/// Consecutive rows with the same value in `field` have one heading. Its texts have the fields of the select as
/// placeholders.
struct Group {
    QString field;
    QString heading;
    QString subtotal; ///< empty prints none
    int line = 0;
};

/// A figure under the totals: a label and, at the right edge, a value. Both have the placeholders of a heading line.
struct EndingLine {
    QString label;
    QString value;
    QString mask;           ///< a value that is an amount is written under it
    bool keepEmpty = false; ///< printed without a value too; otherwise left out then
    bool bold = false;
    bool rule = false; ///< a line above it
};

struct Footer {
    QString left;
    QString centre;
    QString right;
};

/// The content of a template file: how a report looks and where its rows come from. Measures in millimetres, text in
/// points.
struct Template {
    QString title;
    QSizeF paper; ///< landscape is wider than high
    double top = 15, right = 15, bottom = 15, left = 15;
    double points = 9;
    std::optional<Logo> logo;
    QList<HeadingLine> heading;
    QString select;
    int selectLine = 0; ///< of its first line of text
    QString emptyText;  ///< printed when there are no rows
    QList<Column> columns;
    std::optional<Group> group;
    QString totalLabel;
    QList<EndingLine> ending;
    Footer footer;

    double BodyWidth() const { return paper.width() - left - right; }
};

/// Where a select takes the conditions of a selection formula.
inline const QString SelectionPlaceholder = QStringLiteral("{selection}");

struct ParsedTemplate {
    Template design;
    QList<Fault> faults; ///< all of them, in the order of their lines; with any, `design` is not to be used
};

/// Reads a template from its text; `textNames` are the placeholders besides {date}, {page}, {pages} and {rows}. Raises
/// nothing: mistakes are in the faults.
ParsedTemplate ReadTemplate(const QByteArray& text, const QStringList& textNames);

/// Reads a template file and its logo; one that can't be read, or that is larger than 64 KB, is a fault of line 0.
/// Where there is a logo, it is a PNG or JPEG file of at most 2 MB beside the template.
ParsedTemplate ReadTemplateFile(const QString& path, const QStringList& textNames);

} // namespace pages
