#include "handler/PreviewHost.h"

#include "texts/Texts.h"
#include "window/Painting.h"
#include "window/Palette.h"

#include <utility>

namespace viewer {

namespace {

constexpr wchar_t kPreviewHostClass[] = L"MXOVPreviewHost";

// Puts the focus back if a handler has taken it.
class KeepFocus {
public:
    KeepFocus() : m_focus(GetFocus()) {}
    ~KeepFocus() {
        if (m_focus && GetFocus() != m_focus) {
            SetFocus(m_focus);
        }
    }
    KeepFocus(const KeepFocus&) = delete;
    KeepFocus& operator=(const KeepFocus&) = delete;

private:
    HWND m_focus;
};

} // namespace

bool PreviewHost::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kPreviewHostClass;
    return Window::Create(windowClass, 0, Text(IDS_PREVIEW).c_str(),
                          WS_CHILD | WS_TABSTOP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, parent, id);
}

bool PreviewHost::Show(const PreviewedDocument& document) {
    const HWND substitute = m_substitute;
    Clear();
    const int number = m_asked;
    ShowWindow(Handle(), SW_SHOWNA);
    PreviewHandler handler = Start(document);
    if (number != m_asked) {
        return true; // a message brought another document in the meantime
    }
    m_handler = std::move(handler);
    if (!m_handler) {
        ShowWindow(Handle(), SW_HIDE);
    }
    if (m_handler && substitute && GetFocus() == substitute) {
        SetFocus(Handle());
    }
    return static_cast<bool>(m_handler);
}

PreviewHandler PreviewHost::Start(const PreviewedDocument& document) const {
    const KeepFocus focus;
    // A handler that gets the focus for a moment activates the frame, which then remembers its window.
    EnableWindow(Handle(), FALSE);
    PreviewHandler handler = PreviewHandler::Start(document, Handle());
    EnableWindow(Handle(), TRUE);
    return handler;
}

bool PreviewHost::HasFocus() const {
    const HWND focus = GetFocus();
    return focus == Handle() || IsChild(Handle(), focus);
}

void PreviewHost::Clear() {
    ++m_asked;
    m_substitute = nullptr;
    if (HasFocus()) {
        SetFocus(GetAncestor(Handle(), GA_ROOT)); // the parent, which gets it otherwise, has no use for it
        m_substitute = GetFocus();
    }
    m_handler = {};
    ShowWindow(Handle(), SW_HIDE);
}

LRESULT PreviewHost::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        m_handler.Resize(Handle());
        return 0;
    case WM_SETFOCUS:
        m_handler.TakeFocus();
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
