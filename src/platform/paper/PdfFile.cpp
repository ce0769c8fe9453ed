#include "platform/paper/PdfFile.h"

#include "platform/basic/RuntimeError.h"
#include "platform/host/OwnerOnly.h"
#include "platform/pages/PageLayout.h"
#include "platform/pages/PageMeasures.h"
#include "platform/paper/PagePainter.h"
#include "platform/paper/Sheet.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace paper {
namespace {

constexpr int PdfResolution = 1200; // dots per inch

/// Opens a temporary file, readable by its owner only, next to `file`'s path; commit renames it.
void OpenForOwner(QSaveFile& file)
{
    const auto ownerOnly = host::ForOwnerOnly();
    if (file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return;
    const QFileInfo folder(QFileInfo(file.fileName()).path());
    if (!folder.isDir())
        throw basic::RuntimeError(basic::Error::PathNotFound);
    throw basic::RuntimeError(file.error() == QFileDevice::ResourceError ? basic::Error::DiskFull
                                                                         : basic::Error::PermissionDenied);
}

} // namespace

void WritePdf(const pages::PageLayout& layout, PagePainter& painter, const QString& path)
{
    QSaveFile file(path);
    OpenForOwner(file);
    {
        QPdfWriter writer(&file);
        writer.setResolution(PdfResolution);
        writer.setPageLayout(SheetOf(layout.Design()));
        writer.setTitle(layout.Design().title);
        writer.setCreator(QCoreApplication::applicationName());
        QPainter onPaper(&writer);
        for (int page = 0; page < layout.PageCount() && file.error() == QFileDevice::NoError; ++page) {
            if (page > 0)
                writer.newPage();
            painter.Paint(onPaper, layout.MakePage(page), PdfResolution / pages::measures::PerInch);
        }
    }
    if (!file.commit()) // open succeeded but writing failed: full disk or quota
        throw basic::RuntimeError(basic::Error::DiskFull);
    host::MakePrivate(path);
}

} // namespace paper
