#include "expenses/EntryPanel.h"

#include "core/calendar.h"
#include "core/windows.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace expenses {

EntryPanel::EntryPanel() : Panel("SSPanel3")
{
    BuildPanel();
    core::OfferCalendar(Date);
    connect(&Date, &TextBox::Entered, this, [this] { Object.setFocus(); });
    connect(&Object, &TextBox::Entered, this, [this] { Amount.setFocus(); });
    connect(&Amount, &TextBox::Entered, this, [this] { Image2[Accept].click(); });
}

void EntryPanel::BuildPanel()
{
    constexpr int width = 384;
    setProperty("floating", true);
    setAccessibleName("Saisie d'une dépense");
    Date.setAccessibleName("Date");
    Object.setAccessibleName("Objet");
    Amount.setAccessibleName("Montant");
    Dress(Image2[Accept], "accept", "Enregistrer la dépense", Command::Accept);
    Dress(Image2[Cancel], "cancel", "Annuler");

    Inside(*this, Column{
                      SSPanel2,
                      Pairs{
                          {&NewLabel("LDate", "Date"), &Date},
                          {&NewLabel("LObjet", "Objet"), &Object},
                          {&NewLabel("LMontant", "Montant"), &Amount},
                      },
                      Row{Item::Stretch(), Image2[Accept], Image2[Cancel]},
                  });
    setMinimumWidth(width);
    hide();
}

void EntryPanel::ShowOver(QWidget& area, const QString& title, const TypedExpense& shown)
{
    SSPanel2.SetCaption(title);
    Date.setText(shown.date);
    Object.setText(shown.object);
    Amount.setText(shown.amount);
    core::FloatOver(*this, area);
    Date.setFocus();
    Date.selectAll();
}

std::optional<TypedExpense> EntryPanel::Read()
{
    Image2[Accept].setFocus(); // validates a date that is still being typed
    for (TextBox* field : {static_cast<TextBox*>(&Date), &Object, static_cast<TextBox*>(&Amount)}) {
        if (field->text().trimmed().isEmpty()) {
            Refuse("saisie incomplète", *field);
            return std::nullopt;
        }
    }
    const auto day = core::TypedDay(Date.text());
    if (!day) {
        Refuse("Date incorrecte", Date);
        return std::nullopt;
    }
    return TypedExpense{*day, Object.text().trimmed(), Amount.text().trimmed()};
}

void EntryPanel::Refuse(const QString& reason, TextBox& field)
{
    MsgBox(reason, Icon::Critical, "ATTENTION");
    field.setFocus();
}

} // namespace expenses
