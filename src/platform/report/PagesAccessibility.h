#pragma once

namespace report {

/// Makes the page shown by a PagesView accessible as a document with one text line for each printed line, cells
/// separated by two blanks. Every view calls it; only the first call has an effect.
void MakePagesAccessible();

} // namespace report
