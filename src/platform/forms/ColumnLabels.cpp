#include "platform/forms/ColumnLabels.h"

#include "platform/forms/Layout.h"
#include "platform/forms/Readers.h"

#include <QEvent>
#include <QHeaderView>

namespace forms {

ColumnLabels::ColumnLabels(Grid& labelled, std::initializer_list<const char*> names)
    : QObject(&labelled), grid(labelled)
{
    const QHeaderView* header = grid.horizontalHeader();
    for (const char* name : names) {
        Label& label = NewLabel(QLatin1String(name), {});
        label.setParent(header->viewport());
        HideFromReaders(label); // the heading below has the same text
        labels.push_back(&label);
    }
    Read();
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionResized, this, &ColumnLabels::UpdateGeometries);
    connect(grid.model(), &QAbstractItemModel::headerDataChanged, this, &ColumnLabels::Read);
}

bool ColumnLabels::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        UpdateGeometries();
    return QObject::eventFilter(watched, event);
}

void ColumnLabels::Read()
{
    for (int column = 0; column < static_cast<int>(labels.size()); ++column) {
        const auto heading = [&](int role) { return grid.model()->headerData(column, Qt::Horizontal, role); };
        Label& label = *labels[static_cast<std::size_t>(column)];
        label.setText(heading(Qt::DisplayRole).toString());
        const auto alignment = heading(Qt::TextAlignmentRole).value<Qt::Alignment>();
        label.setAlignment(alignment);
        label.setProperty("heading", alignment.testFlag(Qt::AlignHCenter) ? "centred" : "aligned");
    }
}

void ColumnLabels::UpdateGeometries()
{
    const QHeaderView& header = *grid.horizontalHeader();
    for (int column = 0; column < static_cast<int>(labels.size()); ++column)
        labels[static_cast<std::size_t>(column)]->setGeometry(header.sectionViewportPosition(column), 0,
                                                              header.sectionSize(column), header.viewport()->height());
}

} // namespace forms
