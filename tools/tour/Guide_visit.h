#pragma once

namespace core {
class Form1;
}

namespace tour {

class TourDesk;

/// Opens the guide with F1 and saves a picture of each whole page.
void VisitGuide(TourDesk& desk, core::Form1& main);

} // namespace tour
