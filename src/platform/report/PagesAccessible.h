#pragma once

namespace report {

/// Lets assistive software read the page that a PagesView shows: a document whose text has a line for each line on
/// paper, its cells two blanks apart. Called by every view that is made; only the first call does something.
void MakePagesAccessible();

} // namespace report
