#pragma once

#include "platform/report/PreviewWindow.h"
#include "support/Practice.h"
#include "support/ScriptedDesk.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

/// What the tests of printing screens need: the templates of the program in the practice's folder, and a look at what a
/// print left.
namespace tests {

/// Puts a template of the program into the data folder.
inline void PutTemplate(const Practice& practice, const QString& name)
{
    QFile::remove(practice.File(name));
    ASSERT_TRUE(QFile::copy(QStringLiteral(REPORTS_FOLDER "/") + name, practice.File(name))) << qPrintable(name);
}

inline void RemoveTemplate(const Practice& practice, const QString& name)
{
    QFile::remove(practice.File(name));
}

/// The next print shows its preview, which the user closes, having seen what it proposes as the name of a PDF.
inline void ExpectPreview(ScriptedDesk& desk, const QString& pdfName)
{
    desk.WhenModal<report::PreviewWindow>([pdfName](report::PreviewWindow& preview) {
        EXPECT_EQ(preview.objectName(), "Preview");
        QString proposed;
        preview.AskPdfPath = [&](report::PreviewWindow&, const QString& path) {
            return proposed = QFileInfo(path).fileName(), QString();
        };
        preview.SaveButton.click();
        EXPECT_EQ(proposed, pdfName + ".pdf");
        preview.Unload();
    });
}

/// The rows of a statement, each as its fields with "|" between; "-" for Null. Read through a connection of its
/// own.
inline QStringList RowsOf(Practice& practice, const QString& statement)
{
    QStringList lines;
    dao::Recordset rows = practice.Rows(statement);
    for (; !rows.IsEOF(); rows.MoveNext()) {
        QStringList fields;
        for (int field = 0; field < rows.FieldCount(); ++field)
            fields << (rows.Fields(field).IsNull() ? QString("-") : rows.Fields(field).Text());
        lines << fields.join('|');
    }
    return lines;
}

} // namespace tests
