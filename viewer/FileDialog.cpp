#include "FileDialog.h"

#include "Handles.h"

#include <shobjidl.h>

std::optional<std::wstring> AskForPackage(HWND owner) {
    ComPtr<IFileOpenDialog> dialog;
    if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(IFileOpenDialog), reinterpret_cast<void**>(dialog.Put()))))
        return std::nullopt;
    const COMDLG_FILTERSPEC filters[] = {{L"Machining packages (*.mxov)", L"*.mxov"},
                                         {L"All files (*.*)", L"*.*"}};
    FILEOPENDIALOGOPTIONS options = 0;
    dialog->GetOptions(&options);
    dialog->SetOptions(options | FOS_FORCEFILESYSTEM | FOS_FILEMUSTEXIST | FOS_PATHMUSTEXIST);
    dialog->SetFileTypes(ARRAYSIZE(filters), filters);
    dialog->SetDefaultExtension(L"mxov");
    dialog->SetTitle(L"Open package");
    ComPtr<IShellItem> item;
    if (FAILED(dialog->Show(owner)) || FAILED(dialog->GetResult(item.Put())))
        return std::nullopt;
    wchar_t* path = nullptr;
    if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &path)))
        return std::nullopt;
    const UniqueTaskString owned(path);
    return std::wstring(path);
}
