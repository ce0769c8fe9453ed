#include "faults/FolderContent.h"

#include <QDir>
#include <QDirIterator>

namespace tests {

FolderContent ContentOf(const QString& folder)
{
    FolderContent content;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        content[QDir(folder).relativeFilePath(file)] = BytesOf(file);
    }
    return content;
}

qint64 SizeOf(const FolderContent& content)
{
    qint64 size = 0;
    for (const auto& [name, bytes] : content)
        size += bytes.size();
    return size;
}

void WriteContent(const QString& folder, const FolderContent& content)
{
    for (const auto& [name, bytes] : content) {
        const QString path = QDir(folder).filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        WriteFile(path, bytes);
    }
}

} // namespace tests
