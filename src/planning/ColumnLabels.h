#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

#include <QObject>
#include <initializer_list>
#include <vector>

namespace planning {

/// Labels with names of their own over the headings of a grid, one for each column from the left: they show what the
/// headings say and stay on them wherever the columns go. The grid owns them.
class ColumnLabels : public QObject {
public:
    ColumnLabels(forms::Grid& grid, std::initializer_list<const char*> names);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Read();
    void Place();

    forms::Grid& grid;
    std::vector<forms::Label*> labels;
};

} // namespace planning
