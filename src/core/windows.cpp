#include "core/windows.h"

#include "platform/forms/Form.h"

#include <QEvent>
#include <QPointer>

namespace core {

namespace {

/// Keeps a panel centred over an area, in its natural size but no larger than the area.
class Centring : public QObject {
public:
    explicit Centring(QWidget& floatingPanel) : QObject(&floatingPanel), panel(floatingPanel)
    {
        panel.installEventFilter(this);
    }

    void Over(QWidget& newArea)
    {
        if (area != nullptr)
            area->removeEventFilter(this);
        area = &newArea;
        area->installEventFilter(this);
        Centre();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto type = event->type();
        const bool areaChanges = type == QEvent::Resize || type == QEvent::Move || type == QEvent::Show;
        const bool contentsChange = type == QEvent::LayoutRequest;
        if (area != nullptr && (watched == &panel ? contentsChange : areaChanges))
            Centre();
        return false;
    }

private:
    void Centre()
    {
        panel.resize(panel.sizeHint().boundedTo(area->size()).expandedTo(panel.minimumSizeHint()));
        panel.move(area->mapTo(panel.parentWidget(), area->rect().center()) - panel.rect().center());
    }

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
    CentringOf(panel).Over(area);
    panel.raise();
    panel.show();
}

} // namespace core
