#include "platform/forms/Layout.h"

#include "platform/forms/Controls.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <vector>

namespace forms {

namespace {

constexpr int Rhythm = 8;
constexpr int WindowMargin = 2 * Rhythm;
constexpr auto Lent = "lentByOwner";
constexpr auto Owned = "ownedByContainer";

QWidget* Borrow(QWidget& control)
{
    if (!control.property(Owned).toBool())
        control.setProperty(Lent, true);
    return &control;
}

void AddTo(QBoxLayout& box, QWidget& control, int share, Qt::Alignment alignment = {})
{
    const bool down = box.direction() == QBoxLayout::TopToBottom;
    // What doesn't grow would stand in the middle of a column.
    if (down && !alignment && !(control.sizePolicy().horizontalPolicy() & QSizePolicy::GrowFlag))
        alignment = Qt::AlignLeft;
    box.addWidget(Borrow(control), share, alignment);
}

QLayout* BuildBox(Layout::Direction direction, const std::vector<std::function<void(QBoxLayout&)>>& adders)
{
    const bool down = direction == Layout::Direction::Down;
    auto* box = new QBoxLayout(down ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(Rhythm);
    for (const auto& add : adders)
        add(*box);
    return box;
}

QLayout* BuildPairs(const std::vector<std::pair<QWidget*, QWidget*>>& lines)
{
    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(Rhythm);
    grid->setVerticalSpacing(Rhythm);
    int row = 0;
    for (const auto& [caption, field] : lines) {
        const bool narrow = field->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
        grid->addWidget(Borrow(*caption), row, 0);
        grid->addWidget(Borrow(*field), row, 1, narrow ? Qt::AlignLeft : Qt::Alignment());
        if (auto* label = qobject_cast<QLabel*>(caption); label && field->focusPolicy() != Qt::NoFocus)
            label->setBuddy(field);
        ++row;
    }
    grid->setColumnStretch(1, 1);
    return grid;
}

} // namespace

Item::Item(QWidget& control) : add([&control](QBoxLayout& box) { AddTo(box, control, 0); }) {}

Item::Item(const Layout& nested) : add([nested](QBoxLayout& box) { box.addLayout(nested.Build()); }) {}

Item::Item(std::function<void(QBoxLayout&)> adder) : add(std::move(adder)) {}

Item Item::Stretch(int share)
{
    return Item([share](QBoxLayout& box) { box.addStretch(share); });
}

Item Item::Gap(int eights)
{
    return Item([eights](QBoxLayout& box) { box.addSpacing(eights * Rhythm); });
}

Item Item::Growing(QWidget& control, int share)
{
    return Item([&control, share](QBoxLayout& box) { AddTo(box, control, share); });
}

Item Item::Growing(const Layout& nested, int share)
{
    return Item([nested, share](QBoxLayout& box) { box.addLayout(nested.Build(), share); });
}

Layout::Layout(Direction direction, std::initializer_list<Item> items)
{
    std::vector<std::function<void(QBoxLayout&)>> adders;
    for (const Item& item : items)
        adders.push_back(item.add);
    build = [direction, adders = std::move(adders)] { return BuildBox(direction, adders); };
}

Layout::Layout(std::function<QLayout*()> builder) : build(std::move(builder)) {}

Layout Layout::Margin(int pixels) &&
{
    return Layout([inner = std::move(build), pixels] {
        QLayout* layout = inner();
        layout->setContentsMargins(pixels, pixels, pixels, pixels);
        return layout;
    });
}

Layout Layout::Spacing(int pixels) &&
{
    return Layout([inner = std::move(build), pixels] {
        QLayout* layout = inner();
        layout->setSpacing(pixels);
        return layout;
    });
}

QLayout* Layout::Build() const
{
    return build();
}

Pairs::Pairs(std::initializer_list<std::pair<QWidget*, QWidget*>> lines)
    : Layout([kept = std::vector(lines)] { return BuildPairs(kept); })
{
}

Label& NewLabel(const QString& name, const QString& text)
{
    auto* label = new Label(name, text);
    label->setProperty(Owned, true);
    return *label;
}

void KeepPlace(QWidget& control)
{
    QSizePolicy policy = control.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control.setSizePolicy(policy);
}

Item Inside(QWidget& container, Layout content)
{
    if (auto* panel = qobject_cast<Panel*>(&container))
        static_cast<QBoxLayout*>(panel->layout())->addLayout(content.Build(), 1);
    else
        container.setLayout(std::move(content).Margin(Rhythm).Build());
    return Item(container);
}

Item Titled(const QString& title, const Layout& content)
{
    return Item([title, content](QBoxLayout& box) {
        auto* frame = new QGroupBox(title);
        frame->setLayout(Layout(content).Margin(Rhythm).Build());
        box.addWidget(frame);
    });
}

void AddPage(TabStrip& tabs, const QString& title, Layout content)
{
    // The page takes its place first: each step up that a filled page takes styles all of its controls anew.
    auto* page = new QWidget;
    tabs.addTab(page, title);
    page->setLayout(std::move(content).Margin(WindowMargin).Build());
}

void ReleaseControls(QWidget& container)
{
    for (QWidget* control : container.findChildren<QWidget*>()) {
        // What stands in a lent container leaves with it.
        if (control->property(Lent).toBool() && container.isAncestorOf(control))
            control->setParent(nullptr);
    }
}

} // namespace forms
