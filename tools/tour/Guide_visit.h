#pragma once

namespace core {
class Form1;
}

namespace tour {

class TourDesk;

/// Opens the guide by F1 and takes a picture of each of its pages, the whole of it.
void VisitGuide(TourDesk& desk, core::Form1& main);

} // namespace tour
