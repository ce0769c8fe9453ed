#pragma once

#include <QHeaderView>

namespace forms {

/// The column headings of a grid, with an optional line above for headings that span several columns.
class GridHeader : public QHeaderView {
    Q_OBJECT
public:
    explicit GridHeader(QWidget* parent);

    void AddGroup(int firstColumn, int lastColumn, const QString& text);
    /// The least width in pixels at which the column's heading isn't cut.
    int NeededWidth(int column) const;
    QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int column) const override;

private:
    struct Group {
        int firstColumn;
        int lastColumn;
        QString text;
    };

    void PaintGroup(QPainter& painter, const Group& group, const QRect& part) const;
    int LineHeight() const;
    Qt::Alignment AlignmentOf(int column) const;
    int InsetOf(int column) const;

    QList<Group> groups;
};

} // namespace forms
