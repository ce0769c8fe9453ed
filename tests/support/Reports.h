#pragma once

#include "platform/report/PreviewWindow.h"
#include "support/Practice.h"
#include "support/Rows.h"
#include "support/ScriptedDesk.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

/// For tests of printing screens: puts templates into the practice's folder and reads what was printed.
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

/// Expects a preview, checks the proposed PDF name and closes it.
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

} // namespace tests
