#pragma once

#include <QList>
#include <QSizeF>
#include <QString>

namespace tests {

struct PdfPage {
    QSizeF points; ///< size of the paper
    QString text;  ///< its words in the order they were written, with blanks between
};

/// The pages of a PDF as a reader sees them. Fails the test when the file is no PDF.
QList<PdfPage> ReadPdf(const QString& path);

} // namespace tests
