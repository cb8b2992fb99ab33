#include "document/DocumentActions.h"

#include "common/SystemError.h"
#include "package/Paths.h"
#include "prompts/FileDialog.h"
#include "texts/Texts.h"

#include <algorithm>

#include <shellapi.h>
#include <shlobj.h>

namespace viewer {

namespace {

bool Execute(HWND owner, const std::wstring& file, const wchar_t* parameters) {
    SHELLEXECUTEINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    info.hwnd = owner;
    info.lpFile = file.c_str();
    info.lpParameters = parameters;
    info.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&info) != FALSE;
}

// By its full path: a program of that name may lie in the current folder.
std::wstring ExplorerPath() {
    wchar_t folder[MAX_PATH] = L"";
    GetSystemWindowsDirectoryW(folder, ARRAYSIZE(folder));
    return std::wstring(folder) + L"\\explorer.exe";
}

HGLOBAL TextMemory(const std::wstring& text) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (auto* characters = static_cast<wchar_t*>(GlobalLock(memory))) {
        std::copy_n(text.c_str(), text.size() + 1, characters);
        GlobalUnlock(memory);
    }
    return memory;
}

} // namespace

std::wstring OpenDocument(HWND owner, const std::wstring& path) {
    if (Execute(owner, path, nullptr)) {
        return {};
    }
    const DWORD error = GetLastError();
    return error == ERROR_NO_ASSOCIATION
               ? Text(IDS_NO_PROGRAM, {FileName(path)})
               : Text(IDS_OPEN_FAILED, {FileName(path), common::SystemErrorText(error)});
}

std::wstring OpenDocumentWith(HWND owner, const std::wstring& path) {
    const OPENASINFO info = {path.c_str(), nullptr, OAIF_EXEC | OAIF_ALLOW_REGISTRATION};
    const HRESULT result = SHOpenWithDialog(owner, &info);
    return SUCCEEDED(result) || result == HRESULT_FROM_WIN32(ERROR_CANCELLED)
               ? std::wstring()
               : Text(IDS_NO_PROGRAM_LIST, {FileName(path)});
}

std::wstring SaveDocumentAs(HWND owner, const std::wstring& path) {
    const std::optional<std::wstring> target = AskForDocumentCopy(owner, FileName(path));
    return !target || CopyFileW(path.c_str(), target->c_str(), FALSE)
               ? std::wstring()
               : Text(IDS_SAVE_AS_FAILED, {FileName(path), *target, common::SystemErrorText(GetLastError())});
}

std::wstring ShowInFolder(HWND owner, const std::wstring& path) {
    const std::wstring parameters = L"/select,\"" + path + L"\"";
    return Execute(owner, ExplorerPath(), parameters.c_str())
               ? std::wstring()
               : Text(IDS_SHOW_FAILED, {FileName(path), common::SystemErrorText(GetLastError())});
}

std::wstring CopyPath(HWND owner, const std::wstring& path) {
    if (!OpenClipboard(owner)) {
        return Text(IDS_NO_CLIPBOARD, {common::SystemErrorText(GetLastError())});
    }
    EmptyClipboard();
    const HGLOBAL memory = TextMemory(path);
    const bool copied = memory && SetClipboardData(CF_UNICODETEXT, memory);
    const DWORD error = GetLastError();
    CloseClipboard();
    if (!copied) {
        GlobalFree(memory);
    }
    return copied ? std::wstring() : Text(IDS_COPY_PATH_FAILED, {common::SystemErrorText(error)});
}

} // namespace viewer
