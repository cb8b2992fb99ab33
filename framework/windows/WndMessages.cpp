// CWnd: messages on their way to a handler, and the handlers of the base class.
#include "core/ThreadState.h"
#include "DataExchange.h"
#include "WindowMessages.h"
#include "WindowProcedure.h"

#include <utility>

using namespace framework;

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
END_MESSAGE_MAP()

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result)) {
        return result;
    }
    return DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (message == WM_COMMAND) {
        *pResult = 0;
        return OnCommand(wParam, lParam);
    }
    if (message == WM_NOTIFY) {
        *pResult = 0;
        return OnNotify(wParam, lParam, pResult);
    }
    const bool colour = message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
    const MessageEntry* entry = FindMessageEntry(GetMessageMap(), [=](const MessageEntry& candidate) {
        return candidate.nMessage == message || (colour && candidate.nMessage == kCtlColorEntry);
    });
    if (!entry) {
        return FALSE;
    }
    MessageArguments args = {message, wParam, lParam, nullptr, 0};
    const BOOL handled = entry->pfn(*this, args);
    *pResult = args.result;
    return handled;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const ThreadState* thread = ModuleState::Thread();
    const bool fromControl = lParam != 0;
    if (fromControl && thread && thread->exchanging == m_hWnd) {
        return TRUE;
    }
    // A menu command has code 0, an accelerator 1: both are the plain command.
    return OnCmdMsg(LOWORD(wParam), fromControl ? HIWORD(wParam) : 0, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    const ThreadState* thread = ModuleState::Thread();
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    if (!header) {
        return FALSE;
    }
    if (thread && thread->exchanging == m_hWnd) {
        return TRUE;
    }
    CWnd* const child = FromHandlePermanent(header->hwndFrom);
    if (child && child->OnChildNotify(WM_NOTIFY, wParam, lParam, pResult)) {
        return TRUE;
    }
    Notification notify = {pResult, header};
    return OnCmdMsg(static_cast<UINT>(header->idFrom), static_cast<int>(header->code), &notify, nullptr);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    const MessageEntry* entry = FindMessageEntry(GetMessageMap(), [=](const MessageEntry& candidate) {
        return candidate.nMessage == kReflected + message && candidate.nCode == header->code;
    });
    if (!entry) {
        return FALSE;
    }
    Notification notify = {pResult, header};
    MessageArguments args = {message, wParam, lParam, &notify, 0};
    return entry->pfn(*this, args);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const WNDPROC before = *GetSuperWndProcAddr();
    return before ? ::CallWindowProc(before, m_hWnd, message, wParam, lParam)
                  : ::DefWindowProc(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const MSG* current = GetCurrentMessage();
    return DefWindowProc(current->message, current->wParam, current->lParam);
}

const MSG* PASCAL CWnd::GetCurrentMessage() noexcept {
    static constexpr MSG none = {};
    ThreadState* thread = ModuleState::Thread();
    if (!thread) {
        return &none;
    }
    thread->message.time = static_cast<DWORD>(::GetMessageTime());
    const CPoint place(static_cast<LPARAM>(::GetMessagePos()));
    thread->message.pt = place;
    return &thread->message;
}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate) {
    ThreadState* thread = ModuleState::Thread();
    if (!m_hWnd || !thread) {
        return FALSE;
    }
    struct Exchange {
        ~Exchange() { thread.exchanging = outer; }
        ThreadState& thread;
        HWND outer;
    } const exchange{*thread, std::exchange(thread->exchanging, m_hWnd)};
    try {
        CDataExchange data(this, bSaveAndValidate);
        DoDataExchange(&data);
        return TRUE;
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): the documented exceptions are pointers
    } catch (CUserException* refused) {
        refused->Delete();
        return FALSE;
    }
}

void CWnd::DoDataExchange(CDataExchange*) {}

int CWnd::OnCreate(LPCREATESTRUCT) {
    return static_cast<int>(Default());
}

void CWnd::OnNcDestroy() {
    Default();
    WindowAccess::Forget(*this);
    PostNcDestroy();
}

void CWnd::OnPaint() {
    Default();
}

BOOL CWnd::OnEraseBkgnd(CDC*) {
    return static_cast<BOOL>(Default());
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd*, UINT) {
    return reinterpret_cast<HBRUSH>(Default());
}

void CWnd::OnSize(UINT, int, int) {
    Default();
}

void CWnd::OnContextMenu(CWnd*, CPoint) {
    Default();
}

void CWnd::OnSetFocus(CWnd*) {
    Default();
}

int CWnd::OnMouseActivate(CWnd*, UINT, UINT) {
    return static_cast<int>(Default());
}

void CWnd::OnMouseMove(UINT, CPoint) {
    Default();
}

void CWnd::OnLButtonDown(UINT, CPoint) {
    Default();
}

void CWnd::OnLButtonUp(UINT, CPoint) {
    Default();
}

void CWnd::OnLButtonDblClk(UINT, CPoint) {
    Default();
}

LRESULT CWnd::OnNcHitTest(CPoint) {
    return Default();
}
