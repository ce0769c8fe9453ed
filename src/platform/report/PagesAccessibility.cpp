#include "platform/report/PagesAccessibility.h"

#include "platform/report/PagesView.h"

#include <QAccessibleWidget>
#include <algorithm>

namespace report {
namespace {

class PagesAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit PagesAccessible(PagesView& pages) : QAccessibleWidget(&pages, QAccessible::Document), view(pages) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                                  : QAccessibleWidget::interface_cast(type);
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        return state;
    }

    QString text(int start, int end) const override { return view.PageText().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(view.PageText().size()); }
    int cursorPosition() const override { return std::min(cursor, characterCount()); }
    void setCursorPosition(int position) override { cursor = std::max(position, 0); }
    using QAccessibleWidget::text;

    // No selection and no text attributes.
    void selection(int, int* start, int* end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint&) const override { return 0; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int* start, int* end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    PagesView& view;
    int cursor = 0;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object)
{
    auto* view = qobject_cast<PagesView*>(object);
    return view != nullptr ? new PagesAccessible(*view) : nullptr; // owned by the toolkit's cache
}

} // namespace

void MakePagesAccessible()
{
    QAccessible::installFactory(MakeAccessible); // the factory is installed only once
}

} // namespace report
