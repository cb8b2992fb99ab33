// The system's viewer of type libraries, given the control's file: what it shows is what browsers of types
// see.
#include "FileDialogDriver.h"
#include "Process.h"

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

constexpr WPARAM kViewTypeLib = 101; // the viewer's command for a type library in a file
constexpr wchar_t kDialogClass[] = L"#32770";

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 64> name = {};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

/// The first window that an enumeration returns and the test accepts; null when there is none.
class WindowSearch {
public:
    explicit WindowSearch(std::function<bool(HWND)> accept) : m_accept(std::move(accept)) {}

    HWND Below(HWND parent) {
        EnumChildWindows(parent, Look, reinterpret_cast<LPARAM>(this));
        return m_found;
    }
    HWND OnTop() {
        EnumWindows(Look, reinterpret_cast<LPARAM>(this));
        return m_found;
    }

private:
    static BOOL CALLBACK Look(HWND window, LPARAM parameter) {
        auto& search = *reinterpret_cast<WindowSearch*>(parameter);
        if (search.m_accept(window)) {
            search.m_found = window;
        }
        return search.m_found == nullptr;
    }

    std::function<bool(HWND)> m_accept;
    HWND m_found = nullptr;
};

HWND Descendant(HWND window, const std::wstring& className) {
    return WindowSearch([&](HWND child) { return ClassOf(child) == className; }).Below(window);
}

/// The viewer as a process of its own; ended with the object.
class Viewer {
public:
    Viewer() {
        if (!m_process) {
            throw std::runtime_error("the system has no viewer of type libraries");
        }
    }
    ~Viewer() {
        m_process.Terminate(0);
        EXPECT_EQ(m_process.Wait(), 0u);
    }
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;

    /// Waits for a visible window of the process, a dialog or not, with a child of this class.
    [[nodiscard]] HWND WaitFor(bool dialog, const std::wstring& childClass) const {
        constexpr int kAttempts = 1000;
        constexpr DWORD kInterval = 20;
        for (int i = 0; i < kAttempts; ++i) {
            const HWND found = WindowSearch([&](HWND window) {
                                   DWORD process = 0;
                                   GetWindowThreadProcessId(window, &process);
                                   return process == m_process.Id() && IsWindowVisible(window) &&
                                          (ClassOf(window) == kDialogClass) == dialog &&
                                          Descendant(window, childClass);
                               }).OnTop();
            if (found) {
                return found;
            }
            Sleep(kInterval); // the windows of another process send us no message
        }
        return nullptr;
    }

private:
    Process m_process{L"oleview.exe"};
};

std::string TextOf(HWND window) {
    std::wstring text(static_cast<size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
    const LRESULT length =
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return {text.begin(), text.begin() + length};
}

/// Without returns before the line feeds and without the comment on top, which names the file.
std::string Declaration(std::string text) {
    std::erase(text, '\r');
    return text.substr(std::min(text.find("\n[\n") + 1, text.size()));
}

std::string Expected() {
    std::ifstream file(MXOV_SHOWN_IDL, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    text.pop_back(); // the viewer's text has no line feed at its end
    return text;
}

std::filesystem::path ControlFile() {
    constexpr DWORD kLongest = 1024;
    std::array<wchar_t, kLongest> path = {};
    SearchPathW(nullptr, L"MXOVDocViewCtrl.ocx", nullptr, kLongest, path.data(), nullptr);
    return path.data();
}

} // namespace

TEST(OleViewTest, ShowsTheTypeLibraryAsItIsDeclared) {
    const Viewer viewer;
    const HWND main = viewer.WaitFor(false, WC_TREEVIEWW);
    ASSERT_TRUE(main);
    PostMessageW(main, WM_COMMAND, kViewTypeLib, 0);
    const HWND chooser = viewer.WaitFor(true, L"SHELLDLL_DefView");
    ASSERT_TRUE(chooser);
    FileDialogDriver::Choose(chooser, ControlFile().wstring());
    const HWND library = viewer.WaitFor(false, L"Edit");
    ASSERT_TRUE(library);
    const HWND tree = Descendant(library, WC_TREEVIEWW);
    const LRESULT root = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0);
    ASSERT_NE(0, root);
    SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, root);
    const std::string shown = TextOf(Descendant(library, L"Edit"));
    EXPECT_NE(std::string::npos, shown.find("MXOVDocViewCtrl.ocx")) << "the file that was opened";
    EXPECT_EQ(Expected(), Declaration(shown));
}
