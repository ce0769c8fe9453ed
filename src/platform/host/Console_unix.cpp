#include "platform/host/Console.h"

#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>
#include <unistd.h>

namespace host {
namespace {

int NumberOf(Standard stream)
{
    return stream == Standard::Input ? STDIN_FILENO : stream == Standard::Output ? STDOUT_FILENO : STDERR_FILENO;
}

} // namespace

std::unique_ptr<QIODevice> OpenStandard(Standard stream)
{
    auto device = std::make_unique<QFile>();
    const QIODevice::OpenMode mode = stream == Standard::Input ? QIODevice::ReadOnly : QIODevice::WriteOnly;
    (void)device->open(NumberOf(stream), mode | QIODevice::Unbuffered);
    return device;
}

bool IsTerminal(Standard stream)
{
    return ::isatty(NumberOf(stream)) == 1;
}

bool IsStream(const QString& path)
{
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 &&
           (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode));
}

bool IsStandardOutput(const QString& path)
{
    struct stat status {};
    struct stat standard {};
    return (QFileInfo(path).isSymLink() || IsStream(path)) &&
           ::stat(QFile::encodeName(path).constData(), &status) == 0 && ::fstat(STDOUT_FILENO, &standard) == 0 &&
           status.st_dev == standard.st_dev && status.st_ino == standard.st_ino;
}

void DrawWithoutDisplay()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

QString QuotedArgument(const QString& text)
{
    return "'" + QString(text).replace("'", R"('\'')") + "'";
}

} // namespace host
