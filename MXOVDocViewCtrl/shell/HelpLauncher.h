// Context help: the help file of the host application for its language, shown by the system's help engine.
#pragma once

#include <windows.h>

#include <string>

namespace docview {

/// A help file and a topic in it.
struct HelpTarget {
    std::wstring file;
    DWORD topic = 0;
};

/// The help file for a language, under the folder of the host application (without a separator at the end):
/// the main file in that language or in English, else the secondary one in that language, which need not
/// exist.
HelpTarget FindHelp(const std::wstring& applicationFolder, const std::wstring& hostLanguage);

/// Path of the registered help engine. False when none is registered or its path is too long.
bool FindRegisteredHelpEngine(char (&path)[MAX_PATH]);

/// The system's help engine, loaded at the first use and never unloaded. A failure is final.
class HtmlHelpEngine {
public:
    /// `fallback`: the library that is loaded when none is registered; not copied.
    explicit HtmlHelpEngine(const char* fallback = "hhctrl.ocx") : m_fallback(fallback) {}

    /// Same arguments and result as the system's HtmlHelpW; null without an engine.
    HWND Call(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data);

private:
    using Entry = HWND(WINAPI*)(HWND, const wchar_t*, UINT, DWORD_PTR);

    void Load();

    const char* m_fallback;
    HMODULE m_module = nullptr;
    Entry m_entry = nullptr;
    bool m_failed = false;
};

/// Opens the help of the running host application in its current language; nothing happens without an engine.
void LaunchHelp();

} // namespace docview
