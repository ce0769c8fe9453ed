#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <chrono>

/// Reports on the screen: the control that runs a template, its preview, and the ways from there to printer and PDF.
namespace report {

/// The report control that every printing screen holds under the name Report1.
///
/// The caller sets what is to be run and calls PrintReport, as often as it likes:
///
///     Report1.DataFiles(0) = DatabasePath;
///     Report1.Destination = 0;
///     Report1.ReportFileName = host::PathIn(DataFolder, ReportName);
///     Report1.PrintDate = host::Today();
///     Report1.PrintReport();
class Report {
public:
    /// The database that the template reads; 0 is the only one (9 for any other).
    QString& DataFiles(int index);

    /// 0, the preview window, is the only one; PrintReport raises 380 on any other.
    int Destination = 0;

    /// A condition on the rows besides the template's own: "{Plani.date} = date(2008,06,17) and {Plani.Num_Presta} =
    /// 3". Replaces {selection} in the template's select; empty selects all rows.
    QString SelectionFormula;

    /// Path of the template file.
    QString ReportFileName;

    /// The texts that templates print at {name}: a select that gives them in one row, and its fields in lower case.
    QString TextSelect;
    QStringList TextNames;

    /// The date printed at the foot of each page and proposed in the name of a PDF. An invalid date prints none.
    QDate PrintDate;

    /// The file name proposed for "save as PDF", without folder and ending; characters that a file name can't have
    /// become dashes. Empty: the template's title and the PrintDate, "Caisse du Jour 17-06-2008".
    QString ProposedName;

    /// How long reading the rows may take before the user is offered to give it up.
    std::chrono::milliseconds Patience{5000};

    /// Title of the message boxes about the template, the PDF and the printer.
    QString MessageTitle;

    /// Runs the report: reads texts and rows in one read snapshot through a read-only connection of its own, and shows
    /// the preview (a forms::Form named "Preview") through forms::TheDesk().ShowModal. Returns when the preview is
    /// closed; it shows the rows of the moment of the call.
    ///
    /// A template with a mistake, a database or formula that can't be read: one critical message through forms::MsgBox
    /// with file, line and reason, no window, nothing changed; nothing is raised. The user may give up a long reading
    /// by Esc: no message, no preview. Returns 0 when the preview was shown, 1 otherwise.
    int PrintReport();

private:
    QString PdfName(const QString& title) const;

    QString dataFile;
};

} // namespace report
