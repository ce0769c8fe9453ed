#include "platform/forms/Scrolling.h"

#include <QApplication>
#include <QPointer>
#include <QScrollArea>
#include <QVBoxLayout>

namespace forms {

void MakeScrollable(QWidget& window)
{
    const QPointer<QWidget> focus = window.focusWidget();
    const auto controls = window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    auto* content = new QWidget;
    content->setLayout(window.layout());
    auto* outer = new QVBoxLayout(&window);
    outer->setContentsMargins({});
    for (QWidget* control : controls) // those in the layout have moved already
        if (control->parentWidget() == &window && !control->isWindow())
            control->setParent(content);

    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(content);
    for (QWidget* ground : {area->viewport(), content})
        ground->setAutoFillBackground(false); // the window's background shows
    outer->addWidget(area);
    area->show();
    if (focus)
        focus->setFocus();
    QObject::connect(qApp, &QApplication::focusChanged, area, [area, content](QWidget*, QWidget* focused) {
        if (content->isAncestorOf(focused))
            area->ensureWidgetVisible(focused);
    });
}

} // namespace forms
