#include "handler/PreviewHost.h"

#include "texts/Texts.h"
#include "window/Painting.h"
#include "window/Palette.h"

#include <utility>

namespace viewer {

namespace {

constexpr wchar_t kPreviewHostClass[] = L"MXOVPreviewHost";
constexpr UINT kStarted = WM_APP + 1;
constexpr UINT_PTR kLimitTimer = 1;
constexpr DWORD kEndPatience = 1000; // milliseconds

} // namespace

bool PreviewHost::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kPreviewHostClass;
    return Window::Create(windowClass, 0, Text(IDS_PREVIEW).c_str(),
                          WS_CHILD | WS_TABSTOP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, parent, id);
}

void PreviewHost::Show(PreviewedDocument document) {
    const HWND substitute = m_substitute;
    Clear();
    m_substitute = m_substitute ? m_substitute : substitute;
    ShowWindow(Handle(), SW_SHOWNA);
    SetTimer(Handle(), kLimitTimer, kPatience, nullptr);
    m_run = std::make_unique<PreviewRun>(Handle(), kStarted, m_asked, std::move(document));
}

void PreviewHost::Clear() {
    ++m_asked;
    m_substitute = nullptr;
    if (HasFocus()) {
        SetFocus(GetAncestor(Handle(), GA_ROOT)); // the parent, which gets it otherwise, has no use for it
        m_substitute = GetFocus();
    }
    m_run.reset();
    KillTimer(Handle(), kLimitTimer);
    ShowWindow(Handle(), SW_HIDE);
}

bool PreviewHost::End() {
    const bool hasEnded = !m_run || m_run->End(kEndPatience);
    Clear();
    return hasEnded;
}

// What another document was asked for instead does not matter any more.
void PreviewHost::OnStarted(WPARAM number, bool isShown) {
    if (number != m_asked) {
        return;
    }
    KillTimer(Handle(), kLimitTimer);
    if (!isShown) {
        Fail();
    } else if (m_substitute && GetFocus() == m_substitute) {
        SetFocus(Handle());
    }
}

bool PreviewHost::HasFocus() const {
    const HWND focus = GetFocus();
    return focus && (focus == Handle() || IsChild(Handle(), focus));
}

void PreviewHost::Fail() {
    Clear();
    if (m_failed) {
        m_failed();
    }
}

LRESULT PreviewHost::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case kStarted:
        OnStarted(wParam, lParam != FALSE);
        return 0;
    case WM_TIMER:
        Fail();
        return 0;
    case WM_SIZE:
        if (m_run) {
            m_run->Resize();
        }
        return 0;
    case WM_SETFOCUS:
        if (m_run) {
            m_run->TakeFocus();
        }
        return 0;
    case WM_ERASEBKGND: {
        RECT area = {};
        GetClientRect(Handle(), &area);
        Fill(reinterpret_cast<HDC>(wParam), area, CurrentPalette().card);
        return TRUE;
    }
    case WM_DESTROY:
        Clear();
        return 0;
    default:
        return Default(message, wParam, lParam);
    }
}

} // namespace viewer
