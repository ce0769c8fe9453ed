#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <chrono>

/// Reports on the screen: the control that runs a template, the preview, printing and PDF.
namespace report {

/// The report control, called Report1 on every printing screen.
///
/// Set the properties and call PrintReport, any number of times:
///
///     Report1.DataFiles(0) = DatabasePath;
///     Report1.Destination = 0;
///     Report1.ReportFileName = host::PathIn(DataFolder, ReportName);
///     Report1.PrintDate = host::Today();
///     Report1.PrintReport();
class Report {
public:
    /// The database read by the template; the only index is 0 (9 for any other).
    QString& DataFiles(int index);

    /// Always 0, the preview window; PrintReport raises 380 for any other value.
    int Destination = 0;

    /// An additional condition for the rows: "{Plani.date} = date(2008,06,17) and {Plani.Num_Presta} = 3". Replaces
    /// {selection} in the template's select; empty selects all rows.
    QString SelectionFormula;

    /// Path of the template file.
    QString ReportFileName;

    /// The texts that templates print at {name}: a select that returns one row, and its fields in lower case.
    QString TextSelect;
    QStringList TextNames;

    /// The date in the footer and in the proposed PDF name; none if invalid.
    QDate PrintDate;

    /// The file name proposed for "save as PDF", without folder and extension; invalid characters become dashes. Empty:
    /// the template's title and the PrintDate, "Caisse du Jour 17-06-2008".
    QString ProposedName;

    /// How long to read the rows before offering the user to cancel.
    std::chrono::milliseconds Patience{5000};

    /// Title of the message boxes about the template, the PDF and the printer.
    QString MessageTitle;

    /// Runs the report: reads texts and rows in one snapshot through its own read-only connection, and shows the
    /// preview (a forms::Form named "Preview") through forms::TheDesk().ShowModal. Returns when the preview is closed.
    ///
    /// Never throws: an error in the template, an unreadable database or an invalid formula gives one critical message
    /// with file, line and reason. If the user cancels a long read there is neither message nor preview. Returns 0 when
    /// the preview was shown, 1 otherwise.
    int PrintReport();

private:
    QString PdfName(const QString& title) const;

    QString dataFile;
};

} // namespace report
