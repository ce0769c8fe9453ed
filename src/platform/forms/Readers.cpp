#include "platform/forms/Readers.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace forms {

namespace {

constexpr auto Unread = "hiddenFromReaders";

class UnreadControl : public QAccessibleWidget {
public:
    explicit UnreadControl(QWidget* control) : QAccessibleWidget(control, QAccessible::Pane) {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

QAccessibleInterface* MakeUnread(const QString&, QObject* object)
{
    auto* control = qobject_cast<QWidget*>(object);
    return control != nullptr && control->property(Unread).toBool() ? new UnreadControl(control) : nullptr;
}

} // namespace

void HideFromReaders(QWidget& control)
{
    static const bool installed = [] {
        QAccessible::installFactory(MakeUnread);
        return true;
    }();
    Q_UNUSED(installed)
    control.setProperty(Unread, true);
}

} // namespace forms
