#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

#include <QObject>
#include <initializer_list>
#include <vector>

namespace forms {

/// Named labels over the headings of a grid, one for each column from the left; they show the same texts and follow the
/// columns. Owned by the grid.
class ColumnLabels : public QObject {
public:
    ColumnLabels(Grid& grid, std::initializer_list<const char*> names);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Read();
    void UpdateGeometries();

    Grid& grid;
    std::vector<Label*> labels;
};

} // namespace forms
