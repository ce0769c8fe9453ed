#pragma once

#include <QString>

class QWidget;

namespace report {

/// Asks where to save a PDF, in the system's own dialog where it has one; empty if that is declined. An existing file
/// isn't asked about.
QString AskPdfPath(QWidget& parent, const QString& proposedPath);

} // namespace report
