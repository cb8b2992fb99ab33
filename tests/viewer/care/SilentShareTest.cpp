// The check of a package whose links lead to a computer that does not answer. Its stand-in is the import of
// the function that asks for a file, which does not return before the test allows it.
#include "care/PackageCheck.h"
#include "ImportHook.h"
#include "prompts/WorkPrompt.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string_view>
#include <thread>

using namespace viewer;

namespace {

constexpr DWORD kSilence = 60'000; // milliseconds, unless the test ends it

HANDLE g_answer = nullptr;
std::atomic<int> g_asked = 0;
std::atomic<DWORD> g_askingThread = 0;
std::atomic<WorkProgress*> g_progress = nullptr;
decltype(&GetFileAttributesExW) g_realQuery = nullptr;

BOOL WINAPI AskSilentShare(LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID information) {
    if (!std::wstring_view(path).starts_with(L"\\\\silent\\")) {
        return g_realQuery(path, level, information);
    }
    ++g_asked;
    g_askingThread = GetCurrentThreadId();
    WaitForSingleObject(g_answer, kSilence);
    SetLastError(ERROR_BAD_NETPATH);
    return FALSE;
}

class SilentShareTest : public testing::Test {
protected:
    SilentShareTest() : m_query("GetFileAttributesExW", &AskSilentShare) {
        g_answer = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        g_realQuery = m_query.Real();
        g_asked = 0;
        std::string information = "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n";
        for (int number = 1; number <= 5; ++number) {
            information += "[REFERANCE_FILE_" + std::to_string(number) +
                           "]\r\nIsReferencedFile=YES\r\nFilePath=\\\\silent\\share\\" +
                           std::to_string(number) + ".pdf\r\n";
        }
        m_folder.Write(L"mxinfo.ini", information);
    }
    ~SilentShareTest() override {
        SetEvent(g_answer);
        for (int i = 0; i < 500 && m_report.use_count() > 1; ++i) {
            Sleep(10); // a check that was left to itself uses the folder
        }
        CloseHandle(g_answer);
    }

    // Waits as F7 does; true when the check came to its end.
    bool WaitForCheck() {
        const auto check = [report = m_report,
                            folder = m_folder.PathWithSeparator()](WorkProgress& progress) {
            g_progress = &progress;
            *report = CheckUnpacked(folder, progress);
        };
        return WaitForWork(nullptr, L"Checking silent.mxov", check);
    }

    // As the button of the window does, once the computer is asked.
    static void CancelWhenAsked() {
        for (int i = 0; i < 1000 && g_asked == 0; ++i) {
            Sleep(10);
        }
        g_progress.load()->Cancel();
    }

    ImportHook<decltype(GetFileAttributesExW)> m_query;
    TempFolder m_folder;
    std::shared_ptr<CheckReport> m_report = std::make_shared<CheckReport>();
};

} // namespace

TEST_F(SilentShareTest, TheCheckIsCancelledWhileAComputerDoesNotAnswer) {
    ASSERT_NE(g_realQuery, nullptr);
    std::thread user(CancelWhenAsked);
    const ULONGLONG start = GetTickCount64();
    EXPECT_FALSE(WaitForCheck());
    const ULONGLONG took = GetTickCount64() - start;
    user.join();
    EXPECT_LT(took, ULONGLONG{20'000}) << "and the computer would have answered after a minute";
    EXPECT_EQ(g_asked, 1);
    EXPECT_NE(g_askingThread, GetCurrentThreadId());
    EXPECT_TRUE(m_report->findings.empty());
}

TEST_F(SilentShareTest, AComputerThatDoesNotAnswerIsAskedOnce) {
    SetEvent(g_answer);
    ASSERT_TRUE(WaitForCheck());
    EXPECT_EQ(g_asked, 1);
    EXPECT_TRUE(m_report->ok);
    ASSERT_EQ(m_report->findings.size(), 5u);
    EXPECT_EQ(m_report->findings[4].text, care::FindingText::LinkUnanswered);
}
