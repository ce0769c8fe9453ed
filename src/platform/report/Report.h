#pragma once

#include <QDate>
#include <QString>

/// Reports: templates that a user can edit, laid out on pages, shown in a preview from which they are printed or saved.
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
    /// 3". Stands in the template's select at {selection}; empty leaves all rows in.
    QString SelectionFormula;

    /// Path of the template as it stands on the disk.
    QString ReportFileName;

    /// The date printed at the foot of each page and proposed in the name of a PDF. The room knows no clock: the caller
    /// gives it. An invalid date prints none.
    QDate PrintDate;

    /// The file name proposed for "save as PDF", without folder and ending; characters that a file name can't have
    /// become dashes. Empty: the template's title and the PrintDate, "Caisse du Jour 17-06-2008".
    QString ProposedName;

    /// Runs the report: reads headings and rows in one read snapshot through a read-only connection of its own, and
    /// shows the preview (a forms::Form named "Preview") through forms::TheDesk().ShowModal, over the screen that
    /// asked. Returns when the preview is closed; the rows it shows are those of the moment of the call.
    ///
    /// A template with a mistake, a database that can't be read, a formula that can't: one message through
    /// forms::MsgBox (critical, title "ZEP Lumo") with file, line and reason, no window, nothing changed. Raises
    /// nothing for these. Returns 0 when the preview was shown, 1 otherwise; callers needn't look.
    int PrintReport();

private:
    QString PdfName(const QString& title) const;

    QString dataFile;
};

} // namespace report
