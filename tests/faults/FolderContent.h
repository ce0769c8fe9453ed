#pragma once

#include <QByteArray>
#include <QString>

#include <map>

namespace tests {

/// Every file below a folder, by its path from there, with its bytes.
using FolderContent = std::map<QString, QByteArray>;

FolderContent ContentOf(const QString& folder);

/// Makes these files in a folder, and the folders they are in.
void WriteContent(const QString& folder, const FolderContent& content);

/// How many bytes they are.
qint64 SizeOf(const FolderContent& content);

QByteArray BytesOf(const QString& file);

} // namespace tests
