#include "core/PeriodChooser.h"

#include "core/calendar.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Layout.h"
#include "platform/host/Host.h"

using namespace forms;

namespace core {

int PeriodChooser::Period::Days() const
{
    return basic::DaysBetween(basic::DateValue(first), basic::DateValue(last)) + 1;
}

QString PeriodChooser::Period::FirstUS() const
{
    return basic::QueryDate(first);
}

QString PeriodChooser::Period::LastUS() const
{
    return basic::QueryDate(last);
}

QString PeriodChooser::Period::Heading() const
{
    if (isDay)
        return "Journée du " + DayCaption(first).trimmed();
    return "Période du  " + DayCaption(first).trimmed() + " au " + DayCaption(last).trimmed();
}

PeriodChooser::PeriodChooser() : Panel("Dates", "Choix des dates")
{
    BuildForm();
    for (int field = Day; field <= Last; ++field)
        OfferCalendar(Text1[field]);
    connect(&Text1[Day], &TextBox::Entered, this, [this] { Image2[AcceptDay].click(); });
    connect(&Text1[First], &TextBox::Entered, this, [this] { Text1[Last].setFocus(); });
    connect(&Text1[Last], &TextBox::Entered, this, [this] { Image2[AcceptPeriod].click(); });
}

void PeriodChooser::BuildForm()
{
    setProperty("floating", true);
    for (const int accept : {AcceptDay, AcceptPeriod}) {
        Dress(Image2[accept], "accept", "Valider", Command::Accept);
        Dress(Image2[accept + 1], "cancel", "Annuler");
    }
    AddPage(SSTab2, "Journée",
            Column{Pairs{{&DayLabel, &Text1[Day]}}, Item::Stretch(),
                   Row{Item::Stretch(), Image2[AcceptDay], Image2[CancelDay]}});
    AddPage(SSTab2, "Période",
            Column{Pairs{{&FirstLabel, &Text1[First]}, {&LastLabel, &Text1[Last]}},
                   Row{Item::Stretch(), Image2[AcceptPeriod], Image2[CancelPeriod]}});
    Inside(*this, Column{SSTab2});
    hide();
}

void PeriodChooser::SetToday()
{
    for (int field = 0; field < Text1.Size(); ++field)
        Text1[field].setText(basic::DateText(host::Today()));
}

void PeriodChooser::ShowOver(QWidget& area)
{
    FloatOver(*this, area);
    Text1[SSTab2.currentIndex() == DayPage ? Day : First].setFocus();
}

std::optional<PeriodChooser::Period> PeriodChooser::Read(int acceptPicture)
{
    Image2[acceptPicture].setFocus(); // validates a date that is still being typed
    return acceptPicture == AcceptDay ? ReadDay() : ReadPeriod();
}

std::optional<PeriodChooser::Period> PeriodChooser::ReadDay()
{
    if (const auto day = TypedDay(Text1[Day].text()))
        return Period{*day, *day, true};
    Refuse("Date incorrecte", Day);
    return std::nullopt;
}

std::optional<PeriodChooser::Period> PeriodChooser::ReadPeriod()
{
    for (const int bound : {First, Last}) {
        if (Text1[bound].text().trimmed().size() < basic::DateLength) {
            Refuse("Saisie incomplète", bound);
            return std::nullopt;
        }
    }
    const auto first = TypedDay(Text1[First].text());
    const auto last = TypedDay(Text1[Last].text());
    if (first && last)
        return Period{*first, *last};
    Refuse("Date incorrecte", first ? Last : First);
    return std::nullopt;
}

void PeriodChooser::Refuse(const QString& reason, int field)
{
    MsgBox(reason, Icon::Critical, "ATTENTION");
    Text1[field].setFocus();
}

bool PeriodChooser::IsInOrder(const Period& period)
{
    if (period.Days() >= 0)
        return true;
    MsgBox("Dates inversées", Icon::Critical, "ZEP Lumo");
    Text1[Last].setFocus();
    return false;
}

} // namespace core
