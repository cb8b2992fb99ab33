#include "HelpMenu.h"

#include "common/Paths.h"
#include "mxovshare.h"
#include "package/Paths.h"
#include "resources/resource.h"
#include "shell/HelpLauncher.h"
#include "texts/Texts.h"

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
        return Text(IDS_HELP_MISSING, {help.file});
    }
    if (!engine.Call(nullptr, help.file.c_str(), kShowTopic, help.topic)) {
        return Text(IDS_HELP_FAILED);
    }
    return {};
}

void ShowAbout(HWND owner, const std::wstring& control) {
    const std::wstring parts =
        PartText(control) + PartText(common::ModulePath(GetModuleHandleW(L"mxovshare.dll")));
    const std::wstring text = Text(IDS_ABOUT, {L"" MXOV_VIEWER_VERSION, parts});
    const std::wstring title = Text(IDS_ABOUT_TITLE);
    MSGBOXPARAMSW box = {};
    box.cbSize = sizeof box;
    box.hwndOwner = owner;
    box.hInstance = GetModuleHandleW(nullptr);
    box.lpszText = text.c_str();
    box.lpszCaption = title.c_str();
    box.dwStyle = MB_OK | MB_USERICON;
    box.lpszIcon = MAKEINTRESOURCEW(IDI_VIEWER);
    MessageBoxIndirectW(&box);
}

} // namespace viewer
