#include "platform/host/OwnerOnly.h"

#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>

namespace host {

OwnerOnly::OwnerOnly() : before(::umask(S_IRWXG | S_IRWXO)) {}

OwnerOnly::~OwnerOnly()
{
    ::umask(before);
}

bool MakePrivate(const QString& path)
{
    const mode_t mode = QFileInfo(path).isDir() ? S_IRWXU : S_IRUSR | S_IWUSR;
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

} // namespace host
