#pragma once

namespace core {
class Form1;
}

namespace tour {

class TourDesk;

/// Shows the journal of the month so far, page by page, and prints each of its reports.
void VisitJournal(TourDesk& desk, core::Form1& main);

} // namespace tour
