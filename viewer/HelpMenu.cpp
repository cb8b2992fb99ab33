#include "HelpMenu.h"

#include "common/Paths.h"
#include "mxovshare.h"
#include "package/Paths.h"
#include "resources/resource.h"
#include "shell/HelpLauncher.h"

#include <vector>

namespace viewer {

namespace {

// The version that a file states in its resources; empty when it has none.
std::wstring FileVersion(const std::wstring& file) {
    std::vector<BYTE> data(GetFileVersionInfoSizeW(file.c_str(), nullptr));
    void* value = nullptr;
    UINT length = 0;
    if (data.empty() || !GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
        !VerQueryValueW(data.data(), L"\\", &value, &length) || length < sizeof(VS_FIXEDFILEINFO)) {
        return {};
    }
    const auto* info = static_cast<const VS_FIXEDFILEINFO*>(value);
    return std::to_wstring(HIWORD(info->dwFileVersionMS)) + L"." +
           std::to_wstring(LOWORD(info->dwFileVersionMS)) + L"." +
           std::to_wstring(HIWORD(info->dwFileVersionLS));
}

std::wstring PartText(const std::wstring& file) {
    return FileName(file) + L" " + FileVersion(file) + L"\n";
}

} // namespace

std::wstring ShowHelpTopics() {
    constexpr UINT kShowTopic = 15; // by its number
    static docview::HtmlHelpEngine engine;
    const docview::HelpTarget help =
        docview::FindHelp(common::ModuleFolder(nullptr), mxovshare::OVApplication::mxLanguageName);
    if (!FileExists(help.file)) {
        return L"The help file is missing:\n\n" + help.file;
    }
    if (!engine.Call(nullptr, help.file.c_str(), kShowTopic, help.topic)) {
        return L"The help cannot be shown on this computer.";
    }
    return {};
}

void ShowAbout(HWND owner, const std::wstring& control) {
    const std::wstring text =
        L"MXOV Viewer " MXOV_VIEWER_VERSION L"\n\nOpens machining packages and shows their documents.\n\n" +
        PartText(control) + PartText(common::ModulePath(GetModuleHandleW(L"mxovshare.dll"))) +
        L"\nFree under the MIT licence. It contains zlib (zlib licence), the run-time library of GCC (GPL 3 "
        L"with "
        L"the exception for it) and mingw-w64 (public domain, MIT and similar); a release brings all texts "
        L"in its "
        L"folder \u201clicences\u201d.";
    MSGBOXPARAMSW box = {};
    box.cbSize = sizeof box;
    box.hwndOwner = owner;
    box.hInstance = GetModuleHandleW(nullptr);
    box.lpszText = text.c_str();
    box.lpszCaption = L"About MXOV Viewer";
    box.dwStyle = MB_OK | MB_USERICON;
    box.lpszIcon = MAKEINTRESOURCEW(IDI_VIEWER);
    MessageBoxIndirectW(&box);
}

} // namespace viewer
