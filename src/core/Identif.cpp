#include "core/Identif.h"

#include "core/globals.h"
#include "core/lists.h"
#include "core/windows.h"
#include "platform/forms/Guard.h"

#include <QKeyEvent>

using namespace forms;

namespace core {

Identif::Identif() : Form("Identif", "Identification")
{
    BuildForm();
    for (int field = 0; field < Identifiers; ++field) {
        On(Text1[field], &TextBox::Entered, *this, [this, field] { Text1[(field + 1) % Identifiers].setFocus(); });
        Text1[field].installEventFilter(this);
    }
    OnEach(Image1, &Picture::clicked, *this, &Identif::Image1_Click);
}

void Identif::Form_Load()
{
    setWindowTitle(" ");
    CenterForm(*this);
    LoadIdentification();
    Text1[0].setFocus();
}

void Identif::Image1_Click(int index)
{
    if (index == Accept) {
        DialogResult = 0;
        for (int field = 0; field < Identifiers; ++field)
            if (Text1[field].text() != Text1[field].Tag)
                DialogResult = 1;
        if (DialogResult == 1)
            SaveIdentification();
    }
    Unload();
}

void Identif::LoadIdentification()
{
    for (int field = 0; field < Identifiers; ++field)
        Text1[field].clear();
    if (PermnTable.RecordCount() == 0) {
        PermnTable.AddNew();
        for (int field = 0; field < Identifiers; ++field)
            PermnTable.Fields(field) = " ";
        PermnTable.Update();
    }
    PermnTable.MoveFirst();
    for (int field = 0; field < Identifiers; ++field) {
        Text1[field].setText(TextOrNothing(PermnTable.Fields(field)).trimmed());
        Text1[field].Tag = Text1[field].text();
    }
}

void Identif::SaveIdentification()
{
    PermnTable.MoveFirst();
    PermnTable.Edit();
    for (int field = 0; field < Identifiers; ++field)
        PermnTable.Fields(field) = Text1[field].text().trimmed();
    PermnTable.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
}

bool Identif::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        for (int field = 0; field < Identifiers; ++field)
            if (watched == &Text1[field] && MoveFrom(field, static_cast<QKeyEvent*>(event)->key()))
                return true;
    return Form::eventFilter(watched, event);
}

bool Identif::MoveFrom(int field, int key)
{
    if (key != Qt::Key_Down && key != Qt::Key_Up)
        return false;
    const int next = field + (key == Qt::Key_Down ? 1 : -1);
    Text1[qBound(0, next, Identifiers - 1)].setFocus();
    return true;
}

} // namespace core
