#include "platform/report/PdfText.h"

#include <QProcess>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace tests {

QList<PdfPage> ReadPdf(const QString& path)
{
    QProcess reader;
    reader.start("pdftotext", {"-bbox", "-enc", "UTF-8", path, "-"});
    EXPECT_TRUE(reader.waitForFinished() && reader.exitCode() == 0) << qPrintable(path) << ": no PDF";

    QList<PdfPage> pages;
    QXmlStreamReader xml(reader.readAllStandardOutput());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("page"))
            pages.append(
                {{xml.attributes().value("width").toDouble(), xml.attributes().value("height").toDouble()}, {}});
        else if (xml.name() == QLatin1String("word"))
            pages.last().text += xml.readElementText() + " ";
    }
    EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
    return pages;
}

} // namespace tests
