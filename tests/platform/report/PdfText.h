#pragma once

#include <QList>
#include <QSizeF>
#include <QString>

namespace tests {

struct PdfPage {
    QSizeF points; ///< size of the paper
    QString text;  ///< its words in the order they were written, with blanks between
};

/// The pages of a PDF as read by poppler. Fails the test when the file isn't a PDF.
QList<PdfPage> ReadPdf(const QString& path);

} // namespace tests
