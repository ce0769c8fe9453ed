#include "data/OldDatabase.h"

#include <QFile>
#include <QFileInfo>

namespace data {

bool IsOldDatabase(const QByteArray& head)
{
    constexpr qsizetype nameStart = 4;
    const QByteArray name = head.mid(nameStart);
    return head.size() >= OldDatabaseHead && (name.startsWith("Standard Jet DB") || name.startsWith("Standard ACE DB"));
}

bool IsOldDatabase(const QString& path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) && IsOldDatabase(file.read(OldDatabaseHead));
}

} // namespace data
