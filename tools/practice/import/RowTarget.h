#pragma once

#include "platform/store/Value.h"

#include <QStringList>
#include <vector>

namespace practice {

/// Receives the valid rows of a table.
class RowTarget {
public:
    RowTarget() = default;
    virtual ~RowTarget() = default;
    Q_DISABLE_COPY_MOVE(RowTarget)

    virtual void Begin(const QStringList& fields) = 0;
    /// Returns the reason why the row is refused, empty if it is taken.
    virtual QString Add(const std::vector<store::Value>& values, qint64 line) = 0;
};

} // namespace practice
