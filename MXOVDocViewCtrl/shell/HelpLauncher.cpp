#include "HelpLauncher.h"

#include "common/Handles.h"
#include "common/Language.h"

#include <mxovshare.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include <shlwapi.h>

namespace docview {

namespace {

constexpr DWORD kMainTopic = 7018;
constexpr DWORD kSecondaryTopic = 7806;
constexpr UINT kShowContext = 15;
constexpr WORD kHtmlHelpOrdinal = 15;
constexpr char kEngineKey[] = "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";

constexpr wchar_t kMainFolder[] = L"\\plugins\\etc\\mx\\lang\\";
constexpr wchar_t kMainFile[] = L"\\Orvando.chm";
constexpr wchar_t kSecondaryFolder[] = L"\\lang\\";
constexpr wchar_t kSecondaryFile[] = L"\\KVT.chm";
constexpr wchar_t kEnglish[] = L"english";

bool Exists(const std::wstring& path) {
    return PathFileExistsW(path.c_str()) != FALSE;
}

/// Folder of the running program, without a separator at the end; empty when its path has none. A path of
/// more than 260 characters is cut there.
std::wstring ApplicationFolder() {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    path[MAX_PATH - 1] = L'\0';
    const std::wstring program = path;
    const std::size_t end = program.rfind(L'\\');
    return end == std::wstring::npos ? std::wstring() : program.substr(0, end);
}

} // namespace

HelpTarget FindHelp(const std::wstring& applicationFolder, const std::wstring& hostLanguage) {
    const std::wstring language = common::LanguageFolder(hostLanguage);
    const auto mainFile = [&](const std::wstring& name) {
        return applicationFolder + kMainFolder + name + kMainFile;
    };
    const auto secondaryFile = [&](const std::wstring& name) {
        return applicationFolder + kSecondaryFolder + name + kSecondaryFile;
    };
    HelpTarget target = {mainFile(language), kMainTopic};
    if (!Exists(target.file)) {
        target.file = mainFile(kEnglish);
    }
    if (!Exists(target.file)) {
        target = {secondaryFile(language), kSecondaryTopic};
    } else if (!Exists(target.file)) { // it was deleted since the last check
        target = {secondaryFile(kEnglish), kSecondaryTopic};
    }
    return target;
}

bool FindRegisteredHelpEngine(char (&path)[MAX_PATH]) {
    HKEY opened = nullptr;
    if (RegOpenKeyExA(HKEY_CLASSES_ROOT, kEngineKey, 0, KEY_READ, &opened) != ERROR_SUCCESS) {
        return false;
    }
    const common::UniqueRegistryKey key(opened);
    char value[MAX_PATH] = "";
    DWORD size = sizeof value;
    DWORD type = REG_NONE;
    if (RegQueryValueExA(key.get(), nullptr, nullptr, &type, reinterpret_cast<BYTE*>(value), &size) !=
        ERROR_SUCCESS) {
        return false;
    }
    value[MAX_PATH - 1] = '\0';
    if (type == REG_EXPAND_SZ) {
        // The function needs room for one character more than it stores.
        char expanded[MAX_PATH + 1] = "";
        const DWORD length = ExpandEnvironmentStringsA(value, expanded, sizeof expanded);
        if (length == 0 || length > sizeof expanded || std::strlen(expanded) >= MAX_PATH) {
            return false;
        }
        std::copy_n(expanded, MAX_PATH, path);
        return true;
    }
    std::copy(std::begin(value), std::end(value), std::begin(path));
    return true;
}

HWND HtmlHelpEngine::Call(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data) {
    if (!m_entry && !m_failed) {
        Load();
    }
    return m_entry ? m_entry(caller, file, command, data) : nullptr;
}

void HtmlHelpEngine::Load() {
    char path[MAX_PATH] = "";
    if (FindRegisteredHelpEngine(path)) {
        m_module = LoadLibraryExA(path, nullptr, 0);
    }
    if (!m_module) {
        m_module = LoadLibraryExA(m_fallback, nullptr, 0);
    }
    if (m_module) {
        const FARPROC entry = GetProcAddress(m_module, MAKEINTRESOURCEA(kHtmlHelpOrdinal));
        static_assert(sizeof entry == sizeof m_entry);
        std::memcpy(&m_entry, &entry, sizeof m_entry); // no cast converts between the two signatures
    }
    m_failed = !m_entry;
}

void LaunchHelp() {
    static HtmlHelpEngine engine;
    const HelpTarget target = FindHelp(ApplicationFolder(), mxovshare::OVApplication::mxLanguageName);
    engine.Call(nullptr, target.file.c_str(), kShowContext, target.topic);
}

} // namespace docview
