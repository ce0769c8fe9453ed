#include "core/Q_Date_2.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Guard.h"

#include <QKeyEvent>
#include <QSignalBlocker>

using namespace basic;
using namespace forms;

namespace core {

namespace {

constexpr int FirstYear = 2001;
constexpr int LastYear = 2099;
constexpr int DaysInWeek = 7;
constexpr int Saturday = 7;

QString TwoDigits(int number)
{
    return (QStringLiteral("00") + QString::number(number)).right(2);
}

} // namespace

Q_Date_2::Q_Date_2() : Form("Q_Date_2", " ")
{
    BuildForm();
    On(Combo1, &QComboBox::currentIndexChanged, *this, &Q_Date_2::Combo1_Click);
    On(Combo2, &QComboBox::currentIndexChanged, *this, &Q_Date_2::Combo2_Click);
    OnEach(SSCommand1, &Button::clicked, *this, &Q_Date_2::ChooseByHand);
    OnEach(Image2, &Picture::clicked, *this, &Q_Date_2::Image2_Click);
}

void Q_Date_2::Form_Load()
{
    setWindowTitle(" ");
    CenterForm(*this);
    FillLists();
    PickedYear = qBound(FirstYear, int{PickedYear}, LastYear);
    PickedMonth = qBound(1, int{PickedMonth}, Combo1.count());
    Combo2.SetListIndex(PickedYear - FirstYear);
    Combo1.SetListIndex(PickedMonth - 1);
    loadedOnce = true;
    ShowArrows();
    SSCommand1[FirstDayColumn + PickedDay].setFocus();
}

void Q_Date_2::FillLists()
{
    const QSignalBlocker quietMonths(Combo1);
    const QSignalBlocker quietYears(Combo2);
    for (const QString& name : MonthNames)
        Combo1.addItem(name.trimmed());
    for (int year = FirstYear; year <= LastYear; ++year)
        Combo2.addItem(QString::number(year));
    Combo1.setCurrentIndex(-1);
    Combo2.setCurrentIndex(-1);
}

void Q_Date_2::Combo1_Click()
{
    if (Combo1.currentIndex() >= 0)
        LayOutMonth();
}

void Q_Date_2::Combo2_Click()
{
    const double year = Val(Combo2.currentText());
    if (year < 1990 || year > 2100 || !loadedOnce)
        return;
    PickedYear = RoundToInt(year);
    LayOutMonth();
}

void Q_Date_2::EmptyCells()
{
    for (int cell = 1; cell <= Cells; ++cell) {
        Text2[cell].setText("");
        Text2[cell].setEnabled(false);
        SSCommand1[cell].setText("");
        SSCommand1[cell].setAccessibleName("Case vide");
        SSCommand1[cell].setEnabled(false);
    }
}

bool Q_Date_2::DaysHaveFocus() const
{
    const QWidget* focused = focusWidget();
    return focused != nullptr && focused->property("day").toBool();
}

void Q_Date_2::LayOutMonth()
{
    const bool focusStays = DaysHaveFocus(); // the cleared cell would pass the focus on
    EmptyCells();
    PickedMonth = Combo1.currentIndex() + 1;
    const QDate first = DateValue(QStringLiteral("%1/%2/01").arg(PickedYear).arg(TwoDigits(PickedMonth)));
    FirstDayColumn = Weekday(first) % Saturday;
    MonthLength = DaysInMonth(PickedMonth, PickedYear);
    if (PickedDay > MonthLength)
        PickedDay = MonthLength;
    if (PickedDay < 1)
        PickedDay = 1;

    for (int day = 1; day <= MonthLength; ++day) {
        const int cell = FirstDayColumn + day;
        Text2[cell].setText(" " + QString::number(day));
        Text2[cell].setEnabled(true);
        SSCommand1[cell].setText(QString::number(day));
        SSCommand1[cell].setAccessibleName(
            DayCaption(QStringLiteral("%1/%2/%3").arg(TwoDigits(day), TwoDigits(PickedMonth)).arg(PickedYear)));
        SSCommand1[cell].setEnabled(true);
    }
    const int chosen = FirstDayColumn + PickedDay;
    SSCommand1_Click(chosen);
    if (focusStays)
        SSCommand1[chosen].setFocus();
    ShowArrows();
}

void Q_Date_2::Text2_Click(int cell)
{
    PickedDay = RoundToInt(Val(Text2[cell].text()));
}

void Q_Date_2::StepList(ComboBox& list, int step)
{
    const int line = list.currentIndex() + step;
    if (line >= 0 && line < list.count())
        list.SetListIndex(line);
    ShowArrows();
}

void Q_Date_2::ShowArrows()
{
    Image2[PreviousMonth].setVisible(Combo1.currentIndex() > 0);
    Image2[NextMonth].setVisible(Combo1.currentIndex() < Combo1.count() - 1);
    Image2[PreviousYear].setVisible(Combo2.currentIndex() > 0);
    Image2[NextYear].setVisible(Combo2.currentIndex() < Combo2.count() - 1);
}

void Q_Date_2::Image2_Click(int index)
{
    switch (index) {
    case AcceptDay:
        return Accept();
    case CancelDay:
        return Cancel();
    case PreviousMonth:
        return StepList(Combo1, -1);
    case NextMonth:
        return StepList(Combo1, 1);
    case PreviousYear:
        return StepList(Combo2, -1);
    default:
        return StepList(Combo2, 1);
    }
}

void Q_Date_2::Accept()
{
    PickedDate = TwoDigits(PickedDay) + "/" + TwoDigits(PickedMonth) + "/" + QString::number(PickedYear);
    DialogResult = ResultDone;
    accepted = true;
    Unload();
}

void Q_Date_2::Cancel()
{
    Unload();
}

bool Q_Date_2::Form_QueryUnload()
{
    // Cancel and the close box: no day chosen.
    if (!accepted) {
        PickedDay = -1;
        PickedDate = "";
        DialogResult = ResultPickerCancelled;
    }
    return false;
}

void Q_Date_2::EscapePressed()
{
    Cancel();
}

bool Q_Date_2::MoveChoice(int key)
{
    const auto toDay = [this](int day) {
        if (day >= 1 && day <= MonthLength)
            ChooseByHand(FirstDayColumn + day);
    };
    switch (key) {
    case Qt::Key_Left:
        return toDay(PickedDay - 1), true;
    case Qt::Key_Right:
        return toDay(PickedDay + 1), true;
    case Qt::Key_Up:
        return toDay(PickedDay - DaysInWeek), true;
    case Qt::Key_Down:
        return toDay(PickedDay + DaysInWeek), true;
    case Qt::Key_PageUp:
        return StepList(Combo1, -1), true;
    case Qt::Key_PageDown:
        return StepList(Combo1, 1), true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Accept(), true;
    default:
        return false;
    }
}

bool Q_Date_2::eventFilter(QObject* watched, QEvent* event)
{
    bool taken = false;
    const auto* pressed = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
    if (pressed != nullptr && !IsCommandKey(*pressed)) {
        Guarded([&] { taken = MoveChoice(pressed->key()); });
    } else if (event->type() == QEvent::MouseButtonDblClick && static_cast<QWidget*>(watched)->isEnabled()) {
        Guarded([&] {
            Accept();
            taken = true;
        });
    }
    return taken || Form::eventFilter(watched, event);
}

void Q_Date_2::ChooseByHand(int cell)
{
    SSCommand1_Click(cell);
    SSCommand1[cell].setFocus();
}

} // namespace core
