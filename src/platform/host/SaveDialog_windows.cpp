#include "platform/host/SaveDialog_windows.h"

#include "platform/host/Components_windows.h"

#include <QDir>

#include <shobjidl.h>

namespace host {
namespace {

void StandIn(IFileSaveDialog& dialog, const QString& folder)
{
    void* found = nullptr;
    ::SHCreateItemFromParsingName(WidePath(folder).c_str(), nullptr, IID_IShellItem, &found);
    if (const Owned<IShellItem> item(static_cast<IShellItem*>(found)); item != nullptr)
        dialog.SetFolder(item.get());
}

QString ChosenPath(IFileSaveDialog& dialog)
{
    IShellItem* chosen = nullptr;
    if (FAILED(dialog.GetResult(&chosen)))
        return {};
    const Owned<IShellItem> item(chosen);
    wchar_t* name = nullptr;
    if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &name)))
        return {};
    const QString path = QDir::fromNativeSeparators(QString::fromWCharArray(name));
    ::CoTaskMemFree(name);
    return path;
}

} // namespace

QString AskPath(const SaveDialog& asked, quintptr owner)
{
    const Components components;
    const Owned<IFileSaveDialog> dialog = NewComponent<IFileSaveDialog>(CLSID_FileSaveDialog, IID_IFileSaveDialog);
    if (dialog == nullptr)
        return {};
    const std::wstring kind = asked.kind.toStdWString();
    const std::wstring pattern = QString("*." + asked.ending).toStdWString();
    const COMDLG_FILTERSPEC filter{kind.c_str(), pattern.c_str()};
    dialog->SetTitle(asked.title.toStdWString().c_str());
    dialog->SetFileTypes(1, &filter);
    dialog->SetDefaultExtension(asked.ending.toStdWString().c_str());
    dialog->SetOptions(FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST | FOS_NOREADONLYRETURN | FOS_DONTADDTORECENT);
    StandIn(*dialog, asked.folder);
    dialog->SetFileName(asked.name.toStdWString().c_str());
    return SUCCEEDED(dialog->Show(reinterpret_cast<HWND>(owner))) ? ChosenPath(*dialog) : QString();
}

} // namespace host
