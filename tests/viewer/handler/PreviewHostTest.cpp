// Documents shown by the preview handlers of their kinds.
#include "handler/PreviewHost.h"

#include "common/Handles.h"
#include "handler/PreviewHandler.h"
#include "handler/PreviewSite.h"
#include "ImportHook.h"
#include "RealMouse.h"
#include "TempFolder.h"
#include "TextPreviewHandler.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace viewer;

namespace {

constexpr CLSID kTestHandler = {0x5a1f39c4, 0x61f2, 0x4a0e, {0x93, 0x0d, 0x2e, 0x6f, 0x11, 0x7b, 0xd0, 0x5c}};
constexpr char kDocumentText[] = "what is in it";

// A handler of this kind, in this process and for each of its threads, while the object lives.
class RegisteredHandler {
public:
    explicit RegisteredHandler(TextPreviewHandler::Kind kind) : m_handlers(kind) { s_handlers = &m_handlers; }
    ~RegisteredHandler() { s_handlers = nullptr; }
    RegisteredHandler(const RegisteredHandler&) = delete;
    RegisteredHandler& operator=(const RegisteredHandler&) = delete;

private:
    static HRESULT WINAPI Create(REFCLSID number, IUnknown* outer, DWORD, REFIID iid, void** object) {
        *object = nullptr;
        return IsEqualCLSID(number, kTestHandler) && s_handlers
                   ? s_handlers->CreateInstance(outer, iid, object)
                   : REGDB_E_CLASSNOTREG;
    }

    static inline TextPreviewHandlers* s_handlers = nullptr;
    TextPreviewHandlers m_handlers;
    ImportHook<decltype(CoCreateInstance)> m_hook{"CoCreateInstance", Create};
};

class PreviewHostTest : public testing::Test {
protected:
    PreviewHostTest() {
        OleInitialize(nullptr);
        m_host.Create(m_frame.get(), 1);
        m_host.OnFailed([this] { m_hasFailed = true; });
        MoveWindow(m_host.Handle(), 0, 0, 200, 100, FALSE);
    }
    ~PreviewHostTest() override {
        KillTimer(nullptr, m_timer);
        static_cast<void>(m_host.End());
        OleUninitialize();
    }

    void Ask(const std::string& text) {
        m_hasFailed = false;
        TextPreviewHandler::Record() = {};
        m_host.Show({kTestHandler, m_folder.Write(L"a.tst", text), text});
    }

    // False when the document is not shown.
    bool Show() {
        Ask(kDocumentText);
        return PumpUntil([this] { return m_hasFailed || IsFieldVisible(); }) && !m_hasFailed;
    }
    [[nodiscard]] static bool IsFieldVisible() {
        const HWND field = TextPreviewHandler::Record().field;
        return field && IsWindowVisible(field);
    }
    [[nodiscard]] bool IsShown() const { return IsWindowVisible(m_host.Handle()); }
    [[nodiscard]] static std::wstring ShownText() {
        wchar_t text[64] = L"";
        GetWindowTextW(TextPreviewHandler::Record().field, text, ARRAYSIZE(text));
        return text;
    }

    TempFolder m_folder;
    common::UniqueWindow m_frame{CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                               nullptr, nullptr, nullptr)};
    common::UniqueWindow m_button{CreateWindowW(L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 0, 20, 20,
                                                m_frame.get(), nullptr, nullptr, nullptr)};
    PreviewHost m_host;
    bool m_hasFailed = false;
    UINT_PTR m_timer = SetTimer(nullptr, 0, 20, nullptr); // so that PumpUntil looks again
};

} // namespace

TEST_F(PreviewHostTest, AHandlerReadsAStreamAndTheFileIsFree) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::Stream);
    ASSERT_TRUE(Show());
    EXPECT_TRUE(IsShown());
    EXPECT_EQ(ShownText(), L"what is in it");
    EXPECT_EQ(TextPreviewHandler::Record().file, L"");
    EXPECT_TRUE(DeleteFileW((m_folder / L"a.tst").c_str())) << GetLastError();
}

TEST_F(PreviewHostTest, AHandlerThatTakesFilesReadsACopyWhichGoesWithIt) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::File);
    ASSERT_TRUE(Show());
    EXPECT_EQ(ShownText(), L"what is in it");
    const std::filesystem::path copy = TextPreviewHandler::Record().file;
    EXPECT_EQ(copy.filename(), L"a.tst");
    EXPECT_TRUE(exists(copy));
    EXPECT_TRUE(DeleteFileW((m_folder / L"a.tst").c_str())) << GetLastError();
    m_host.Clear();
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(PumpUntil([&copy] { return !exists(copy.parent_path()); }));
}

TEST_F(PreviewHostTest, AHandlerThatFailsIsNotShown) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::Failing);
    EXPECT_FALSE(Show());
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(PumpUntil([] { return TextPreviewHandler::Record().unloads == 1; }));
}

TEST_F(PreviewHostTest, WithoutARegisteredHandlerNothingIsShown) {
    EXPECT_FALSE(Show());
    EXPECT_FALSE(IsShown());
}

TEST_F(PreviewHostTest, TheNextDocumentUnloadsTheLast) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::Stream);
    ASSERT_TRUE(Show());
    const HWND first = TextPreviewHandler::Record().field;
    ASSERT_TRUE(Show());
    EXPECT_TRUE(PumpUntil([first] { return !IsWindow(first); }));
    EXPECT_TRUE(IsWindow(TextPreviewHandler::Record().field));
    const int unloads = TextPreviewHandler::Record().unloads;
    EXPECT_TRUE(m_host.End());
    EXPECT_EQ(TextPreviewHandler::Record().unloads, unloads + 1);
    EXPECT_FALSE(IsWindow(TextPreviewHandler::Record().field));
}

TEST_F(PreviewHostTest, WhatIsShownFollowsTheSize) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::Stream);
    ASSERT_TRUE(Show());
    MoveWindow(m_host.Handle(), 10, 10, 150, 90, FALSE);
    RECT area = {};
    EXPECT_TRUE(PumpUntil([&area] {
        GetClientRect(TextPreviewHandler::Record().field, &area);
        return area.right == 150;
    }));
    EXPECT_EQ(area.bottom, 90);
}

TEST_F(PreviewHostTest, TheFocusMovesInOnlyWhenTheUserMovesIt) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::Stream);
    SetForegroundWindow(m_frame.get());
    SetFocus(m_button.get());
    ASSERT_TRUE(Show());
    EXPECT_EQ(GetFocus(), m_button.get());
    SetFocus(m_host.Handle());
    EXPECT_TRUE(PumpUntil([] { return GetFocus() == TextPreviewHandler::Record().field; }));
}

TEST_F(PreviewHostTest, AHandlerThatNeverReturnsHoldsUpNothing) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::Stream);
    const ULONGLONG begin = GetTickCount64();
    Ask("never");
    EXPECT_LT(GetTickCount64() - begin, PreviewHost::kPatience / 2);
    EXPECT_TRUE(PumpUntil([this] { return m_hasFailed; }, ULONGLONG{4} * PreviewHost::kPatience));
    EXPECT_GE(GetTickCount64() - begin, PreviewHost::kPatience);
    EXPECT_FALSE(IsShown());
    ASSERT_TRUE(Show());
    EXPECT_EQ(ShownText(), L"what is in it");
}

TEST_F(PreviewHostTest, AnotherDocumentTakesThePlaceOfOneThatIsNotShownYet) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::Stream);
    Ask("never");
    ASSERT_TRUE(Show());
    EXPECT_EQ(ShownText(), L"what is in it");
    Ask("never");
    EXPECT_TRUE(m_host.End());
}

TEST_F(PreviewHostTest, AHandlerThatNoLongerAnswersCannotBeTakenOut) {
    const RegisteredHandler handler(TextPreviewHandler::Kind::Stream);
    // The window of such a handler remains: in a frame of its own, which is not destroyed either.
    const HWND frame =
        CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    auto* const host = new PreviewHost;
    host->Create(frame, 1);
    TextPreviewHandler::Record() = {};
    host->Show({kTestHandler, m_folder.Write(L"a.tst", "stuck"), "stuck"});
    ASSERT_TRUE(PumpUntil(IsFieldVisible));
    MoveWindow(host->Handle(), 0, 0, 50, 50, FALSE);
    ASSERT_TRUE(PumpUntil([] { return TextPreviewHandler::Record().isStuck; }));
    const ULONGLONG begin = GetTickCount64();
    EXPECT_FALSE(host->End());
    EXPECT_LT(GetTickCount64() - begin, 4000U);
}

TEST(PreviewSite, KeysThatTheHandlerDoesNotUseReachTheWindow) {
    const common::UniqueWindow window(
        CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
    PreviewSite* site = new PreviewSite(window.get());
    MSG key = {nullptr, WM_KEYDOWN, 'A', 1, 0, {}};
    EXPECT_EQ(site->TranslateAccelerator(&key), S_FALSE);
    key.wParam = VK_F6;
    EXPECT_EQ(site->TranslateAccelerator(&key), S_OK);
    key.wParam = VK_TAB;
    EXPECT_EQ(site->TranslateAccelerator(&key), S_OK);
    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, window.get(), WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>(VK_F6));
    ASSERT_TRUE(PeekMessageW(&message, window.get(), WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>(VK_TAB));
    EXPECT_EQ(site->Release(), 0U);
}

TEST(FindPreviewHandler, ReadsTheRegistryByExtension) {
    constexpr wchar_t kClass[] = L".mxovpreviewtest";
    constexpr wchar_t kKey[] = L".mxovpreviewtest\\shellex\\{8895b1c6-b41f-4c1c-a560-0d564250836f}";
    constexpr wchar_t kNumber[] = L"{5A1F39C4-61F2-4A0E-930D-2E6F117BD05C}";
    EXPECT_FALSE(FindPreviewHandler(kClass));
    ASSERT_EQ(RegSetKeyValueW(HKEY_CLASSES_ROOT, kKey, nullptr, REG_SZ, kNumber, sizeof kNumber),
              ERROR_SUCCESS);
    const std::optional<CLSID> handler = FindPreviewHandler(kClass);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kClass);
    ASSERT_TRUE(handler);
    EXPECT_TRUE(IsEqualCLSID(*handler, kTestHandler));
    EXPECT_FALSE(FindPreviewHandler(L""));
}
