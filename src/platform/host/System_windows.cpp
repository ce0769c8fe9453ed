#include "platform/host/System_windows.h"

#include <QDir>

namespace host {

QString NativePath(const QString& path)
{
    constexpr qsizetype mostUsual = 240; // of 260, so that "-journal" fits too
    const QString whole = QDir::toNativeSeparators(QDir::cleanPath(QDir(path).absolutePath()));
    if (whole.size() <= mostUsual || whole.startsWith(R"(\\?\)"))
        return whole;
    return whole.startsWith(R"(\\)") ? R"(\\?\UNC)" + whole.mid(1) : R"(\\?\)" + whole;
}

std::wstring WidePath(const QString& path)
{
    return NativePath(path).toStdWString();
}

} // namespace host
