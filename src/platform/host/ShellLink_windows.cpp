#include "platform/host/ShellLink_windows.h"

#include "platform/host/Components_windows.h"

#include <shlobj.h>

#include <array>

namespace host {
namespace {

Owned<IPersistFile> FileOf(IShellLinkW& link)
{
    void* found = nullptr;
    link.QueryInterface(IID_IPersistFile, &found);
    return Owned<IPersistFile>(static_cast<IPersistFile*>(found));
}

} // namespace

bool WriteShellLink(const QString& path, const ShellLink& link)
{
    const Components components;
    const Owned<IShellLinkW> made = NewComponent<IShellLinkW>(CLSID_ShellLink, IID_IShellLinkW);
    if (made == nullptr)
        return false;
    const Owned<IPersistFile> file = FileOf(*made);
    return file != nullptr && SUCCEEDED(made->SetPath(WidePath(link.program).c_str())) &&
           SUCCEEDED(made->SetWorkingDirectory(WidePath(link.folder).c_str())) &&
           SUCCEEDED(made->SetDescription(link.comment.toStdWString().c_str())) &&
           SUCCEEDED(file->Save(WidePath(path).c_str(), TRUE));
}

ShellLink ReadShellLink(const QString& path)
{
    const Components components;
    const Owned<IShellLinkW> link = NewComponent<IShellLinkW>(CLSID_ShellLink, IID_IShellLinkW);
    if (link == nullptr)
        return {};
    const Owned<IPersistFile> file = FileOf(*link);
    if (file == nullptr || FAILED(file->Load(WidePath(path).c_str(), STGM_READ)))
        return {};
    std::array<wchar_t, 4096> text{};
    ShellLink read;
    if (SUCCEEDED(link->GetPath(text.data(), int(text.size()), nullptr, SLGP_RAWPATH)))
        read.program = QString::fromWCharArray(text.data());
    if (SUCCEEDED(link->GetWorkingDirectory(text.data(), int(text.size()))))
        read.folder = QString::fromWCharArray(text.data());
    return read;
}

} // namespace host
