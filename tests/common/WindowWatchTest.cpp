#include "common/WindowWatch.h"

#include "common/Handles.h"

#include <gtest/gtest.h>

#include <string>

using common::UniqueWindow;
using common::WatchedMessage;
using common::WatchWindow;

namespace {

constexpr UINT kAsked = WM_APP + 1;

/// The order in which the watchers of a window saw a message.
std::string seen;

LRESULT NoteAndPassOn(const WatchedMessage& message, void* name) noexcept {
    if (message.message == kAsked || message.message == WM_NCDESTROY) {
        seen += static_cast<const char*>(name);
    }
    return message.PassOn();
}

LRESULT AnswerItself(const WatchedMessage& message, void*) noexcept {
    return message.message == kAsked ? 7 : message.PassOn();
}

UniqueWindow MakeWindow() {
    seen.clear();
    return UniqueWindow(
        CreateWindowW(L"STATIC", L"text", 0, 0, 0, 9, 9, HWND_MESSAGE, nullptr, nullptr, nullptr));
}

char first[] = "1";
char second[] = "2";

} // namespace

TEST(WindowWatch, TheLastWatcherSeesAMessageFirst) {
    const UniqueWindow window = MakeWindow();
    ASSERT_TRUE(WatchWindow(window.get(), NoteAndPassOn, first));
    ASSERT_TRUE(WatchWindow(window.get(), NoteAndPassOn, second));
    SendMessageW(window.get(), kAsked, 0, 0);
    EXPECT_EQ("21", seen);
    wchar_t text[9] = L"";
    EXPECT_EQ(4, GetWindowTextW(window.get(), text, 9)) << "the window's own procedure answers";
}

TEST(WindowWatch, AWatcherMayKeepAMessage) {
    const UniqueWindow window = MakeWindow();
    ASSERT_TRUE(WatchWindow(window.get(), NoteAndPassOn, first));
    ASSERT_TRUE(WatchWindow(window.get(), AnswerItself, nullptr));
    EXPECT_EQ(7, SendMessageW(window.get(), kAsked, 0, 0));
    EXPECT_EQ("", seen);
}

TEST(WindowWatch, EndsWithTheWindow) {
    UniqueWindow window = MakeWindow();
    ASSERT_TRUE(WatchWindow(window.get(), NoteAndPassOn, first));
    ASSERT_TRUE(WatchWindow(window.get(), NoteAndPassOn, second));
    window.reset();
    EXPECT_EQ("21", seen);
    EXPECT_TRUE(common::watched::windows.empty());
}

// Some systems ask another process for a property with each message.
TEST(WindowWatch, KeepsNothingInTheWindow) {
    const UniqueWindow window = MakeWindow();
    ASSERT_TRUE(WatchWindow(window.get(), NoteAndPassOn, first));
    EXPECT_EQ(-1, EnumPropsW(window.get(), [](HWND, LPCWSTR, HANDLE) -> BOOL { return FALSE; }))
        << "no property";
}
