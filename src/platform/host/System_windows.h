#pragma once

#include <QString>
#include <string>

#include <windows.h>
// Names of ours that are macros there.
#undef CopyFile
#undef SetFileAttributes

namespace host {

/// For the files that call Windows itself.

/// Missing in the compiler's headers.
inline constexpr int ErrorDiskQuotaExceeded = 1295;

/// The absolute path with backslashes; a long one in the form that has no limit of length ("\\?\C:\...").
QString NativePath(const QString& path);
std::wstring WidePath(const QString& path);

/// An owning handle of an object of the system.
class Handle {
public:
    explicit Handle(HANDLE opened) : handle(opened) {}
    ~Handle()
    {
        if (IsOpen())
            ::CloseHandle(handle);
    }
    Q_DISABLE_COPY_MOVE(Handle)

    bool IsOpen() const { return handle != INVALID_HANDLE_VALUE && handle != nullptr; }
    HANDLE Get() const { return handle; }

private:
    HANDLE handle;
};

} // namespace host
