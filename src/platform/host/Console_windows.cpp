#include "platform/host/Console.h"
#include "platform/host/System_windows.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cstdio>

namespace host {
namespace {

HANDLE HandleOf(Standard stream)
{
    return ::GetStdHandle(stream == Standard::Input    ? STD_INPUT_HANDLE
                          : stream == Standard::Output ? STD_OUTPUT_HANDLE
                                                       : STD_ERROR_HANDLE);
}

/// A console takes and gives UTF-16, independently of its code page.
class ConsoleDevice : public QIODevice {
public:
    explicit ConsoleDevice(Standard stream) : console(HandleOf(stream)) {}

    bool isSequential() const override { return true; }

protected:
    qint64 writeData(const char* data, qint64 size) override
    {
        const std::wstring text = QString::fromUtf8(data, size).toStdWString();
        constexpr std::size_t mostAtATime = 8000;
        for (std::size_t at = 0; at < text.size();) {
            DWORD written = 0;
            if (::WriteConsoleW(console, text.data() + at, DWORD(std::min(mostAtATime, text.size() - at)), &written,
                                nullptr) == 0)
                return -1;
            at += written;
        }
        return size;
    }

    qint64 readData(char* data, qint64 size) override
    {
        if (pending.isEmpty()) {
            std::array<wchar_t, 1024> line{};
            DWORD length = 0;
            if (::ReadConsoleW(console, line.data(), DWORD(line.size()), &length, nullptr) == 0)
                return -1;
            pending = QString::fromWCharArray(line.data(), length).remove('\r').toUtf8();
        }
        const qint64 given = std::min(size, qint64(pending.size()));
        std::copy_n(pending.constData(), given, data);
        pending.remove(0, given);
        return given;
    }

private:
    HANDLE console;
    QByteArray pending;
};

} // namespace

std::unique_ptr<QIODevice> OpenStandard(Standard stream)
{
    const QIODevice::OpenMode mode = stream == Standard::Input ? QIODevice::ReadOnly : QIODevice::WriteOnly;
    std::unique_ptr<QIODevice> device;
    if (IsTerminal(stream)) {
        device = std::make_unique<ConsoleDevice>(stream);
        device->open(mode | QIODevice::Unbuffered);
        return device;
    }
    auto file = std::make_unique<QFile>();
    (void)file->open(stream == Standard::Input    ? stdin
                     : stream == Standard::Output ? stdout
                                                  : stderr,
                     mode | QIODevice::Unbuffered);
    return file;
}

bool IsTerminal(Standard stream)
{
    DWORD mode = 0;
    return ::GetConsoleMode(HandleOf(stream), &mode) != 0;
}

bool IsStream(const QString& path)
{
    static const QRegularExpression device(R"(^(\\\\\.\\.*|(.*[\\/])?(nul|con|conout\$):?)$)",
                                           QRegularExpression::CaseInsensitiveOption);
    return device.match(QDir::toNativeSeparators(path)).hasMatch();
}

bool IsStandardOutput(const QString&)
{
    return false; // which has no path
}

void DrawWithoutDisplay() {} // there is always one

QString QuotedArgument(const QString& text)
{
    return '"' + text + '"'; // a path has no quotes
}

} // namespace host
