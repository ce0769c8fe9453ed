#pragma once

namespace core {
class Form1;
}

namespace tour {

class TourDesk;

/// Reads the journal of the month so far, each of its pages, and prints each of its reports.
void VisitJournal(TourDesk& desk, core::Form1& main);

} // namespace tour
