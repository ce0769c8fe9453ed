#pragma once

#include "core/KeyedList.h"
#include "core/PeriodChooser.h"
#include "core/ServiceList.h"
#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/report/Report.h"

namespace analysis {

/// "Résultat": the income of a day or period by service, and the net result after running charges. All acts count,
/// whatever their payment state. Two modes: choosing dates and showing a result; cancelling the choice closes the
/// screen.
class Result : public forms::Form {
    Q_OBJECT
public:
    Result();

    forms::Panel SSPanel1{"SSPanel1"}; ///< caption: the day or period asked for
    core::PeriodChooser Dates;         ///< SSTab2; its cancel pictures close the screen
    enum ResultColumn { Unit = core::ServiceColumn::Name, Acts, Amount };
    forms::Grid Grid1;
    forms::FigureLabel ActsSum{"Label1(7)"};
    forms::FigureLabel AmountSum{"Label1(6)"};
    forms::Label ChargesCaption{"Label1(2)", "Charges"};
    forms::FigureLabel Charges{"Label1(4)"};
    forms::Label NetCaption{"Label1(3)", "Résultat Net"};
    forms::FigureLabel Net{"Label1(5)"};
    enum Action { OtherDate, Print, Quit };
    forms::ControlArray<forms::Picture, 3> Image1{"Image1"};
    forms::Picture Image3{"Image3"}; ///< opens "Évolution"
    forms::Bulle Bulle{"Bulle(1)"};

    /// Counts and sums the acts of the chosen days and subtracts the charges shown from the amount shown. Raises 6 past
    /// 32,767 acts.
    void ComputeResult();
    /// Shows the result of a period, given by its days as dd/mm/yyyy, for a screen that opens this one; it is then not
    /// offered to open "Évolution".
    void ShowPeriod(const QString& first, const QString& last);
    /// Prints the result as shown.
    void PrintResult();

    void Image1_Click(int index);
    void Image2_Click(int index);

protected:
    void Form_Load() override;

private:
    void BuildForm();
    void ApplyArabicCaptions();
    void ReturnFocus(int field);
    void ChooseDates();
    void ShowChosenDates(int acceptPicture);
    void ShowCharges(double dinars, const QString& caption);
    void ShowResult();
    void ShowPictures(bool shown);
    void ShowNet();

    QString DateFromUS; ///< chosen bounds as mm/dd/yyyy
    QString DateToUS;
    double DayCharge = 0; ///< dinars, read when the screen opens
    basic::Int16 TotalActs;
    double TotalAmount = 0; ///< dinars

    core::KeyedList Services{Grid1};
    dao::Recordset UnitRecords, CountRecords;
    report::Report Report1;
};

} // namespace analysis
