#pragma once

#include "support/Files.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace tests {

/// Compares a text with a reviewed one and fails with the first line that differs. Tests never write reviewed texts:
/// the actual text is left in the build folder, for review. What `ignored` matches counts on neither side.
inline void ExpectGolden(const QString& text, const QString& reviewed, const QString& actual,
                         const QRegularExpression& ignored = QRegularExpression("$^"))
{
    QDir().mkpath(QFileInfo(actual).path());
    WriteFile(actual, text.toUtf8());
    const QStringList expected = QString::fromUtf8(BytesOf(reviewed)).remove(ignored).split('\n');
    const QStringList found = QString(text).remove(ignored).split('\n');
    for (qsizetype line = 0; line < std::min(expected.size(), found.size()); ++line)
        ASSERT_EQ(found[line], expected[line]) << qPrintable(reviewed) << ", line " << line + 1;
    EXPECT_EQ(found.size(), expected.size()) << qPrintable(reviewed);
}

} // namespace tests
