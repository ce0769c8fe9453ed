#include "platform/host/SaveDialog_windows.h"
#include "platform/report/AskPdfPath.h"

#include <QFileInfo>
#include <QWidget>

namespace report {

QString AskPdfPath(QWidget& parent, const QString& proposedPath)
{
    const QFileInfo proposed(proposedPath);
    return host::AskPath({.title = "Enregistrer en PDF",
                          .folder = proposed.absolutePath(),
                          .name = proposed.fileName(),
                          .kind = "PDF",
                          .ending = "pdf"},
                         parent.winId());
}

} // namespace report
