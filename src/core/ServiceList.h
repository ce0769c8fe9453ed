#pragma once

#include "platform/dao/Recordset.h"

namespace forms {
class Grid;
} // namespace forms

/// The list of services with the number and the sum of their acts, shown and printed by three screens.
namespace core {

class KeyedList;
class ScratchRows;

/// The columns of such a list; the last one isn't in all of them.
namespace ServiceColumn {
enum : int { Name, Count, Received, Theoretical };
} // namespace ServiceColumn

/// Lists a service with the number and the sum of its acts, fields S1 and S2 of `totals`; figures that aren't above 0
/// aren't shown. Returns the row.
int AppendService(KeyedList& services, const dao::Recordset& service, const dao::Recordset& totals);

/// Adds the rows of such a list to a report, with the figures as shown.
void PrintServices(ScratchRows& rows, const forms::Grid& services);

} // namespace core
