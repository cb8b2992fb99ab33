#include "Progress.h"

#include "LineText.h"
#include "Report.h"

using std::chrono::steady_clock;

namespace {

constexpr std::chrono::milliseconds kPatience(500); // before the first line
constexpr std::chrono::milliseconds kInterval(100);
constexpr std::size_t kLineLength = 78;

} // namespace

Progress::Progress(std::wstring verb)
    : m_output(Stream::Errors), m_verb(std::move(verb)), m_nextShow(steady_clock::now() + kPatience) {}

Progress::~Progress() {
    if (m_shown > 0) {
        Show({});
    }
}

bool Progress::OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) {
    const auto now = steady_clock::now();
    if (m_output.IsConsole() && now >= m_nextShow) {
        const std::uint64_t percent = total > 0 ? done * 100 / total : 100;
        Show(m_verb + L" " + std::to_wstring(percent) + L" % " +
             OneLine(name.substr(name.find_last_of(L"\\/") + 1)));
        m_nextShow = now + kInterval;
    }
    return !InterruptWatch::IsInterrupted();
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
