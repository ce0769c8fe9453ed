#include "support/Accessibility.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QTableView>

namespace {

bool NeedsName(const QWidget& widget)
{
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QTableView*>(&widget);
}

} // namespace

QStringList AccessibilityFaults(QWidget& root)
{
    QStringList faults;
    for (QWidget* widget : root.findChildren<QWidget*>()) {
        if (!NeedsName(*widget))
            continue;
        QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
        if (!reader || reader->text(QAccessible::Name).trimmed().isEmpty())
            faults << QString::fromLatin1(widget->metaObject()->className()) + ' ' + widget->objectName();
    }
    return faults;
}
