#pragma once

#include "practice/output/ReplaceableFile.h"

#include <QFile>
#include <QTemporaryFile>
#include <memory>

namespace practice {

/// A file that a command writes for its user, readable by its owner only. It is written beside its name and gets it
/// when it is complete. A pipe or device, such as /dev/stdout, is written directly.
class OutputFile {
public:
    /// Whether a file of the same kind may be replaced; see RequireReplaceable.
    enum class Existing : quint8 { Refuse, Replace };

    /// Raises 58 when the name is taken by what may not be replaced or is reserved for the files of a practice, 76 when
    /// the folder is missing, 75 when nothing can be written there.
    OutputFile(const QString& path, OutputKind kind, Existing existing);

    QIODevice& Device() { return *device; }
    /// Whether it is the standard output, which then takes nothing else.
    bool IsStandardOutput() const { return isStandardOutput; }

    /// Raises as Complete does when what was written so far hasn't reached the file.
    void Flush();

    /// Gives the file its name; durable on return. Raises 61 when the disk is full, 58 when the name was taken
    /// meanwhile, 75 when writing failed. Without it no file is left.
    void Complete();

private:
    void OpenBeside();
    void OpenDirectly();
    [[noreturn]] void RaiseFailure() const;

    QString path;
    OutputKind kind;
    bool replaces = false;
    bool isStandardOutput = false;
    std::unique_ptr<QFile> device;
    QTemporaryFile* beside = nullptr; ///< the device, unless that is a pipe
};

} // namespace practice
