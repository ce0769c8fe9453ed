#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/forms/Layout.h"

/// A small screen with one control of each kind.
class Sheet : public forms::Form {
public:
    /// `prepare` runs before the sheet shows.
    explicit Sheet(const std::function<void(Sheet& made)>& prepare = [](Sheet&) {}) : Form("Sheet", "Essai")
    {
        prepare(*this);
        SetContent(forms::Column{text, date, amount, picture, forms::Item::Growing(grid), button});
    }

    forms::TextBox text{"Text1"};
    forms::DateField date{"Text2"};
    forms::AmountField amount{"Text3"};
    forms::Picture picture{"Image1"};
    forms::Grid grid{"Grid1", {{"N°", 600, Qt::AlignHCenter}, {"Nom", 1890}, {"Montant", 1100, Qt::AlignRight}}};
    forms::Button button{"Command1", "Valider"};

    std::function<void()> loading = [] {};
    bool staysOpen = false;
    int escapes = 0;

protected:
    void Form_Load() override { loading(); }
    bool Form_QueryUnload() override { return staysOpen; }
    void EscapePressed() override { ++escapes; }
};
