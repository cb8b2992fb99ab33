#include "document/DocumentActions.h"

#include "common/SystemError.h"
#include "package/Paths.h"
#include "prompts/FileDialog.h"

#include <algorithm>

#include <shellapi.h>
#include <shlobj.h>

namespace viewer {

namespace {

std::wstring Failure(const std::wstring& what, DWORD error) {
    return what + L": " + common::SystemErrorText(error) + L".";
}

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
    return error == ERROR_NO_ASSOCIATION ? L"There is no program for " + FileName(path) + L"."
                                         : Failure(FileName(path) + L" cannot be opened", error);
}

std::wstring OpenDocumentWith(HWND owner, const std::wstring& path) {
    const OPENASINFO info = {path.c_str(), nullptr, OAIF_EXEC | OAIF_ALLOW_REGISTRATION};
    const HRESULT result = SHOpenWithDialog(owner, &info);
    return SUCCEEDED(result) || result == HRESULT_FROM_WIN32(ERROR_CANCELLED)
               ? std::wstring()
               : L"The programs for " + FileName(path) + L" cannot be listed on this computer.";
}

std::wstring SaveDocumentAs(HWND owner, const std::wstring& path) {
    const std::optional<std::wstring> target = AskForDocumentCopy(owner, FileName(path));
    return !target || CopyFileW(path.c_str(), target->c_str(), FALSE)
               ? std::wstring()
               : Failure(FileName(path) + L" cannot be saved as " + *target, GetLastError());
}

std::wstring ShowInFolder(HWND owner, const std::wstring& path) {
    const std::wstring parameters = L"/select,\"" + path + L"\"";
    return Execute(owner, L"explorer.exe", parameters.c_str())
               ? std::wstring()
               : Failure(L"The folder of " + FileName(path) + L" cannot be shown", GetLastError());
}

std::wstring CopyPath(HWND owner, const std::wstring& path) {
    if (!OpenClipboard(owner)) {
        return Failure(L"The clipboard cannot be used", GetLastError());
    }
    EmptyClipboard();
    const HGLOBAL memory = TextMemory(path);
    const bool copied = memory && SetClipboardData(CF_UNICODETEXT, memory);
    const DWORD error = GetLastError();
    CloseClipboard();
    if (!copied) {
        GlobalFree(memory);
    }
    return copied ? std::wstring() : Failure(L"The path cannot be copied", error);
}

} // namespace viewer
