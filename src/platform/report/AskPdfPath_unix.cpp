#include "platform/report/AskPdfPath.h"

#include <QFileDialog>
#include <QFileInfo>

namespace report {
namespace {

/// Never destroyed: a file dialog would write settings into the user's home.
QFileDialog& SaveDialog()
{
    static QFileDialog& dialog = *new QFileDialog(nullptr, "Enregistrer en PDF");
    dialog.setObjectName(QStringLiteral("SaveDialog"));
    dialog.setNameFilter("PDF (*.pdf)");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    return dialog;
}

} // namespace

QString AskPdfPath(QWidget& parent, const QString& proposedPath)
{
    QFileDialog& dialog = SaveDialog();
    dialog.setParent(&parent, dialog.windowFlags());
    dialog.setDirectory(QFileInfo(proposedPath).absolutePath());
    dialog.selectFile(QFileInfo(proposedPath).fileName());
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    dialog.setParent(nullptr, dialog.windowFlags());
    return isAccepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace report
