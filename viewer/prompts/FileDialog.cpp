#include "prompts/FileDialog.h"

#include "common/ComPtr.h"
#include "common/Handles.h"
#include "prompts/FolderButton.h"
#include "texts/Texts.h"

#include <shobjidl.h>

namespace viewer {

namespace {

void OfferPackages(IFileDialog& dialog) {
    const std::wstring packages = Text(IDS_PACKAGE_FILES);
    const std::wstring all = Text(IDS_ALL_FILES);
    const COMDLG_FILTERSPEC filters[] = {{packages.c_str(), L"*.mxov"}, {all.c_str(), L"*.*"}};
    dialog.SetFileTypes(ARRAYSIZE(filters), filters);
    dialog.SetDefaultExtension(L"mxov");
}

std::optional<std::wstring> Ask(IFileDialog& dialog, HWND owner, UINT title, FILEOPENDIALOGOPTIONS more) {
    FILEOPENDIALOGOPTIONS options = 0;
    dialog.GetOptions(&options);
    dialog.SetOptions(options | FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST | more);
    dialog.SetTitle(Text(title).c_str());
    common::ComPtr<IShellItem> item;
    if (FAILED(dialog.Show(owner)) || FAILED(dialog.GetResult(item.Receive()))) {
        return std::nullopt;
    }
    wchar_t* path = nullptr;
    if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &path))) {
        return std::nullopt;
    }
    const common::UniqueTaskString owned(path);
    return std::wstring(path);
}

template <class Dialog>
common::ComPtr<Dialog> Create(const CLSID& classId) {
    common::ComPtr<Dialog> dialog;
    CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Dialog), dialog.ReceiveVoid());
    return dialog;
}

// `offerPackages`: for a package, else for a document.
std::optional<std::wstring> AskWhereToSave(HWND owner, const std::wstring& name, UINT title,
                                           bool offerPackages) {
    const auto dialog = Create<IFileSaveDialog>(CLSID_FileSaveDialog);
    if (!dialog) {
        return std::nullopt;
    }
    if (offerPackages) {
        OfferPackages(*dialog.Get());
    }
    dialog->SetFileName(name.c_str());
    return Ask(*dialog.Get(), owner, title, FOS_OVERWRITEPROMPT);
}

} // namespace

std::optional<std::wstring> AskForPackage(HWND owner, UINT title) {
    const auto dialog = Create<IFileOpenDialog>(CLSID_FileOpenDialog);
    if (!dialog) {
        return std::nullopt;
    }
    OfferPackages(*dialog.Get());
    return Ask(*dialog.Get(), owner, title, FOS_FILEMUSTEXIST);
}

std::optional<std::wstring> AskForPackageOrFolder(HWND owner, UINT title, UINT folderTitle) {
    const auto dialog = Create<IFileOpenDialog>(CLSID_FileOpenDialog);
    if (!dialog) {
        return std::nullopt;
    }
    OfferPackages(*dialog.Get());
    common::ComPtr<FolderButton> button;
    *button.Receive() = new FolderButton(*dialog.Get());
    std::optional<std::wstring> chosen = Ask(*dialog.Get(), owner, title, FOS_FILEMUSTEXIST);
    button->Detach(*dialog.Get());
    return button->IsPressed() ? AskForFolder(owner, folderTitle) : chosen;
}

std::optional<std::wstring> AskForCopy(HWND owner, const std::wstring& name, UINT title) {
    return AskWhereToSave(owner, name, title, true);
}

std::optional<std::wstring> AskForDocument(HWND owner, const std::wstring& name) {
    const auto dialog = Create<IFileOpenDialog>(CLSID_FileOpenDialog);
    if (!dialog) {
        return std::nullopt;
    }
    dialog->SetFileName(name.c_str());
    return Ask(*dialog.Get(), owner, IDS_FIND_DOCUMENT, FOS_FILEMUSTEXIST);
}

std::optional<std::wstring> AskForFolder(HWND owner, UINT title) {
    const auto dialog = Create<IFileOpenDialog>(CLSID_FileOpenDialog);
    return dialog ? Ask(*dialog.Get(), owner, title, FOS_PICKFOLDERS) : std::nullopt;
}

std::optional<std::wstring> AskForDocumentCopy(HWND owner, const std::wstring& name) {
    return AskWhereToSave(owner, name, IDS_SAVE_DOCUMENT_AS, false);
}

} // namespace viewer
