#include "platform/forms/Layout.h"

#include "platform/forms/Controls.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>

namespace forms {

namespace {

constexpr int Rhythm = 8;
constexpr int WindowMargin = 2 * Rhythm;
constexpr auto LentByOwner = "lentByOwner";
constexpr auto OwnedByContainer = "ownedByContainer";

QWidget* Lent(QWidget& control)
{
    Lend(control);
    return &control;
}

void AddControl(QBoxLayout& box, QWidget& control, int share)
{
    const bool down = box.direction() == QBoxLayout::TopToBottom;
    // Otherwise fixed-width controls would be centred.
    const bool grows = (control.sizePolicy().horizontalPolicy() & QSizePolicy::GrowFlag) != 0;
    box.addWidget(Lent(control), share, down && !grows ? Qt::AlignLeft : Qt::Alignment());
}

/// Figures end at the right edge, fields that don't grow stand next to their captions.
Qt::Alignment InPairs(const QWidget& control)
{
    if (qobject_cast<const FigureLabel*>(&control) != nullptr)
        return Qt::AlignRight;
    const bool grows = (control.sizePolicy().horizontalPolicy() & QSizePolicy::GrowFlag) != 0;
    return grows && control.maximumWidth() == QWIDGETSIZE_MAX ? Qt::Alignment() : Qt::AlignLeft;
}

std::unique_ptr<QLayout> PairsGrid(std::initializer_list<std::pair<QWidget*, QWidget*>> lines)
{
    auto grid = std::make_unique<QGridLayout>();
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(Rhythm);
    grid->setVerticalSpacing(Rhythm);
    int row = 0;
    for (const auto& [caption, field] : lines) {
        grid->addWidget(Lent(*caption), row, 0);
        grid->addWidget(Lent(*field), row, 1, InPairs(*field));
        if (auto* label = qobject_cast<QLabel*>(caption); label && field->focusPolicy() != Qt::NoFocus)
            label->setBuddy(field);
        ++row;
    }
    grid->setColumnStretch(1, 1);
    return grid;
}

} // namespace

Item::Item(QWidget& placed) : control(&placed) {}

Item::Item(Layout&& inner) : nested(std::move(inner).Take()) {}

Item Item::Stretch(int share)
{
    Item item;
    item.share = share;
    return item;
}

Item Item::Gap(int eights)
{
    Item item;
    item.gap = eights * Rhythm;
    return item;
}

Item Item::Growing(QWidget& control, int share)
{
    Item item(control);
    item.share = share;
    return item;
}

Item Item::Growing(Layout&& nested, int share)
{
    Item item(std::move(nested));
    item.share = share;
    return item;
}

Layout::Layout(Direction direction, std::initializer_list<Item> items)
{
    auto box =
        std::make_unique<QBoxLayout>(direction == Direction::Down ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(Rhythm);
    for (const Item& item : items) {
        if (item.control != nullptr)
            AddControl(*box, *item.control, item.share);
        else if (item.nested)
            box->addLayout(item.nested.release(), item.share);
        else if (item.gap > 0)
            box->addSpacing(item.gap);
        else
            box->addStretch(item.share);
    }
    layout = std::move(box);
}

Layout Layout::Margin(int pixels) &&
{
    layout->setContentsMargins(pixels, pixels, pixels, pixels);
    return std::move(*this);
}

Layout Layout::Spacing(int pixels) &&
{
    layout->setSpacing(pixels);
    return std::move(*this);
}

Pairs::Pairs(std::initializer_list<std::pair<QWidget*, QWidget*>> lines) : Layout(PairsGrid(lines)) {}

Label& NewLabel(const QString& name, const QString& text)
{
    auto* label = new Label(name, text);
    label->setProperty(OwnedByContainer, true);
    return *label;
}

void Lend(QWidget& control)
{
    if (!control.property(OwnedByContainer).toBool())
        control.setProperty(LentByOwner, true);
}

void RetainSizeWhenHidden(QWidget& control)
{
    QSizePolicy policy = control.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control.setSizePolicy(policy);
}

Item Inside(QWidget& container, Layout content)
{
    if (auto* panel = qobject_cast<Panel*>(&container))
        panel->SetContents(std::move(content).Take());
    else
        container.setLayout(std::move(content).Margin(Rhythm).Take().release());
    return {container};
}

Item Titled(const QString& title, Layout content)
{
    auto* frame = new QGroupBox(title); // owned by the item's future container
    frame->setProperty(OwnedByContainer, true);
    frame->setLayout(std::move(content).Margin(Rhythm).Take().release());
    return {*frame};
}

void AddPage(TabStrip& tabs, const QString& title, Layout content)
{
    // Insert the page before filling it: reparenting a filled page restyles all of its controls.
    auto* page = new QWidget;
    tabs.addTab(page, title);
    page->setLayout(std::move(content).Margin(WindowMargin).Take().release());
}

void ReleaseControls(QWidget& container)
{
    for (QWidget* control : container.findChildren<QWidget*>()) {
        // The contents of a lent container stay with it.
        if (control->property(LentByOwner).toBool() && container.isAncestorOf(control))
            control->setParent(nullptr);
    }
}

} // namespace forms
