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

/// One thing in a Row or Column: a control, a nested layout, a gap or a stretch.
class Item {
public:
    Item(QWidget& control); ///< takes its natural size; stays its owner's
    Item(Layout&& nested);
    static Item Stretch(int share = 1); ///< empty room that grows
    static Item Gap(int eights = 1);    ///< empty room of n times 8 pixels
    static Item Growing(QWidget& control, int share = 1);
    static Item Growing(Layout&& nested, int share = 1);

private:
    friend class Layout;
    Item() = default;

    QWidget* control = nullptr;
    mutable std::unique_ptr<QLayout> nested; // given away by the list that an item is written in
    int share = 0;
    int gap = 0; // pixels
};

/// An arrangement on the 8-pixel rhythm: Column{title, Row{a, b, Item::Stretch()}, grid}.
class Layout {
public:
    explicit Layout(std::unique_ptr<QLayout> made) : layout(std::move(made)) {}
    /// No margin is around a nested layout; a window or panel has 8 pixels (16 for a window).
    Layout Margin(int pixels) &&;
    Layout Spacing(int pixels) &&; ///< between the things of this layout; 8 by default
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

/// Label and field pairs in two aligned columns: Pairs{{caption, field}, ...}. The label becomes the field's buddy.
struct Pairs : Layout {
    Pairs(std::initializer_list<std::pair<QWidget*, QWidget*>> lines);
};

/// A label that belongs to the container it is put into: a caption that the screen never refers to again.
Label& NewLabel(const QString& name, const QString& text);

/// Lets a control keep its room while it is hidden, so that nothing moves when it comes and goes.
void KeepPlace(QWidget& control);

/// Puts the arrangement into a panel (under its caption) or any other container; returns the container as an item.
Item Inside(QWidget& container, Layout content);

/// A titled frame around an arrangement: Titled("Correction", Column{...}).
Item Titled(const QString& title, Layout content);

/// Adds a page to a tab strip, with 16 pixels around.
void AddPage(TabStrip& tabs, const QString& title, Layout content);

/// Marks a control that a layout takes in: it stays its owner's when the container is destroyed.
void Lend(QWidget& control);

/// Takes out of `container` every control that a layout was lent by its owner. Screens hold their controls by value, so
/// a container that is destroyed first must not delete them.
void ReleaseControls(QWidget& container);

} // namespace forms
