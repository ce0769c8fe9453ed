#pragma once

#include "support/Files.h"

#include <map>

namespace tests {

/// The files below a folder by relative path, with their content.
using FolderContent = std::map<QString, QByteArray>;

FolderContent ContentOf(const QString& folder);

/// Creates these files in a folder, with subfolders.
void WriteContent(const QString& folder, const FolderContent& content);

/// Their total size in bytes.
qint64 SizeOf(const FolderContent& content);

} // namespace tests
