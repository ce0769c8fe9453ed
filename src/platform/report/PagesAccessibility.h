#pragma once

namespace report {

/// Lets assistive software read the page that a PagesView shows: a document whose text has a line for each line on
/// paper, its cells two blanks apart. Every view calls it; only the first call has an effect.
void MakePagesAccessible();

} // namespace report
