#include "core/windows.h"

#include "platform/forms/Form.h"

#include <QEvent>
#include <QPointer>

namespace core {

namespace {

/// Keeps a panel in the middle of an area.
class Centring : public QObject {
public:
    explicit Centring(QWidget& floatingPanel) : QObject(&floatingPanel), panel(floatingPanel) {}

    void Over(QWidget& newArea)
    {
        if (area != nullptr)
            area->removeEventFilter(this);
        area = &newArea;
        area->installEventFilter(this);
        Centre();
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        const auto type = event->type();
        if (type == QEvent::Resize || type == QEvent::Move || type == QEvent::Show)
            Centre();
        return false;
    }

private:
    void Centre() { panel.move(area->mapTo(panel.parentWidget(), area->rect().center()) - panel.rect().center()); }

    QWidget& panel;
    QPointer<QWidget> area;
};

Centring& CentringOf(QWidget& panel)
{
    for (QObject* child : panel.children())
        if (auto* centring = dynamic_cast<Centring*>(child))
            return *centring;
    return *new Centring(panel);
}

} // namespace

void CenterForm(forms::Form& window)
{
    window.Centre();
}

void FloatOver(QWidget& panel, QWidget& area)
{
    panel.ensurePolished();
    panel.adjustSize();
    CentringOf(panel).Over(area);
    panel.raise();
    panel.show();
}

} // namespace core
