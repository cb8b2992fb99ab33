#include "Progress.h"

#include "Report.h"

#include <atomic>

namespace {

constexpr ULONGLONG kPatience = 500; // milliseconds before the first line
constexpr ULONGLONG kInterval = 100;
constexpr std::size_t kLineLength = 78;

std::atomic<bool> g_cancelled = false;

BOOL WINAPI OnControl(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    g_cancelled = true;
    return TRUE;
}

} // namespace

Progress::Progress(std::wstring verb)
    : m_output(STD_ERROR_HANDLE), m_verb(std::move(verb)), m_nextShow(GetTickCount64() + kPatience) {
    SetConsoleCtrlHandler(OnControl, TRUE);
}

Progress::~Progress() {
    if (m_shown > 0) {
        Show({});
    }
    SetConsoleCtrlHandler(OnControl, FALSE);
}

bool Progress::OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) {
    const ULONGLONG now = GetTickCount64();
    if (m_output.IsConsole() && now >= m_nextShow) {
        const std::uint64_t percent = total > 0 ? done * 100 / total : 100;
        Show(m_verb + L" " + std::to_wstring(percent) + L" % " +
             OneLine(name.substr(name.find_last_of(L'\\') + 1)));
        m_nextShow = now + kInterval;
    }
    return !g_cancelled;
}

bool Progress::OnLoss(const std::wstring& lost) {
    if (m_shown > 0) {
        Show({});
    }
    PrintWarning(L"replacing the package loses " + lost);
    return true;
}

void Progress::Show(const std::wstring& line) {
    const std::wstring text = line.substr(0, kLineLength);
    const std::wstring rest(m_shown > text.size() ? m_shown - text.size() : 0, L' ');
    m_output.Write(L"\r" + text + rest + (text.empty() ? L"\r" : L""));
    m_shown = text.size();
}
