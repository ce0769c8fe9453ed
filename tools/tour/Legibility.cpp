#include "Legibility.h"

#include "platform/forms/Colours.h"
#include "platform/forms/Controls.h"

#include <QAbstractScrollArea>
#include <QFontMetrics>
#include <QHash>
#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>

namespace tour {

namespace {

constexpr double TextContrast = 4.5;
constexpr double IconContrast = 3; // for disabled texts too

QString NameOf(const QWidget& widget)
{
    const QString name = widget.objectName().isEmpty() ? widget.metaObject()->className() : widget.objectName();
    return widget.parentWidget() == nullptr || widget.isWindow() ? name : NameOf(*widget.parentWidget()) + "/" + name;
}

int WidthOf(const QWidget& widget, const QString& text)
{
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

bool IsCut(const QLabel& label)
{
    const QRect room = label.contentsRect();
    if (label.text().isEmpty() || label.textFormat() == Qt::RichText ||
        qobject_cast<const forms::FigureLabel*>(&label) != nullptr) // shrinks its font until it fits
        return false;
    if (label.wordWrap())
        return label.heightForWidth(label.width()) > label.height();
    const QSize text = label.fontMetrics().size(0, label.text());
    return text.width() > room.width() || text.height() > room.height() + label.fontMetrics().descent();
}

bool IsCut(const QAbstractButton& button)
{
    const QSize needed = button.sizeHint();
    return !button.text().isEmpty() && (needed.width() > button.width() || needed.height() > button.height());
}

bool IsCut(const QComboBox& list)
{
    QStyleOptionComboBox option;
    option.initFrom(&list);
    option.editable = list.isEditable();
    const QRect room = list.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &list);
    return WidthOf(list, list.currentText().trimmed()) > room.width();
}

bool IsCut(const QTabBar& tabs)
{
    const QRect first = tabs.tabRect(0);
    const QRect last = tabs.tabRect(tabs.count() - 1);
    return tabs.count() > 0 && (first.left() < 0 || last.right() >= tabs.width());
}

/// Whether a visible heading is wider than its column.
bool IsCut(const QHeaderView& header)
{
    for (int section = 0; section < header.count(); ++section) {
        const int left = header.sectionViewportPosition(section);
        const QString text = header.model()->headerData(section, header.orientation()).toString();
        if (header.orientation() == Qt::Horizontal && left >= 0 && left < header.viewport()->width() &&
            WidthOf(header, text) > header.sectionSize(section))
            return true;
    }
    return false;
}

bool IsCut(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return IsCut(*label);
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return IsCut(*button);
    if (const auto* list = qobject_cast<const QComboBox*>(&widget))
        return IsCut(*list);
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget))
        return IsCut(*tabs);
    if (const auto* header = qobject_cast<const QHeaderView*>(&widget))
        return IsCut(*header);
    return false;
}

/// Whether the widget is in a scroll area, where it may be out of view.
bool IsScrolled(const QWidget& widget)
{
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget()->parentWidget());
    return area != nullptr && area->viewport() == widget.parentWidget();
}

bool IsOutside(const QWidget& widget)
{
    return !IsScrolled(widget) && !widget.parentWidget()->rect().contains(widget.geometry());
}

/// The highest contrast of any colour in this part of a picture with its most frequent colour.
double ContrastIn(const QImage& picture, const QRect& part)
{
    QHash<QRgb, int> counts;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            ++counts[picture.pixel(x, y)];
    QRgb ground = 0;
    for (auto each = counts.cbegin(); each != counts.cend(); ++each)
        if (each.value() > counts.value(ground))
            ground = each.key();
    double most = 1;
    for (auto each = counts.cbegin(); each != counts.cend(); ++each)
        most = qMax(most, forms::Contrast(QColor(each.key()), QColor(ground)));
    return most;
}

/// The minimum contrast required for the widget's contents; 0 if it shows nothing to read.
double NeededContrast(const QWidget& widget)
{
    const double ofText = widget.isEnabled() ? TextContrast : IconContrast;
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text().isEmpty() ? 0 : ofText;
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return !button->text().isEmpty() ? ofText : widget.isEnabled() ? IconContrast : 0;
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget))
        return (field->text() + field->placeholderText()).trimmed().isEmpty() ? 0 : ofText;
    return 0;
}

/// Whether another control, such as an open panel, covers its centre.
bool IsCovered(const QWidget& widget, const QWidget& window)
{
    const QWidget* top = window.childAt(widget.mapTo(&window, widget.rect().center()));
    return top != nullptr && top != &widget && !top->isAncestorOf(&widget) && !widget.isAncestorOf(top);
}

bool IsFaint(const QWidget& widget, const QWidget& window, const QImage& picture)
{
    const double needed = NeededContrast(widget);
    const bool whole = widget.visibleRegion().boundingRect() == widget.rect(); // fully in view
    if (needed == 0 || !whole || IsCovered(widget, window))
        return false;
    const double scale = picture.devicePixelRatio();
    const QRect place(widget.mapTo(&window, QPoint()) * scale, widget.size() * scale);
    return ContrastIn(picture, place.intersected(picture.rect())) < needed;
}

QString TextOf(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text();
    if (const auto* list = qobject_cast<const QComboBox*>(&widget))
        return list->currentText().trimmed();
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget))
        return field->text().isEmpty() ? field->placeholderText() : field->text();
    return {};
}

} // namespace

QStringList IllegibleParts(const QWidget& window, const QImage& picture)
{
    QStringList faults;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window || widget->size().isEmpty())
            continue;
        const QString name = NameOf(*widget) + " « " + TextOf(*widget) + " »";
        if (IsCut(*widget))
            faults << name + " est coupé";
        if (IsOutside(*widget))
            faults << name + " dépasse son cadre";
        if (IsFaint(*widget, window, picture))
            faults << name + " se lit mal sur son fond";
    }
    return faults;
}

} // namespace tour
