#include "practice/output/OutputFile.h"

#include "platform/basic/RuntimeError.h"
#include "platform/host/Console.h"
#include "platform/host/FileWork.h"
#include "platform/host/OwnerOnly.h"
#include "platform/host/SystemErrors.h"

#include <QFileInfo>
#include <QScopeGuard>

#include <cstdio>

namespace practice {
namespace {

using basic::Error;
using basic::RuntimeError;

} // namespace

OutputFile::OutputFile(const QString& wanted, OutputKind wantedKind, Existing existing)
    : path(wanted), kind(wantedKind), isStandardOutput(host::IsStandardOutput(wanted))
{
    if (isStandardOutput || host::IsStream(path)) {
        OpenDirectly();
        return;
    }
    RequireFreeName(path);
    const QFileInfo present(path);
    replaces = present.exists() || present.isSymLink();
    if (replaces && existing == Existing::Refuse)
        throw RuntimeError::Described(
            Error::FileExists,
            QString("« %1 » existe déjà%2.")
                .arg(path, WhyNotReplaceable(path, kind).isEmpty() ? " ; --force le remplace" : QString()));
    if (replaces)
        RequireReplaceable(path, kind);
    OpenBeside();
}

void OutputFile::OpenDirectly()
{
    device = std::make_unique<QFile>(path);
    if (!(isStandardOutput ? device->open(stdout, QIODevice::WriteOnly) : device->open(QIODevice::WriteOnly)))
        RaiseFailure();
}

void OutputFile::OpenBeside()
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!QFileInfo(folder).isDir())
        throw RuntimeError(Error::PathNotFound);
    auto file = std::make_unique<QTemporaryFile>(folder + "/." + QFileInfo(path).fileName() + ".XXXXXX");
    beside = file.get();
    device = std::move(file);
    const auto ownerOnly = host::ForOwnerOnly();
    if (!beside->open())
        RaiseFailure();
}

void OutputFile::Flush()
{
    if (!device->flush() || device->error() != QFileDevice::NoError)
        RaiseFailure();
}

void OutputFile::Complete()
{
    Flush();
    if (beside == nullptr)
        return;
    const QString temporary = beside->fileName();
    const auto removeUnlessRenamed = qScopeGuard([&temporary] { QFile::remove(temporary); });
    beside->setAutoRemove(false);
    beside = nullptr;
    device.reset(); // which closes it: Windows renames no open file
    host::MakePrivate(temporary);
    host::Sync(temporary);
    if (replaces) {
        RequireReplaceable(path, kind);
        host::Replace(temporary, path);
    } else if (QFile::rename(temporary, path)) { // which replaces no file that has come meanwhile
        host::Sync(QFileInfo(path).absolutePath());
    } else {
        throw RuntimeError::Described(Error::FileExists,
                                      QString("« %1 » n'a pas pu recevoir son nom : il existe déjà.").arg(path));
    }
}

void OutputFile::RaiseFailure() const
{
    if (device->error() == QFileDevice::ResourceError)
        host::RaiseDiskFull(path);
    throw RuntimeError::Described(Error::PathAccess,
                                  QString("« %1 » n'a pas pu être écrit : %2").arg(path, device->errorString()));
}

} // namespace practice
