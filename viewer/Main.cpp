// The reference host: opens machining packages and embeds the document control.
#include "CommandLine.h"
#include "MainWindow.h"
#include "mxovlanguage.h"
#include "session/SessionStore.h"
#include "texts/Texts.h"

#include <commctrl.h>
#include <ole2.h>
#include <shellapi.h>

namespace viewer {

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kWrongUsage = 2 };

struct LocalMemoryDeleter {
    void operator()(void* memory) const noexcept { LocalFree(memory); }
};

// COM for this thread while the object lives.
class ComApartment {
public:
    ComApartment() : m_ready(SUCCEEDED(OleInitialize(nullptr))) {}
    ~ComApartment() {
        if (m_ready) {
            OleUninitialize();
        }
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    bool m_ready;
};

std::vector<std::wstring> Arguments() {
    int count = 0;
    const std::unique_ptr<wchar_t*[], LocalMemoryDeleter> words(
        CommandLineToArgvW(GetCommandLineW(), &count));
    if (!words || count < 1) {
        return {};
    }
    return {words.get() + 1, words.get() + count};
}

int RunWindow(const CommandLine& line, int show) {
    SessionStore sessions(SessionStore::UserFolder(), SessionStore::EarlierFolders());
    sessions.RemoveLeftovers();
    VersionKeeper versions(VersionStore::UserFolder(), VersionSettings(MainWindow::kSettingsKey));
    MainWindow window(sessions, versions);
    if (!line.package.empty()) {
        window.Packages().Prepare(line.package);
    }
    if (const std::wstring error = window.Create(); !error.empty()) {
        MessageBoxW(nullptr, error.c_str(), MainWindow::kProgramName, MB_OK | MB_ICONERROR);
        return kFailed;
    }
    window.Show(show);
    if (!window.Packages().OfferCrashRecovery() && !line.package.empty()) {
        window.Packages().Open(line.package);
    }
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!window.PreTranslate(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

int Run(int show) {
    const CommandLine line = ParseCommandLine(Arguments());
    if (!line.language.empty()) {
        mxovshare::UseLanguage(line.language);
        UseTexts(line.language);
    }
    if (line.help || line.error) {
        const std::wstring text = line.help ? UsageText() : ErrorText(line) + L"\n\n" + UsageText();
        MessageBoxW(nullptr, text.c_str(), MainWindow::kProgramName,
                    MB_OK | (line.help ? MB_ICONINFORMATION : MB_ICONWARNING));
        return line.help ? kDone : kWrongUsage;
    }
    constexpr INITCOMMONCONTROLSEX kControls = {sizeof kControls, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES |
                                                                      ICC_PROGRESS_CLASS |
                                                                      ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&kControls);
    const ComApartment apartment;
    return RunWindow(line, show);
}

// The exit code of the program; no exception leaves it.
int RunSafely(int show) noexcept {
    try {
        return Run(show);
    } catch (...) {
        MessageBoxW(nullptr, L"There is not enough memory to go on.", MainWindow::kProgramName,
                    MB_OK | MB_ICONERROR);
        return kFailed;
    }
}

} // namespace

} // namespace viewer

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int show) {
    return viewer::RunSafely(show);
}
