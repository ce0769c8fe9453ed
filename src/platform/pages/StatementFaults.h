#pragma once

#include "platform/dao/ReadOnlyQuery.h"
#include "platform/pages/Template.h"

namespace pages {

/// Runs `read` and appends what it raises to `faults`: a mistake in the template's select, which starts in
/// `selectLine`, with its line; anything else as a fault of the whole file.
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
