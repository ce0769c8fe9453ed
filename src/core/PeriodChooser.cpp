#include "core/PeriodChooser.h"

#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Layout.h"
#include "platform/host/Host.h"

using namespace forms;

namespace core {

namespace {

constexpr qsizetype DateLength = 10;

} // namespace

int PeriodChooser::Period::Days() const
{
    return basic::DaysBetween(basic::DateValue(first), basic::DateValue(last)) + 1;
}

PeriodChooser::PeriodChooser() : Panel("Dates", "Choix des dates")
{
    BuildForm();
    connect(&Text1[0], &TextBox::Entered, this, [this] { Image2[2].click(); });
    connect(&Text1[1], &TextBox::Entered, this, [this] { Text1[2].setFocus(); });
    connect(&Text1[2], &TextBox::Entered, this, [this] { Image2[4].click(); });
}

void PeriodChooser::BuildForm()
{
    setProperty("floating", true);
    for (int accept = 2; accept <= 4; accept += 2) {
        Image2[accept].SetIcon("accept");
        Image2[accept].SetAction("Valider");
        Image2[accept + 1].SetIcon("cancel");
        Image2[accept + 1].SetAction("Annuler");
    }
    AddPage(SSTab2, "Journée",
            Column{Pairs{{&DayLabel, &Text1[0]}}, Item::Stretch(), Row{Item::Stretch(), Image2[2], Image2[3]}});
    AddPage(
        SSTab2, "Période",
        Column{Pairs{{&FirstLabel, &Text1[1]}, {&LastLabel, &Text1[2]}}, Row{Item::Stretch(), Image2[4], Image2[5]}});
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
    Text1[SSTab2.currentIndex() == 0 ? 0 : 1].setFocus();
}

std::optional<QString> PeriodChooser::ReadDay()
{
    Image2[2].setFocus(); // a date that is still being typed is checked now, as the user left it
    const QString day = Text1[0].text().trimmed();
    if (day.size() >= DateLength)
        return day;
    Refuse("Date incorrecte", 0);
    return std::nullopt;
}

std::optional<PeriodChooser::Period> PeriodChooser::ReadPeriod()
{
    Image2[4].setFocus();
    const Period period{Text1[1].text().trimmed(), Text1[2].text().trimmed()};
    if (period.first.size() >= DateLength && period.last.size() >= DateLength)
        return period;
    Refuse("Saisie incomplète", period.first.size() < DateLength ? 1 : 2);
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
    return false;
}

} // namespace core
