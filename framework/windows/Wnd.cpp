// CWnd: handles, creation, subclassing and the plain window functions.
#include "Wnd.h"

#include "core/Temporary.h"
#include "DataExchange.h"
#include "WindowProcedure.h"

#include <new>
#include <utility>

using namespace framework;

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

CWnd::~CWnd() {
    if (m_hWnd) {
        CWnd::DestroyWindow();
    }
}

CWnd* PASCAL CWnd::FromHandle(HWND hWnd) {
    CWnd* permanent = FromHandlePermanent(hWnd);
    return permanent ? permanent : TemporaryOf<CWnd, &CWnd::m_hWnd>(hWnd);
}

CWnd* PASCAL CWnd::FromHandlePermanent(HWND hWnd) noexcept {
    const ThreadState* thread = ModuleState::Thread();
    if (!thread) {
        return nullptr;
    }
    const auto found = thread->windows.find(hWnd);
    return found == thread->windows.end() ? nullptr : found->second;
}

BOOL CWnd::Attach(HWND hWndNew) {
    ThreadState* thread = ModuleState::Thread();
    if (!thread) {
        throw std::bad_alloc();
    }
    if (!hWndNew || m_hWnd || !thread->windows.emplace(hWndNew, this).second) {
        return FALSE;
    }
    m_hWnd = hWndNew;
    if (const auto orphan = thread->orphans.find(hWndNew); orphan != thread->orphans.end()) {
        *GetSuperWndProcAddr() = orphan->second; // the window's messages come here already
        thread->orphans.erase(orphan);
    }
    return TRUE;
}

HWND CWnd::Detach() noexcept {
    ThreadState* thread = ModuleState::Thread();
    if (m_hWnd && thread) {
        const WNDPROC before = std::exchange(*GetSuperWndProcAddr(), nullptr);
        Guard([&] {
            if (before) {
                thread->orphans.emplace(m_hWnd, before);
            }
        });
        if (FromHandlePermanent(m_hWnd) == this) {
            thread->windows.erase(m_hWnd);
        }
    }
    return std::exchange(m_hWnd, nullptr);
}

BOOL CWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                  CWnd* pParentWnd, UINT nID, LPVOID lpParam) {
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID, lpParam);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                    const RECT& rect, CWnd* pParentWnd, UINT nID, LPVOID lpParam) {
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top,
                    rect.right - rect.left, rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x,
                    int y, int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam) {
    CREATESTRUCT cs = {
        lpParam, AfxGetInstanceHandle(),     nIDorHMenu,     hWndParent,    nHeight,  nWidth, y,
        x,       static_cast<LONG>(dwStyle), lpszWindowName, lpszClassName, dwExStyle};
    if (!PreCreateWindow(cs)) {
        PostNcDestroy();
        return FALSE;
    }
    WindowCreation creation(this);
    const HWND created =
        ::CreateWindowEx(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x, cs.y,
                         cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    if (!created) {
        creation.Fail();
    }
    return created != nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs) {
    return cs.lpszClass != nullptr;
}

BOOL CWnd::DestroyWindow() {
    const HWND window = m_hWnd;
    if (!window) {
        return FALSE;
    }
    const bool permanent = FromHandlePermanent(window) == this;
    const BOOL destroyed = ::DestroyWindow(window);
    if (destroyed) {
        // A permanent object may have deleted itself by now; what is in the map exists.
        CWnd* left = permanent ? FromHandlePermanent(window) : this;
        if (left == this) {
            WindowAccess::Forget(*left);
        }
    }
    return destroyed;
}

BOOL CWnd::SubclassWindow(HWND hWnd) {
    if (::GetWindowThreadProcessId(hWnd, nullptr) != ::GetCurrentThreadId() || !Attach(hWnd)) {
        return FALSE;
    }
    const bool inChain = *GetSuperWndProcAddr() != nullptr;
    try {
        PreSubclassWindow();
    } catch (...) {
        Detach();
        throw;
    }
    if (!inChain && !WindowAccess::TakeOver(*this)) {
        Detach();
        return FALSE;
    }
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent) {
    return SubclassWindow(::GetDlgItem(pParent->m_hWnd, static_cast<int>(nID)));
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
    return ::SendMessage(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
    return ::PostMessage(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PreTranslateMessage(MSG*) {
    return FALSE;
}

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags) noexcept {
    const DWORD before = GetStyle();
    const DWORD after = (before & ~dwRemove) | dwAdd;
    if (before == after) {
        return FALSE;
    }
    ::SetWindowLong(m_hWnd, GWL_STYLE, static_cast<LONG>(after));
    if (nFlags != 0) {
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | nFlags);
    }
    return TRUE;
}

int CWnd::GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const noexcept {
    return ::GetWindowText(m_hWnd, lpszStringBuf, nMaxCount);
}

void CWnd::GetWindowText(CString& rString) const {
    const int length = GetWindowTextLength();
    const int copied = ::GetWindowText(m_hWnd, rString.GetBuffer(length + 1), length + 1);
    rString.ReleaseBuffer(copied);
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw) noexcept {
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(pFont ? pFont->m_hObject : nullptr),
                MAKELPARAM(bRedraw, 0));
}

CFont* CWnd::GetFont() const {
    return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
}

void CWnd::ClientToScreen(LPRECT lpRect) const noexcept {
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::ScreenToClient(LPRECT lpRect) const noexcept {
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) noexcept {
    ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
}

void CWnd::MoveWindow(LPCRECT lpRect, BOOL bRepaint) noexcept {
    MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top,
               bRepaint);
}

BOOL CWnd::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags) noexcept {
    return ::SetWindowPos(m_hWnd, pWndInsertAfter ? pWndInsertAfter->m_hWnd : nullptr, x, y, cx, cy, nFlags);
}

BOOL CWnd::RedrawWindow(LPCRECT lpRectUpdate, HRGN hrgnUpdate, UINT flags) noexcept {
    return ::RedrawWindow(m_hWnd, lpRectUpdate, hrgnUpdate, flags);
}

int CWnd::MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType) const noexcept {
    const ActivationScope activation; // themed buttons in any host
    return ::MessageBox(m_hWnd, lpszText, lpszCaption, nType);
}
