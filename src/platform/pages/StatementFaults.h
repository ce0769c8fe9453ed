#pragma once

#include "platform/dao/ReadOnlyQuery.h"
#include "platform/pages/Template.h"

namespace pages {

/// Runs `read` and appends its errors to `faults`: an error in the template's select, which starts at `selectLine`,
/// with its line; others as faults of the whole file.
template <class Reading>
void CollectStatementFaults(QList<Fault>& faults, int selectLine, Reading read)
{
    try {
        read();
    } catch (const dao::StatementError& error) {
        faults.append({selectLine + error.Line(), error.Description()});
    } catch (const basic::RuntimeError& error) {
        faults.append({0, error.Description()});
    }
}

} // namespace pages
