// Runs a fuzz target once for every file in the folders on the command line, in name order.
#include "fuzz/Fuzz.h"

#include <QDir>

namespace {

/// Replays the files of one folder; false when there is none or one can't be read.
bool Replay(const QString& folder)
{
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& entry : files) {
        QFile file(entry.filePath());
        if (!file.open(QIODevice::ReadOnly))
            return false;
        const QByteArray content = file.readAll();
        std::printf("%s\n", qPrintable(entry.filePath()));
        std::fflush(stdout); // the last line names the input that crashed
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.constData()),
                               static_cast<std::size_t>(content.size()));
    }
    return !files.isEmpty();
}

} // namespace

int main(int count, char** arguments)
{
    for (int i = 1; i < count; ++i) {
        if (!Replay(QString::fromLocal8Bit(arguments[i]))) {
            std::fprintf(stderr, "Nothing to replay in %s\n", arguments[i]);
            return EXIT_FAILURE;
        }
    }
    return count > 1 ? EXIT_SUCCESS : EXIT_FAILURE;
}
