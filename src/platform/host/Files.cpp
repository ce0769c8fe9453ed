#include "platform/host/Files.h"

#include "platform/basic/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QStringList>
#include <fcntl.h>
#include <unistd.h>

namespace host {
namespace {

constexpr int readOnlyAttribute = 1;
constexpr int folderAttribute = 16;

constexpr QFile::Permissions modeBits = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                                        QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther |
                                        QFile::ExeOther;

/// How `name` is written in `folder`: as given when it exists so or not at all, else the first that differs in case
/// only.
QString NameOnDisk(const QString& folder, const QString& name)
{
    const QStringList entries = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System, QDir::Name);
    if (entries.contains(name))
        return name;
    for (const QString& entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return name;
}

/// The mode bits of a file. The bits count and not what this user may do: the administrator may write everywhere, and a
/// file marked read-only is read-only for him too.
QFile::Permissions ModeOf(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        throw basic::RuntimeError(basic::Error::FileNotFound);
    return file.permissions() & modeBits;
}

} // namespace

QString PathIn(const QString& folder, const QString& name)
{
    QString path = folder;
    for (const QString& part : name.split('/', Qt::SkipEmptyParts)) {
        const QString found = NameOnDisk(path, part);
        path += path.endsWith('/') ? found : "/" + found;
    }
    return path;
}

QString FolderOfOwnFile(const QString& programFolder, const QString& name)
{
    const QString installed = programFolder + "/../share/zep-lumo";
    const bool isBesideProgram = FileExists(PathIn(programFolder, name), 0);
    return !isBesideProgram && FileExists(PathIn(installed, name), 0) ? installed : programFolder;
}

QString DriveFolder(const QString& drive)
{
    QString path = drive.trimmed();
#ifdef Q_OS_WIN
    if (path.endsWith(':'))
        path += '/';
#else
    if (path.endsWith(':'))
        path.chop(1);
#endif
    return !path.isEmpty() && QDir(path).exists() ? QDir(path).absolutePath() : QString();
}

bool FileExists(const QString& path, int attributes)
{
    const qsizetype slash = path.lastIndexOf('/');
    const QString folder = slash < 0 ? QStringLiteral(".") : path.left(slash + 1);
    QString pattern = QRegularExpression::escape(path.mid(slash + 1));
    pattern.replace("\\*", ".*").replace("\\?", ".");
    if (path.isEmpty())
        return false;
    if (pattern.isEmpty())
        pattern = ".*"; // a folder with nothing after it looks for anything in it

    const QRegularExpression wanted(QRegularExpression::anchoredPattern(pattern),
                                    QRegularExpression::CaseInsensitiveOption);
    QDir::Filters kinds = QDir::Files | QDir::NoDotAndDotDot;
    if ((attributes & folderAttribute) != 0)
        kinds |= QDir::Dirs;
    return !QDir(folder).entryList(kinds).filter(wanted).isEmpty();
}

int FileAttributes(const QString& path)
{
    return ModeOf(path).testFlag(QFile::WriteOwner) ? 0 : readOnlyAttribute;
}

void SetFileAttributes(const QString& path, int attributes)
{
    QFile::Permissions mode = ModeOf(path);
    if ((attributes & readOnlyAttribute) != 0)
        mode &= ~(QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther);
    else
        mode |= QFile::WriteOwner;
    if (!QFile::setPermissions(path, mode))
        throw basic::RuntimeError(basic::Error::PathAccess);
}

void Sync(const QString& path)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        throw basic::RuntimeError(basic::Error::FileNotFound);
    const auto closeAtEnd = qScopeGuard([file] { ::close(file); });
    if (::fsync(file) != 0)
        throw basic::RuntimeError(basic::Error::DeviceFailure);
}

} // namespace host
