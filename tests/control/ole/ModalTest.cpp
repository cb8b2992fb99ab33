// The control while it shows a message box, a dialog or its popup: closed, released and left alone meanwhile.
#include "EmbeddedControl.h"
#include "FileDialogDriver.h"
#include "PackageBuilder.h"

#include <algorithm>
#include <filesystem>

#include <commctrl.h>

namespace {

const std::wstring kPageText =
    L"TODO: Place controls to manipulate properties of MXOVDocView Control on this dialog.";

constexpr wchar_t kBoxTitle[] = L"Maxtrel Orvando Document Manager";
constexpr wchar_t kPopupTitle[] = L"Document Properties";
constexpr wchar_t kFrameTitle[] = L"MXOVDocView Control";

/// A visible window of this thread whose title holds a text; null when there is none.
HWND Shown(const std::wstring& title) {
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

class ModalTest : public EmbeddedControlTest {
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

    /// The dialog of the property page inside a frame: the descendant dialog with the page's one text.
    static HWND PageIn(HWND frame) {
        HWND page = nullptr;
        EnumChildWindows(
            frame,
            [](HWND window, LPARAM parameter) -> BOOL {
                wchar_t text[100] = L"";
                GetWindowTextW(window, text, ARRAYSIZE(text));
                if (text == kPageText) {
                    *reinterpret_cast<HWND*>(parameter) = GetParent(window);
                }
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&page));
        return page;
    }

    [[nodiscard]] size_t Count(const std::string& call) const {
        return static_cast<size_t>(std::ranges::count(container.Calls(), call));
    }

    PackageBuilder package;
};

} // namespace

TEST_F(ModalTest, ClosedAndReleasedWhileTheQuestionIsUp) {
    for (const WPARAM answer : {IDNO, IDYES}) {
        Modify();
        const ModalDriver driver(
            kBoxTitle,
            [&] {
                Leave();
                EXPECT_EQ(S_FALSE, m_module.Call("DllCanUnloadNow")) << "a call is still inside";
            },
            answer);
        EXPECT_EQ(S_OK, CallClose());
        EXPECT_TRUE(driver.WasUp());
        EXPECT_EQ(answer == IDYES, std::filesystem::exists(SavedFile())) << "the answer still counts";
        ExpectNothingLeft();
        control = CreateControl();
        SetUp();
    }
}

TEST_F(ModalTest, ContainersWindowGoesWhileTheQuestionIsUp) {
    Modify();
    const ModalDriver driver(
        kBoxTitle, [&] { DestroyWindow(container.Window()); }, IDNO);
    EXPECT_EQ(S_OK, CallClose());
    EXPECT_TRUE(driver.WasUp());
    EXPECT_EQ(S_OK, CallClose()) << "no window to ask in, and no package is written unasked";
    EXPECT_FALSE(std::filesystem::exists(SavedFile()));
    Leave();
    ExpectNothingLeft();
}

TEST_F(ModalTest, ClosedAndReleasedWhileAMessageOfAnEventIsUp) {
    package.WriteInformation("[FILEINFO]\nMaxtlreVersion=Package Writer 2024\n[REFERANCE_FILE_1]\n"
                             "IsReferencedFile=YES\nFilePath=Q:\\gone.pdf\n");
    ASSERT_EQ(S_OK, Load(package.Path()));
    const ModalDriver driver(
        kBoxTitle, [&] { Leave(); }, IDOK);
    DoubleClick(kAdditionalList, 0);
    EXPECT_TRUE(driver.WasUp());
    ExpectNothingLeft();
}

TEST_F(ModalTest, ClosedAndReleasedWhileAFileIsChosen) {
    for (const bool choose : {false, true}) {
        bool left = false;
        {
            const FileDialogDriver driver([&](HWND dialog) {
                if (!std::exchange(left, true)) {
                    Leave();
                }
                choose ? FileDialogDriver::Choose(dialog, package.Path() + L"mxinfo.ini")
                       : FileDialogDriver::Cancel(dialog);
            });
            SendMessageW(Dialog(), WM_COMMAND, kAddButton, 0);
        }
        EXPECT_TRUE(left);
        ExpectNothingLeft();
        control = CreateControl();
        SetUp();
    }
}

TEST_F(ModalTest, AFileChosenAfterTheControlWasClosedIsNotAdded) {
    const std::string before = package.Folder().Read(L"pkg\\mxinfo.ini");
    for (const bool comesBack : {false, true}) {
        bool closed = false;
        {
            const FileDialogDriver driver([&](HWND dialog) {
                if (!std::exchange(closed, true)) {
                    EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_NOSAVE));
                    if (comesBack) {
                        EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
                    }
                }
                FileDialogDriver::Choose(dialog, package.Path() + L"mxinfo.ini");
            });
            SendMessageW(Dialog(), WM_COMMAND, kAddButton, 0);
        }
        EXPECT_TRUE(closed);
        EXPECT_EQ(before, package.Folder().Read(L"pkg\\mxinfo.ini"));
        if (!comesBack) {
            ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        }
        EXPECT_FALSE(IsWindowEnabled(Item(kSaveButton)));
    }
}

TEST_F(ModalTest, ClosedWhileThePopupIsUp) {
    for (const bool released : {false, true}) {
        Select(kAdditionalList, 0);
        Notify(kAdditionalList, 0, NM_CLICK);
        ASSERT_TRUE(Shown(kPopupTitle));
        if (released) {
            Leave();
        } else {
            EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_NOSAVE));
        }
        EXPECT_FALSE(FindWindowW(nullptr, kPopupTitle)) << "gone with the control's window";
        EXPECT_FALSE(container.ControlWindow());
        if (!released) {
            ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        }
    }
    ExpectNothingLeft();
}

TEST_F(ModalTest, PropertiesShowThePageInTheSystemsFrame) {
    HWND page = nullptr;
    std::wstring text;
    for (const LONG verb : {LONG{OLEIVERB_PROPERTIES}, 1L}) { // 1: the control's own verb of that name
        page = nullptr;
        const ModalDriver driver(
            kFrameTitle,
            [&] {
                page = PageIn(Shown(kFrameTitle));
                wchar_t shown[200] = L"";
                GetWindowTextW(GetWindow(page, GW_CHILD), shown, ARRAYSIZE(shown));
                text = shown;
                EXPECT_TRUE(container.WasCalled("EnableModeless(0)"));
            },
            IDCANCEL);
        EXPECT_EQ(S_OK, container.DoVerb(verb));
        EXPECT_TRUE(driver.WasUp());
        EXPECT_TRUE(page) << "its dialog is inside the frame";
        EXPECT_EQ(kPageText, text);
        EXPECT_FALSE(IsWindow(page));
        EXPECT_TRUE(container.WasCalled("EnableModeless(1)"));
        container.ForgetCalls();
    }
    EXPECT_EQ(S_FALSE, As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->IsDirty());
}

TEST_F(ModalTest, ContainersOwnFrameComesFirst) {
    container.habits.hasPropertyFrame = true;
    EXPECT_EQ(S_OK, container.DoVerb(OLEIVERB_PROPERTIES));
    EXPECT_TRUE(container.WasCalled("ShowPropertyFrame"));
    EXPECT_FALSE(container.WasCalled("EnableModeless(0)"));
}

TEST_F(ModalTest, ClosedAndReleasedWhileItsPropertiesAreShown) {
    const ModalDriver driver(
        kFrameTitle, [&] { Leave(); }, IDCANCEL);
    IOleObject* object = As<IOleObject>(control.Get(), IID_IOleObject).Detach();
    object->DoVerb(OLEIVERB_PROPERTIES, nullptr, &container, 0, container.Window(), &container.position);
    object->Release();
    EXPECT_TRUE(driver.WasUp());
    ExpectNothingLeft();
}

TEST_F(ModalTest, ContainerIsEnabledAgainWhenTheControlIsClosedUnderItsProperties) {
    const ModalDriver driver(
        kFrameTitle,
        [&] {
            EXPECT_EQ(1U, Count("EnableModeless(0)"));
            container.Object()->Close(OLECLOSE_NOSAVE);
        },
        IDCANCEL);
    container.DoVerb(OLEIVERB_PROPERTIES);
    ASSERT_TRUE(driver.WasUp());
    EXPECT_EQ(1U, Count("EnableModeless(0)"));
    EXPECT_EQ(1U, Count("EnableModeless(1)"));
    Leave();
    ExpectNothingLeft();
}

TEST_F(ModalTest, MessageBoxesDisableTheContainerMeanwhile) {
    for (const bool closed : {false, true}) {
        Modify();
        container.ForgetCalls();
        const ModalDriver driver(
            kBoxTitle,
            [&] {
                EXPECT_EQ(1U, Count("EnableModeless(0)"));
                EXPECT_EQ(0U, Count("EnableModeless(1)"));
                if (closed) {
                    Leave();
                }
            },
            IDNO);
        EXPECT_EQ(S_OK, CallClose());
        EXPECT_TRUE(driver.WasUp());
        EXPECT_EQ(1U, Count("EnableModeless(0)"));
        EXPECT_EQ(1U, Count("EnableModeless(1)"));
    }
    ExpectNothingLeft();
}

TEST_F(ModalTest, FileDialogsDisableTheContainerMeanwhile) {
    for (const bool closed : {false, true}) {
        container.ForgetCalls();
        bool up = false;
        {
            const FileDialogDriver driver([&](HWND dialog) {
                if (!std::exchange(up, true)) {
                    EXPECT_EQ(1U, Count("EnableModeless(0)"));
                    EXPECT_EQ(0U, Count("EnableModeless(1)"));
                    if (closed) {
                        Leave();
                    }
                }
                FileDialogDriver::Cancel(dialog);
            });
            SendMessageW(Dialog(), WM_COMMAND, kAddButton, 0);
        }
        EXPECT_TRUE(up);
        EXPECT_EQ(1U, Count("EnableModeless(0)"));
        EXPECT_EQ(1U, Count("EnableModeless(1)"));
    }
    ExpectNothingLeft();
}
