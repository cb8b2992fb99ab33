// The fixture of the tests of a control that shows a message box, a dialog or its popup.
#pragma once

#include "EmbeddedControl.h"
#include "PackageBuilder.h"

#include <algorithm>

#include <commctrl.h>

inline constexpr wchar_t kBoxTitle[] = L"Maxtrel Orvando Document Manager";
inline constexpr wchar_t kPopupTitle[] = L"Document Properties";
inline constexpr wchar_t kFrameTitle[] = L"MXOVDocView Control";

/// A visible window of this thread whose title holds a text; null when there is none.
inline HWND Shown(const std::wstring& title) {
    std::pair<const std::wstring&, HWND> search{title, nullptr};
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& [wanted, found] = *reinterpret_cast<std::pair<const std::wstring&, HWND>*>(parameter);
            wchar_t text[200] = L"";
            GetWindowTextW(window, text, ARRAYSIZE(text));
            if (IsWindowVisible(window) && wcsstr(text, wanted.c_str())) {
                found = window;
            }
            return found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.second;
}

/// Acts once a window with this title is up, from inside its modal loop, and then answers it with a command
/// until it is gone. One at a time.
class ModalDriver {
public:
    ModalDriver(std::wstring title, std::function<void()> act, WPARAM answer)
        : m_title(std::move(title)), m_act(std::move(act)), m_answer(answer),
          m_timer(SetTimer(nullptr, 0, kInterval, Step)) {
        current = this;
    }
    ~ModalDriver() {
        KillTimer(nullptr, m_timer);
        current = nullptr;
    }
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;

    [[nodiscard]] bool WasUp() const { return m_wasUp; }

private:
    static constexpr UINT kInterval = 50; // milliseconds

    static void CALLBACK Step(HWND, UINT, UINT_PTR, DWORD) {
        if (!current) {
            return;
        }
        const HWND box = Shown(current->m_title);
        if (!box) {
            return;
        }
        if (!std::exchange(current->m_wasUp, true)) {
            current->m_act();
        }
        PostMessageW(box, WM_COMMAND, current->m_answer, 0);
    }

    static inline ModalDriver* current = nullptr;
    std::wstring m_title;
    std::function<void()> m_act;
    WPARAM m_answer;
    bool m_wasUp = false;
    UINT_PTR m_timer;
};

/// A control with a package loaded, whose modal windows are driven by tests.
class ModalControlTest : public EmbeddedControlTest {
protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        ASSERT_EQ(S_OK, Load(package.Path(), SavedFile()));
        Pump();
    }

    [[nodiscard]] std::wstring SavedFile() const {
        return package.Folder().PathWithSeparator() + L"saved.mxov";
    }

    void Modify() const { SendMessageW(Dialog(), WM_COMMAND, kUpdateButton, 0); }

    /// Calls the member, with no reference of the test's own left during the call but the caller's.
    HRESULT CallClose() {
        IDispatch* automation = Automation(control.Get()).Detach();
        const HRESULT result = Invoke(automation, kClose, DISPATCH_METHOD);
        automation->Release();
        return result;
    }

    void Select(int list, int item) const {
        LVITEMW state = {};
        state.stateMask = state.state = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(Item(list), LVM_SETITEMSTATE, static_cast<WPARAM>(item),
                     reinterpret_cast<LPARAM>(&state));
    }
    void DoubleClick(int list, int item) const {
        Select(list, item);
        Notify(list, item, NM_DBLCLK);
    }
    void Notify(int list, int item, UINT code) const {
        NMITEMACTIVATE header = {};
        header.hdr = {Item(list), static_cast<UINT_PTR>(list), code};
        header.iItem = item;
        SendMessageW(Dialog(), WM_NOTIFY, static_cast<WPARAM>(list), reinterpret_cast<LPARAM>(&header));
    }

    /// What containers do at the worst moment.
    void Leave() {
        container.Remove();
        control.Reset();
    }

    /// No window besides the container's, no reference, and the module may go.
    void ExpectNothingLeft() {
        Pump();
        for (const wchar_t* title : {kBoxTitle, kPopupTitle, kFrameTitle}) {
            EXPECT_FALSE(Shown(title));
        }
        EXPECT_FALSE(IsWindow(container.Window()) && container.ControlWindow());
        EXPECT_EQ(1, container.References());
        EXPECT_EQ(S_OK, m_module.Call("DllCanUnloadNow"));
    }

    [[nodiscard]] size_t Count(const std::string& call) const {
        return static_cast<size_t>(std::ranges::count(container.Calls(), call));
    }

    PackageBuilder package;
};
