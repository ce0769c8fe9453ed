#include "core/PeriodChooser.h"

#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Layout.h"
#include "platform/host/Host.h"

using namespace forms;

namespace core {

namespace {

constexpr qsizetype DateLength = 10;

/// Whether the text can be read as a date. The date field also lets through texts that can't, such as "12/05x/2004".
bool IsReadable(const QString& text)
{
    try {
        basic::DateValue(text);
    } catch (const basic::RuntimeError&) {
        return false;
    }
    return true;
}

} // namespace

int PeriodChooser::Period::Days() const
{
    return basic::DaysBetween(basic::DateValue(first), basic::DateValue(last)) + 1;
}

PeriodChooser::PeriodChooser() : Panel("Dates", "Choix des dates")
{
    BuildForm();
    connect(&Text1[Day], &TextBox::Entered, this, [this] { Image2[AcceptDay].click(); });
    connect(&Text1[First], &TextBox::Entered, this, [this] { Text1[Last].setFocus(); });
    connect(&Text1[Last], &TextBox::Entered, this, [this] { Image2[AcceptPeriod].click(); });
}

void PeriodChooser::BuildForm()
{
    setProperty("floating", true);
    for (const int accept : {AcceptDay, AcceptPeriod}) {
        Dress(Image2[accept], "accept", "Valider");
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
    Text1[SSTab2.currentIndex() == 0 ? Day : First].setFocus();
}

std::optional<QString> PeriodChooser::ReadDay()
{
    Image2[AcceptDay].setFocus(); // a date that is still being typed is checked now, as the user left it
    const QString day = Text1[Day].text().trimmed();
    if (day.size() >= DateLength && IsReadable(day))
        return day;
    Refuse("Date incorrecte", Day);
    return std::nullopt;
}

std::optional<PeriodChooser::Period> PeriodChooser::ReadPeriod()
{
    Image2[AcceptPeriod].setFocus();
    const Period period{Text1[First].text().trimmed(), Text1[Last].text().trimmed()};
    if (period.first.size() < DateLength || period.last.size() < DateLength)
        Refuse("Saisie incomplète", period.first.size() < DateLength ? First : Last);
    else if (!IsReadable(period.first) || !IsReadable(period.last))
        Refuse("Date incorrecte", IsReadable(period.first) ? Last : First);
    else
        return period;
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
