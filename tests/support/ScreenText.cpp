#include "support/ScreenText.h"

#include "platform/forms/Grid.h"
#include "support/Golden.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMetaProperty>
#include <QSet>
#include <QTabBar>

namespace tests {
namespace {

/// Properties that a screen sets. What is false, zero or empty isn't written.
constexpr const char* Properties =
    "text title placeholderText toolTip accessibleName accessibleDescription iconName note alignment maxLength "
    "readOnly wordWrap frameShape checkable checked flat maxVisibleItems currentIndex maximum value selectionMode "
    "selectionBehavior focusPolicy autoDefault default textFormat textVisible autoRepeat windowTitle";

class Description {
public:
    QString Of(const QWidget& screen)
    {
        Add(screen, 0, {});
        return lines.join('\n') + '\n';
    }

private:
    static QString Shown(const QMetaProperty& property, const QWidget& control)
    {
        const QVariant value = property.read(&control);
        const QMetaEnum names = property.enumerator();
        if (property.isEnumType()) // the usual alignment isn't written
            return value.toInt() == 0 || value.toInt() == int(Qt::AlignLeft | Qt::AlignVCenter)
                       ? QString()
                       : QString::fromLatin1(names.valueToKeys(value.toInt()));
        if (value.toString() == "32767") // the most that a field takes, unless set
            return {};
        const bool isUnset = value.metaType().id() == QMetaType::Bool ? !value.toBool() : value.toString() == "0";
        return isUnset ? QString() : value.toString();
    }

    static QString PropertiesOf(const QWidget& control)
    {
        QString text;
        for (const QByteArray& name : QByteArray(Properties).split(' ')) {
            const int index = control.metaObject()->indexOfProperty(name.constData());
            const QString value = index < 0 ? QString() : Shown(control.metaObject()->property(index), control);
            if (!value.isEmpty())
                text += QString(" %1=%2").arg(QString::fromLatin1(name), value);
        }
        for (const QByteArray& name : control.dynamicPropertyNames())
            if (!name.startsWith("_q") && !name.contains("By")) // who owns it
                text += QString(" %1=%2").arg(QString::fromLatin1(name), control.property(name.constData()).toString());
        return text;
    }

    static QString Limit(int least, int most)
    {
        if (least == most)
            return QString::number(least);
        return (least > 0 ? QString::number(least) : QString()) + ".." +
               (most < QWIDGETSIZE_MAX ? QString::number(most) : QString());
    }

    QString StateOf(const QWidget& control) const
    {
        QString text;
        if (control.isHidden() && !control.isWindow())
            text += " hidden";
        if (!control.isEnabledTo(control.parentWidget()))
            text += " disabled";
        if (control.sizePolicy().retainSizeWhenHidden())
            text += " keeps its place";
        if (control.window()->focusWidget() == &control)
            text += " focused";
        if (control.font().bold())
            text += " bold";
        if (control.layoutDirection() == Qt::RightToLeft)
            text += " right-to-left";
        if (const auto* label = qobject_cast<const QLabel*>(&control); label != nullptr && label->buddy() != nullptr)
            text += " for " + label->buddy()->objectName();
        if (control.font().pixelSize() != QApplication::font().pixelSize())
            text += QString(" font [%1]").arg(control.font().pixelSize());
        if (control.isWindow())
            return text + QString(" [%1 x %2]").arg(control.width()).arg(control.height());
        const QString width = Limit(control.minimumWidth(), control.maximumWidth());
        const QString height = Limit(control.minimumHeight(), control.maximumHeight());
        if (width != ".." || height != "..")
            text += " [" + width + " x " + height + "]";
        return text;
    }

    void AddLine(int depth, QString text) { lines << QString(2 * depth, ' ') + text.replace('\n', "\\n"); }

    void AddTable(const QTableView& table, int depth)
    {
        const QAbstractItemModel& cells = *table.model();
        for (int column = 0; column < cells.columnCount(); ++column) {
            const auto name = [&](int role) { return cells.headerData(column, Qt::Horizontal, role).toString(); };
            QString line = "| " + name(Qt::DisplayRole) + " | " +
                           cells.data(cells.index(0, column), Qt::DisplayRole).toString() + " | " +
                           QString::number(cells.data(cells.index(0, column), Qt::TextAlignmentRole).toInt(), 16);
            if (!name(Qt::ToolTipRole).isEmpty())
                line += " toolTip=" + name(Qt::ToolTipRole);
            line += QString(" [%1]").arg(table.columnWidth(column));
            AddLine(depth, line);
        }
        AddLine(depth, QString("%1 rows [%2 x %3..], current %4, %5")
                           .arg(cells.rowCount())
                           .arg(table.rowHeight(0))
                           .arg(table.horizontalHeader()->minimumSectionSize())
                           .arg(table.currentIndex().row())
                           .arg(table.currentIndex().column()));
    }

    void AddActions(const QWidget& control, int depth)
    {
        for (const QAction* const action : control.actions()) {
            AddLine(depth, QString("%1 | %2 | %3%4%5")
                               .arg(action->text(), action->shortcut().toString(), action->toolTip(),
                                    action->isVisible() ? "" : " hidden", action->isEnabled() ? "" : " disabled"));
            if (action->menu() != nullptr)
                AddActions(*action->menu(), depth + 1);
        }
    }

    static QString KindOf(const QLayout& layout)
    {
        const auto* const box = qobject_cast<const QBoxLayout*>(&layout);
        if (box == nullptr)
            return layout.metaObject()->className();
        return box->direction() == QBoxLayout::TopToBottom ? "Column" : "Row";
    }

    void AddLayout(const QLayout& layout, int depth, const QString& place)
    {
        const QMargins margins = layout.contentsMargins();
        AddLine(depth, QString("%1 %2, %3 %4 %5 %6%7")
                           .arg(KindOf(layout))
                           .arg(layout.spacing())
                           .arg(margins.left())
                           .arg(margins.top())
                           .arg(margins.right())
                           .arg(margins.bottom())
                           .arg(place));
        for (int index = 0; index < layout.count(); ++index) {
            QLayoutItem& item = *layout.itemAt(index);
            QString where;
            if (const auto* box = qobject_cast<const QBoxLayout*>(&layout); box != nullptr && box->stretch(index) > 0)
                where += QString(" share %1").arg(box->stretch(index));
            if (const auto* grid = qobject_cast<const QGridLayout*>(&layout)) {
                int row = 0, column = 0, rows = 0, columns = 0;
                grid->getItemPosition(index, &row, &column, &rows, &columns);
                where += QString(" at %1, %2").arg(row).arg(column) +
                         (rows * columns > 1 ? QString(" over %1 x %2").arg(rows).arg(columns) : QString()) +
                         (grid->columnStretch(column) > 0 ? QString(" share %1").arg(grid->columnStretch(column))
                                                          : QString());
            }
            if (item.alignment() != 0)
                where += QString(" aligned %1").arg(int(item.alignment()), 0, 16);
            if (item.widget() != nullptr)
                Add(*item.widget(), depth + 1, where);
            else if (item.layout() != nullptr)
                AddLayout(*item.layout(), depth + 1, where);
            else
                AddLine(depth + 1,
                        QString("gap %1 x %2").arg(item.sizeHint().width()).arg(item.sizeHint().height()) + where);
        }
    }

    void Add(const QWidget& control, int depth, const QString& place)
    {
        if (known.contains(&control))
            return;
        known.insert(&control);
        AddLine(depth, QString(control.metaObject()->className()).section("::", -1) + " " + control.objectName() +
                           PropertiesOf(control) + StateOf(control) + place);
        if (const auto* table = qobject_cast<const QTableView*>(&control))
            return AddTable(*table, depth + 1);
        if (const auto* tabs = qobject_cast<const QTabBar*>(&control)) {
            for (int tab = 0; tab < tabs->count(); ++tab)
                AddLine(depth + 1, "| " + tabs->tabText(tab) + " | " + tabs->tabToolTip(tab));
            return;
        }
        if (const auto* combo = qobject_cast<const QComboBox*>(&control)) {
            for (int entry = 0; entry < combo->count(); ++entry)
                AddLine(depth + 1, "| " + combo->itemText(entry));
            return;
        }
        if (qobject_cast<const QAbstractItemView*>(&control) != nullptr)
            return;
        AddActions(control, depth + 1);
        if (control.layout() != nullptr)
            AddLayout(*control.layout(), depth + 1, {});
        for (QObject* const child : control.children())
            if (const auto* inner = qobject_cast<const QWidget*>(child);
                inner != nullptr && !inner->isWindow() && !inner->objectName().endsWith("container"))
                Add(*inner, depth + 1, {});
    }

    QStringList lines;
    QSet<const QWidget*> known;
};

} // namespace

QString ScreenAsText(const QWidget& screen)
{
    return Description().Of(screen);
}

void ExpectGoldenScreen(const QString& text, const QString& reviewed, const QString& actual)
{
    static const QRegularExpression sizes(" \\[[0-9. x]+\\]");
    const bool isOther = QString(qVersion()) != "6.4.2" || QSysInfo::productType() != "debian";
    ExpectGolden(text, reviewed, actual, isOther ? sizes : QRegularExpression("$^"));
}

} // namespace tests
