#include "platform/host/SystemErrors.h"
#include "platform/host/SystemFile.h"
#include "platform/host/System_windows.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <vector>

namespace host {
namespace {

/// Missing in the compiler's headers.
constexpr auto RenameInfoEx = FILE_INFO_BY_HANDLE_CLASS(22);

constexpr DWORD SharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// How long to wait for a program, such as a virus scanner, that holds a file for a moment.
constexpr int PatienceMs = 5000;
constexpr int BetweenTriesMs = 20;

/// The bytes that SQLite locks; a connection holds some of them for as long as it lives.
constexpr DWORD FirstLockedByte = 0x40000000;
constexpr DWORD LockedBytes = 512;

bool IsHeldForAMoment(DWORD error)
{
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_ACCESS_DENIED;
}

HANDLE Open(const QString& path, DWORD access, DWORD share, DWORD disposition, DWORD flags = FILE_ATTRIBUTE_NORMAL)
{
    return ::CreateFileW(WidePath(path).c_str(), access, share, nullptr, disposition, flags, nullptr);
}

/// Opens a file of ours, waiting for a program that doesn't share it.
HANDLE OpenPatiently(const QString& path, OpenFile::Access access)
{
    using Access = OpenFile::Access;
    const DWORD rights = access == Access::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    const DWORD disposition = access == Access::Create      ? OPEN_ALWAYS
                              : access == Access::CreateNew ? CREATE_NEW
                                                            : OPEN_EXISTING;
    const QDeadlineTimer deadline(PatienceMs);
    for (;;) {
        HANDLE const file = Open(path, rights, SharedByAll, disposition);
        if (file != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_SHARING_VIOLATION || deadline.hasExpired())
            return file;
        QThread::msleep(BetweenTriesMs);
    }
}

bool TryLock(HANDLE file, DWORD first, DWORD length)
{
    OVERLAPPED place = {};
    place.Offset = first;
    if (::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, length, 0, &place) != 0)
        return true;
    const DWORD error = ::GetLastError();
    return error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING;
}

qint64 Number(DWORD high, DWORD low)
{
    return qint64(quint64(high) << 32 | low);
}

/// The error of a call that others may have made fail for a moment: raises it once that has taken too long, or when it
/// is another one.
void WaitOrRaise(const QDeadlineTimer& deadline, const QString& path)
{
    const int error = LastSystemError();
    if (!IsHeldForAMoment(DWORD(error)) || deadline.hasExpired())
        RaiseFileError(error, path);
    QThread::msleep(BetweenTriesMs);
}

} // namespace

bool TryRenameOverHeld(const QString& path, const QString& target)
{
    const Handle file(Open(path, DELETE | GENERIC_WRITE, SharedByAll, OPEN_EXISTING));
    if (!file.IsOpen())
        return false;
    const std::wstring name = WidePath(target);
    constexpr std::size_t head = sizeof(FILE_RENAME_INFO);
    std::vector<std::byte> memory(head + name.size() * sizeof(wchar_t));
    auto* const rename = new (memory.data()) FILE_RENAME_INFO{};
    rename->Flags = FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS;
    rename->FileNameLength = DWORD(name.size() * sizeof(wchar_t));
    std::copy(name.begin(), name.end(), static_cast<wchar_t*>(rename->FileName));
    if (::SetFileInformationByHandle(file.Get(), RenameInfoEx, memory.data(), DWORD(memory.size())) == 0)
        return false;
    ::FlushFileBuffers(file.Get()); // the new name, too
    return true;
}

namespace {

class LockFile : public FolderHold {
public:
    explicit LockFile(HANDLE opened) : file(opened) {}

private:
    Handle file; ///< deleted when it is closed
};

} // namespace

const char* const SqliteSystem = "win32-longpath";

std::string SystemPath(const QString& path)
{
    return NativePath(path).toStdString();
}

FileIdentity IdentityOf(const QString& path)
{
    constexpr qint64 nanosecondsOfTick = 100;
    const Handle file(Open(path, FILE_READ_ATTRIBUTES, SharedByAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
    BY_HANDLE_FILE_INFORMATION state = {};
    FILE_BASIC_INFO times = {};
    if (!file.IsOpen() || ::GetFileInformationByHandle(file.Get(), &state) == 0 ||
        ::GetFileInformationByHandleEx(file.Get(), FileBasicInfo, &times, sizeof times) == 0)
        return {};
    return {state.dwVolumeSerialNumber, quint64(Number(state.nFileIndexHigh, state.nFileIndexLow)),
            Number(state.nFileSizeHigh, state.nFileSizeLow), times.LastWriteTime.QuadPart * nanosecondsOfTick,
            times.ChangeTime.QuadPart * nanosecondsOfTick};
}

bool IsWritable(const QString& path)
{
    const DWORD attributes = ::GetFileAttributesW(WidePath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) // whose attribute says nothing about its entries
        return Handle(Open(path, FILE_ADD_FILE, SharedByAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS)).IsOpen();
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return false;
    return Handle(Open(path, GENERIC_WRITE, SharedByAll, OPEN_EXISTING)).IsOpen() ||
           ::GetLastError() == ERROR_SHARING_VIOLATION;
}

bool IsOpenElsewhere(const QString& path)
{
    const Handle file(Open(path, GENERIC_READ, SharedByAll, OPEN_EXISTING));
    return file.IsOpen() && !TryLock(file.Get(), FirstLockedByte, LockedBytes);
}

bool IsOnShare(const QString& path)
{
    const QString whole = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    return whole.startsWith(R"(\\)") || ::GetDriveTypeW(whole.left(3).toStdWString().c_str()) == DRIVE_REMOTE;
}

qint64 RoomOf(const QString& path)
{
    const Handle file(Open(path, FILE_READ_ATTRIBUTES, SharedByAll, OPEN_EXISTING));
    FILE_STANDARD_INFO state = {};
    const bool isRead =
        file.IsOpen() && ::GetFileInformationByHandleEx(file.Get(), FileStandardInfo, &state, sizeof state) != 0;
    return isRead && state.NumberOfLinks == 1 ? state.AllocationSize.QuadPart : 0;
}

QByteArray AttributeOf(const QString&, const char*)
{
    return {}; // only written by versions that didn't run here
}

OpenFile::OpenFile(const QString& path, Access access)
    : name(path), file(reinterpret_cast<qintptr>(OpenPatiently(path, access)))
{
    if (reinterpret_cast<HANDLE>(file) == INVALID_HANDLE_VALUE)
        RaiseFileError(LastSystemError(), name);
}

OpenFile::~OpenFile()
{
    ::CloseHandle(reinterpret_cast<HANDLE>(file));
}

void OpenFile::Sync() const
{
    if (::FlushFileBuffers(reinterpret_cast<HANDLE>(file)) == 0)
        RaiseFileError(LastSystemError(), name);
}

void OpenFile::AppendAll(const OpenFile& from) const
{
    std::vector<char> block(std::size_t{1} << 20);
    for (;;) {
        DWORD read = 0;
        DWORD written = 0;
        if (::ReadFile(reinterpret_cast<HANDLE>(from.file), block.data(), DWORD(block.size()), &read, nullptr) == 0)
            RaiseFileError(LastSystemError(), from.name);
        if (read == 0)
            return;
        if (::WriteFile(reinterpret_cast<HANDLE>(file), block.data(), read, &written, nullptr) == 0 || written != read)
            RaiseFileError(LastSystemError(), name);
    }
}

void OpenFile::SetTimeOf(const OpenFile& other) const
{
    FILETIME time = {};
    if (::GetFileTime(reinterpret_cast<HANDLE>(other.file), nullptr, nullptr, &time) != 0)
        ::SetFileTime(reinterpret_cast<HANDLE>(file), nullptr, nullptr, &time);
}

bool OpenFile::TryLockDatabase() const
{
    return TryLock(reinterpret_cast<HANDLE>(file), FirstLockedByte, LockedBytes);
}

void Sync(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isDir() && file.isWritable())
        OpenFile(path, OpenFile::Access::Write).Sync();
}

std::unique_ptr<const FolderHold> TryToHold(const QString& folder)
{
    HANDLE const file =
        Open(folder + "/.verrou", GENERIC_WRITE, 0, OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE);
    if (file != INVALID_HANDLE_VALUE)
        return std::make_unique<const LockFile>(file);
    if (IsHeldForAMoment(::GetLastError()) && IsWritable(folder))
        return nullptr;
    RaiseFileError(LastSystemError(), folder);
}

void RemoveFile(const QString& path)
{
    const std::wstring name = WidePath(path);
    const QDeadlineTimer deadline(PatienceMs);
    while (::DeleteFileW(name.c_str()) == 0 && ::GetLastError() == ERROR_SHARING_VIOLATION && !deadline.hasExpired())
        QThread::msleep(BetweenTriesMs);
}

void RenameOver(const QString& path, const QString& target)
{
    const std::wstring from = WidePath(path);
    const std::wstring to = WidePath(target);
    const QDeadlineTimer deadline(PatienceMs);
    while (!TryRenameOverHeld(path, target) &&
           ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0)
        WaitOrRaise(deadline, target);
}

bool TryRenameFolder(const QString& path, const QString& target)
{
    const std::wstring from = WidePath(path);
    const std::wstring to = WidePath(target);
    ::RemoveDirectoryW(to.c_str());
    const QDeadlineTimer deadline(PatienceMs);
    while (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) == 0) {
        if (!IsHeldForAMoment(::GetLastError()) || deadline.hasExpired())
            return false;
        QThread::msleep(BetweenTriesMs);
    }
    return true;
}

bool TryLink(const QString& path, const QString& target)
{
    if (::CreateHardLinkW(WidePath(target).c_str(), WidePath(path).c_str(), nullptr) != 0)
        return true;
    if (const int error = LastSystemError(); ObstacleOf(error) == Obstacle::NameTaken)
        RaiseFileError(error, target);
    return false;
}

} // namespace host
