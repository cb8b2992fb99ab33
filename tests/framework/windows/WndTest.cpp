#include "TestWindow.h"

#include "afxcmn.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class RefusingWindow : public RecordingWindow {
protected:
    afx_msg int OnCreate(LPCREATESTRUCT) { return -1; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(RefusingWindow, RecordingWindow)
    ON_WM_CREATE()
END_MESSAGE_MAP()

class ClassChangingWindow : public RecordingWindow {
public:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override {
        cs.lpszClass = L"STATIC";
        cs.style |= SS_NOTIFY;
        return RecordingWindow::PreCreateWindow(cs);
    }
};

class SelfDeletingWindow : public RecordingWindow {
public:
    explicit SelfDeletingWindow(int& deleted) : m_deleted(deleted) {}
    ~SelfDeletingWindow() override { ++m_deleted; }

protected:
    void PostNcDestroy() override { delete this; }

private:
    int& m_deleted;
};

TEST(WndCreation, TheFirstMessagesReachTheObject) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop());
    EXPECT_EQ(window.Count(WM_NCCREATE), 1);
    EXPECT_EQ(window.Count(WM_CREATE), 1);
    EXPECT_EQ(window.subclassed, 1);
    EXPECT_EQ(CWnd::FromHandlePermanent(window.m_hWnd), &window);
    EXPECT_EQ(CWnd::FromHandle(window.m_hWnd), &window);
}

TEST(WndCreation, TheClassMayBeChangedBeforehand) {
    ClassChangingWindow window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    wchar_t name[20] = L"";
    ::GetClassName(window, name, 20);
    EXPECT_EQ(::lstrcmpi(name, L"STATIC"), 0);
    EXPECT_TRUE(window.GetStyle() & SS_NOTIFY);
    // The class's own procedure stands below the object.
    window.SetWindowText(L"kept by the static");
    EXPECT_EQ(window.GetWindowTextLength(), 18);
}

TEST(WndCreation, WithoutAClassThereIsNoWindow) {
    RecordingWindow window;
    EXPECT_FALSE(window.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(window.gone, 1);
}

TEST(WndCreation, AnUnknownClassIsAFailureThatIsToldOnce) {
    RecordingWindow window;
    EXPECT_FALSE(window.CreateEx(0, L"no such class", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(window.gone, 1);
    EXPECT_TRUE(window.CreateTop()) << "the object can be used again";
}

TEST(WndCreation, ARefusalInOnCreateLeavesNoWindow) {
    RefusingWindow window;
    EXPECT_FALSE(window.CreateTop());
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(window.Count(WM_NCDESTROY), 1);
    EXPECT_EQ(window.gone, 1);
}

TEST(WndCreation, ASelfDeletingObjectIsDeletedWhenItsCreationFails) {
    int deleted = 0;
    EXPECT_FALSE((new SelfDeletingWindow(deleted))
                     ->CreateEx(0, L"no such class", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr));
    EXPECT_EQ(deleted, 1);
}

TEST(WndCreation, AWindowMadeDuringAnotherOnesCreationFindsItsOwnObject) {
    class Parent : public RecordingWindow {
    public:
        RecordingWindow child;

    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_CREATE) {
                EXPECT_TRUE(child.Create(L"STATIC", L"", WS_VISIBLE, CRect(0, 0, 5, 5), this, 9));
            }
            return RecordingWindow::WindowProc(message, wParam, lParam);
        }
    } parent;
    ASSERT_TRUE(parent.CreateTop());
    EXPECT_EQ(CWnd::FromHandlePermanent(parent.m_hWnd), &parent);
    EXPECT_EQ(parent.GetDlgItem(9), &parent.child);
    EXPECT_EQ(parent.child.GetParent(), &parent);
    EXPECT_EQ(parent.child.Count(WM_NCCREATE), 1);
}

TEST(WndDestruction, DetachesAndTellsTheObjectLast) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop());
    const HWND handle = window.m_hWnd;
    EXPECT_TRUE(window.DestroyWindow());
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(window.gone, 1);
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    EXPECT_FALSE(window.DestroyWindow());
}

TEST(WndDestruction, TheDestructorDestroysTheWindow) {
    auto window = std::make_unique<RecordingWindow>();
    ASSERT_TRUE(window->CreateTop());
    const HWND handle = window->m_hWnd;
    window.reset();
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST(WndDestruction, ASelfDeletingObjectGoesWithItsWindow) {
    int deleted = 0;
    auto* window = new SelfDeletingWindow(deleted);
    ASSERT_TRUE(window->CreateTop());
    ::DestroyWindow(window->m_hWnd);
    EXPECT_EQ(deleted, 1);
    window = new SelfDeletingWindow(deleted);
    ASSERT_TRUE(window->CreateTop());
    EXPECT_TRUE(window->DestroyWindow());
    EXPECT_EQ(deleted, 2);
}

TEST(WndDestruction, AnAttachedWindowIsForgottenWhenItsObjectDestroysIt) {
    const HWND handle =
        ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr, nullptr, nullptr);
    CWnd window;
    ASSERT_TRUE(window.Attach(handle));
    EXPECT_TRUE(window.DestroyWindow());
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST(WndMaps, AWindowHasOnePermanentObject) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop());
    CWnd second;
    EXPECT_FALSE(second.Attach(window.m_hWnd));
    EXPECT_FALSE(second.SubclassWindow(window.m_hWnd));
    EXPECT_EQ(second.m_hWnd, nullptr);
    EXPECT_FALSE(window.Attach(::GetDesktopWindow())) << "the object has a window";
    EXPECT_FALSE(second.Attach(nullptr));
}

TEST(WndMaps, ForeignWindowsGetOneTemporaryObjectForTheTimeOfACall) {
    const HWND desktop = ::GetDesktopWindow();
    {
        const framework::TemporaryScope call;
        CWnd* first = CWnd::FromHandle(desktop);
        ASSERT_NE(first, nullptr);
        EXPECT_EQ(first->m_hWnd, desktop);
        EXPECT_EQ(CWnd::FromHandle(desktop), first);
        EXPECT_EQ(CWnd::FromHandlePermanent(desktop), nullptr);
        {
            const framework::TemporaryScope inner;
            EXPECT_EQ(CWnd::FromHandle(desktop), first) << "an outer call's object serves inside";
        }
        EXPECT_EQ(CWnd::FromHandle(desktop), first) << "and outlives the inner call";
    }
    EXPECT_TRUE(::IsWindow(desktop)) << "a temporary object destroys nothing";
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
}

TEST(WndMaps, MessagesSentInBetweenLeaveACallersTemporaryObjectsAlone) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop());
    const framework::TemporaryScope call;
    CWnd* desktop = CWnd::FromHandle(::GetDesktopWindow());
    for (int i = 0; i < 3; ++i) {
        window.SendMessage(WM_SIZE);
    }
    EXPECT_EQ(desktop->m_hWnd, ::GetDesktopWindow());
    EXPECT_EQ(CWnd::FromHandle(::GetDesktopWindow()), desktop);
}

TEST(WndMaps, HandlesOfOneValueAndTwoKindsDoNotMeet) {
    const framework::TemporaryScope call;
    const HGDIOBJ stock = ::GetStockObject(WHITE_BRUSH);
    CGdiObject* plain = CGdiObject::FromHandle(stock);
    CBrush* brush = CBrush::FromHandle(static_cast<HBRUSH>(stock));
    EXPECT_NE(static_cast<CGdiObject*>(brush), plain);
    EXPECT_TRUE(brush->IsKindOf(RUNTIME_CLASS(CBrush)));
    EXPECT_EQ(brush->m_hObject, plain->m_hObject);
}

TEST(WndMaps, ThreadsHaveMapsOfTheirOwn) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop());
    struct Question {
        HWND handle;
        CWnd* permanent;
        BOOL subclassed;
    } question{window.m_hWnd, &window, TRUE};
    const HANDLE thread = ::CreateThread(
        nullptr, 0,
        [](void* parameter) -> DWORD {
            auto& asked = *static_cast<Question*>(parameter);
            asked.permanent = CWnd::FromHandlePermanent(asked.handle);
            CWnd other;
            asked.subclassed = other.SubclassWindow(asked.handle);
            return 0;
        },
        &question, 0, nullptr);
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
    EXPECT_EQ(question.permanent, nullptr);
    EXPECT_FALSE(question.subclassed) << "a window belongs to the thread that made it";
}

TEST(WndFunctions, RectanglesGoBetweenScreenAndClient) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop());
    window.MoveWindow(CRect(30, 40, 130, 90));
    CRect rect;
    window.GetWindowRect(rect);
    EXPECT_EQ(rect, CRect(30, 40, 130, 90));
    window.ScreenToClient(rect);
    EXPECT_EQ(rect, CRect(0, 0, 100, 50));
    window.ClientToScreen(rect);
    EXPECT_EQ(rect.TopLeft(), CPoint(30, 40));
    CPoint point(35, 45);
    window.ScreenToClient(&point);
    EXPECT_EQ(point, CPoint(5, 5));
}

TEST(WndFunctions, ModifyStyleTellsWhetherSomethingChanged) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop(WS_POPUP | SS_LEFT));
    EXPECT_TRUE(window.ModifyStyle(0x000F, SS_BITMAP | SS_CENTERIMAGE));
    EXPECT_EQ(window.GetStyle() & 0x021FU, static_cast<DWORD>(SS_BITMAP | SS_CENTERIMAGE));
    EXPECT_FALSE(window.ModifyStyle(0, SS_CENTERIMAGE));
    const int before = window.Count(WM_NCCALCSIZE);
    EXPECT_TRUE(window.ModifyStyle(0, WS_BORDER, SWP_FRAMECHANGED));
    EXPECT_GT(window.Count(WM_NCCALCSIZE), before);
}

TEST(WndFunctions, LongTextsComeWhole) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop());
    CString text(L'x', 3000);
    window.SetWindowText(text);
    CString read(L"before");
    window.GetWindowText(read);
    EXPECT_EQ(read, text);
    window.SetWindowText(L"");
    window.GetWindowText(read);
    EXPECT_TRUE(read.IsEmpty());
}

TEST(WndFunctions, FontsAreSetAndAsked) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop());
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(90, L"Tahoma"));
    window.SetFont(&font);
    const framework::TemporaryScope call;
    EXPECT_EQ(window.GetFont()->m_hObject, font.m_hObject);
    window.SetFont(nullptr);
    EXPECT_EQ(window.GetFont(), nullptr);
}

} // namespace
