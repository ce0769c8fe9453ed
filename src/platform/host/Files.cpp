#include "platform/host/Files.h"

#include "platform/basic/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>

namespace host {
namespace {

constexpr int ReadOnlyAttribute = 1;
constexpr int FolderAttribute = 16;

constexpr QFile::Permissions ModeBits = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                                        QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther |
                                        QFile::ExeOther;

/// The spelling of `name` in `folder`: as given if it exists like that or not at all, otherwise the first that differs
/// only in case.
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

/// The mode bits of a file, not the user's actual rights: a read-only file is read-only even for the administrator.
QFile::Permissions ModeOf(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        throw basic::RuntimeError(basic::Error::FileNotFound);
    return file.permissions() & ModeBits;
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

bool FileExists(const QString& path, int attributes)
{
    const qsizetype slash = path.lastIndexOf('/');
    const QString folder = slash < 0 ? QStringLiteral(".") : path.left(slash + 1);
    QString pattern = QRegularExpression::escape(path.mid(slash + 1));
    pattern.replace("\\*", ".*").replace("\\?", ".");
    if (path.isEmpty())
        return false;
    if (pattern.isEmpty())
        pattern = ".*"; // a path that ends with a folder matches anything in it

    const QRegularExpression wanted(QRegularExpression::anchoredPattern(pattern),
                                    QRegularExpression::CaseInsensitiveOption);
    QDir::Filters kinds = QDir::Files | QDir::NoDotAndDotDot;
    if ((attributes & FolderAttribute) != 0)
        kinds |= QDir::Dirs;
    return !QDir(folder).entryList(kinds).filter(wanted).isEmpty();
}

int FileAttributes(const QString& path)
{
    return ModeOf(path).testFlag(QFile::WriteOwner) ? 0 : ReadOnlyAttribute;
}

void SetFileAttributes(const QString& path, int attributes)
{
    QFile::Permissions mode = ModeOf(path);
    if ((attributes & ReadOnlyAttribute) != 0)
        mode &= ~(QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther);
    else
        mode |= QFile::WriteOwner;
    if (!QFile::setPermissions(path, mode))
        throw basic::RuntimeError(basic::Error::PathAccess);
}

} // namespace host
