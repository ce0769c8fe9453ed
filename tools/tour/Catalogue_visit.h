#pragma once

namespace core {
class Form1;
}

namespace tour {

class TourDesk;

/// Enters two services, moves the second and deletes it again, and changes a rate.
void VisitCatalogue(TourDesk& desk, core::Form1& main);

} // namespace tour
