#include "mxovshare.h"

#include "host/MessageBoxes.h"
#include "ImportHook.h"
#include "mxovpackage.h"
#include "package/ProgressWindow.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>

#include <objbase.h>

using namespace mxovshare;

namespace {

std::vector<std::wstring> notices;

// Waits in a thread of its own for the progress dialog and presses Cancel in it, if it is to.
class DialogWatcher {
public:
    explicit DialogWatcher(bool cancel) : m_thread([this, cancel] { Watch(cancel); }) {}

    // Ends the watch; true when the dialog was there.
    bool HasSeen() {
        m_stop = true;
        m_thread.join();
        return m_seen;
    }

private:
    void Watch(bool cancel) {
        while (!m_stop && !m_seen) {
            const HWND dialog = FindWindowW(L"#32770", L"Maxtrel Orvando Document Manager");
            m_seen = dialog != nullptr && IsWindowVisible(dialog);
            if (m_seen && cancel) {
                PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
            }
            Sleep(1);
        }
    }

    std::atomic<bool> m_stop = false;
    std::atomic<bool> m_seen = false;
    std::thread m_thread;
};

class SaveProgressTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        notices.clear();
        SetErrorSink([](const wchar_t* text) { notices.emplace_back(text); });
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\n");
        m_work.Write(L"p.mxov", "the old one");
    }
    void TearDown() override {
        SetErrorSink(nullptr);
        CoUninitialize();
    }

    void WriteMuch(int files) const {
        std::mt19937 generator(5);
        std::string noise(4'000'000, '\0');
        // Worth compressing, so that it takes its time on any number of processors.
        for (char& byte : noise) {
            byte = static_cast<char>(generator() & 0x3F);
        }
        for (int i = 0; i < files; ++i) {
            m_folder.Write(std::to_wstring(i) + L".bin", noise);
        }
    }

    bool Save(bool cancel) {
        DialogWatcher watcher(cancel);
        Utils::ReGenerateOrvandoFile(m_folder.PathWithSeparator(), m_work / L"p.mxov", L"Edited");
        return watcher.HasSeen();
    }

    TempFolder m_folder;
    TempFolder m_work;
};

TEST_F(SaveProgressTest, ShowsNothingForAShortSave) {
    const ULONGLONG start = GetTickCount64();
    const bool seen = Save(false);
    EXPECT_TRUE(!seen || GetTickCount64() - start >= 500);
    EXPECT_TRUE(notices.empty());
    EXPECT_TRUE(VerifyPackage(m_work / L"p.mxov").ok);
}

TEST_F(SaveProgressTest, ShowsADialogForALongSave) {
    WriteMuch(20);
    EXPECT_TRUE(Save(false));
    EXPECT_TRUE(notices.empty());
    EXPECT_TRUE(VerifyPackage(m_work / L"p.mxov").ok);
    EXPECT_EQ(FindWindowW(L"#32770", L"Maxtrel Orvando Document Manager"), nullptr);
}

// A window that invalidates itself while it paints, as 3D views do; for five seconds, so that a test ends.
class PaintingWindow {
public:
    PaintingWindow() {
        WNDCLASSW description = {};
        description.lpfnWndProc = Procedure;
        description.lpszClassName = L"PaintingWindow";
        RegisterClassW(&description);
        paints = 0;
        end = GetTickCount64() + 5000;
        m_window = CreateWindowExW(0, L"PaintingWindow", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                   nullptr, nullptr, nullptr);
    }
    ~PaintingWindow() { DestroyWindow(m_window); }
    PaintingWindow(const PaintingWindow&) = delete;
    PaintingWindow& operator=(const PaintingWindow&) = delete;

    static inline int paints = 0;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM parameter) {
        if (message != WM_PAINT) {
            return DefWindowProcW(window, message, wide, parameter);
        }
        ++paints;
        ValidateRect(window, nullptr);
        if (GetTickCount64() < end) {
            InvalidateRect(window, nullptr, FALSE);
        }
        return 0;
    }

    static inline ULONGLONG end = 0;
    HWND m_window;
};

TEST_F(SaveProgressTest, GoesOnWhileAWindowPaintsWithoutEnd) {
    const PaintingWindow window;
    ProgressWindow progress(L"Saving");
    Sleep(600);
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(progress.OnProgress(L"a.txt", 1, 2));
    EXPECT_LT(GetTickCount64() - start, 3000u);
    EXPECT_GT(PaintingWindow::paints, 0);
    EXPECT_LE(PaintingWindow::paints, 100);
}

ULONGLONG now = 0;

ULONGLONG WINAPI TimeNow() {
    return now;
}

TEST_F(SaveProgressTest, LooksAfterHalfASecondAndThenTwentyTimesASecond) {
    const ImportHook<decltype(TimeNow)> clock("GetTickCount64", TimeNow);
    now = 1000;
    const PaintingWindow window;
    ProgressWindow progress(L"Saving");
    const auto paintsAt = [&progress](ULONGLONG time) {
        now = time;
        PaintingWindow::paints = 0;
        EXPECT_TRUE(progress.OnProgress(L"a.txt", 1, 2));
        return PaintingWindow::paints;
    };
    EXPECT_EQ(paintsAt(1499), 0);
    EXPECT_GT(paintsAt(1500), 0);
    EXPECT_EQ(paintsAt(1549), 0);
    EXPECT_GT(paintsAt(1550), 0);
    EXPECT_EQ(paintsAt(1599), 0);
}

TEST_F(SaveProgressTest, IsCancelledWhileAWindowPaintsWithoutEnd) {
    WriteMuch(30);
    const PaintingWindow window;
    EXPECT_TRUE(Save(true));
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_NE(notices[0].find(L"You cancelled it"), std::wstring::npos);
    EXPECT_EQ(m_work.Read(L"p.mxov"), "the old one");
}

TEST_F(SaveProgressTest, IsCancelledByTheUserWithoutATrace) {
    WriteMuch(30);
    EXPECT_TRUE(Save(true));
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_NE(notices[0].find(L"You cancelled it"), std::wstring::npos);
    EXPECT_EQ(m_work.Read(L"p.mxov"), "the old one");
    EXPECT_EQ(m_work.EntryCount(), 1);
    EXPECT_EQ(m_folder.Read(L"mxinfo.ini"), "[FILEINFO]\r\n");
}

} // namespace
