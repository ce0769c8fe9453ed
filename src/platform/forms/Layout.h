#pragma once

#include <QLayout>
#include <QString>
#include <initializer_list>
#include <memory>
#include <utility>

namespace forms {

class Label;
class TabStrip;
class Layout;

/// An item of a Row or Column: a control, a nested layout, a gap or a stretch.
class Item {
public:
    Item(QWidget& control); ///< natural size; ownership isn't taken
    Item(Layout&& nested);
    static Item Stretch(int share = 1); ///< growing space
    static Item Gap(int eights = 1);    ///< space of n times 8 pixels
    static Item Growing(QWidget& control, int share = 1);
    static Item Growing(Layout&& nested, int share = 1);

private:
    friend class Layout;
    Item() = default;

    QWidget* control = nullptr;
    mutable std::unique_ptr<QLayout> nested; // mutable: moved out of the initializer list
    int share = 0;
    int gap = 0; // pixels
};

/// A layout on an 8-pixel grid: Column{title, Row{a, b, Item::Stretch()}, grid}.
class Layout {
public:
    explicit Layout(std::unique_ptr<QLayout> made) : layout(std::move(made)) {}
    /// Margins: none for a nested layout, 8 pixels for a panel, 16 for a window.
    Layout Margin(int pixels) &&;
    Layout Spacing(int pixels) &&; ///< between the items; 8 by default
    std::unique_ptr<QLayout> Take() && { return std::move(layout); }

protected:
    enum class Direction { Down, Across };
    Layout(Direction direction, std::initializer_list<Item> items);

private:
    std::unique_ptr<QLayout> layout;
};

struct Row : Layout {
    Row(std::initializer_list<Item> items) : Layout(Direction::Across, items) {}
};
struct Column : Layout {
    Column(std::initializer_list<Item> items) : Layout(Direction::Down, items) {}
};

/// Pairs of label and field in two aligned columns: Pairs{{caption, field}, ...}. The label becomes the field's buddy.
struct Pairs : Layout {
    Pairs(std::initializer_list<std::pair<QWidget*, QWidget*>> lines);
};

/// A label owned by its container: a caption that the screen doesn't refer to again.
Label& NewLabel(const QString& name, const QString& text);

/// Reserves a control's space while it is hidden, so that nothing moves.
void RetainSizeWhenHidden(QWidget& control);

/// Sets the layout of a panel (below its caption) or another container; returns the container as an item.
Item Inside(QWidget& container, Layout content);

/// A titled frame around a layout: Titled("Correction", Column{...}).
Item Titled(const QString& title, Layout content);

/// Adds a page to a tab strip, with 16 pixels around.
void AddPage(TabStrip& tabs, const QString& title, Layout content);

/// Marks a control as lent to a layout: it isn't destroyed with the container.
void Lend(QWidget& control);

/// Removes all lent controls from `container`: screens hold their controls by value, so a container that is destroyed
/// first must not delete them.
void ReleaseControls(QWidget& container);

} // namespace forms
