#include "handler/PreviewRun.h"

#include "common/Handles.h"
#include "handler/PreviewHandler.h"
#include "window/Window.h"

#include <thread>
#include <utility>

#include <ole2.h>

namespace viewer {

namespace {

constexpr wchar_t kCellClass[] = L"MXOVPreviewCell";
constexpr UINT kFit = WM_APP + 1;
constexpr UINT kFocus = WM_APP + 2;

RECT ClientArea(HWND window) {
    RECT area = {};
    GetClientRect(window, &area);
    return area;
}

bool IsKey(const MSG& message) {
    return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
}

// The window of the thread that the handler shows the document in. It lies in the host only while the handler
// has proved to answer: a window that waits for a window inside it waits for its thread.
class PreviewCell : public Window {
public:
    explicit PreviewCell(HWND host) : m_host(host) {}

    [[nodiscard]] bool Create() {
        WNDCLASSEXW windowClass = {};
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
        windowClass.lpszClassName = kCellClass;
        // Disabled, so that a handler which takes the focus activates nothing.
        constexpr DWORD kStyle = WS_POPUP | WS_CLIPCHILDREN | WS_DISABLED;
        if (!Window::Create(windowClass, WS_EX_TOOLWINDOW, L"", kStyle, nullptr)) {
            return false;
        }
        Fit();
        return true;
    }

    [[nodiscard]] bool Show(const PreviewedDocument& document) {
        m_handler = PreviewHandler::Start(document, Handle(), m_host);
        ::SetFocus(nullptr); // if the handler has taken it
        return static_cast<bool>(m_handler);
    }

    void MoveIntoHost() const {
        SetWindowLongPtrW(Handle(), GWL_STYLE, WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_DISABLED);
        SetParent(Handle(), m_host);
        Fit();
        ShowWindow(Handle(), SW_SHOWNA);
        EnableWindow(Handle(), TRUE);
    }

    // Whether the handler or the host has used a key.
    [[nodiscard]] bool PreTranslate(MSG& message) const {
        return IsKey(message) && m_handler.TranslateAccelerator(message);
    }

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case kFit:
            Fit();
            return 0;
        case WM_SIZE:
            m_handler.Resize(Handle());
            return 0;
        case kFocus:
            m_handler.TakeFocus();
            return 0;
        case WM_DESTROY:
            m_handler = {};
            return 0;
        default:
            return Default(message, wParam, lParam);
        }
    }

private:
    void Fit() const {
        const RECT area = ClientArea(m_host);
        SetWindowPos(Handle(), HWND_TOP, 0, 0, area.right, area.bottom, SWP_NOACTIVATE);
    }

    HWND m_host;
    PreviewHandler m_handler;
};

} // namespace

// What the thread works on. It outlives the run when a handler does not return.
class PreviewRun::Work {
public:
    Work(HWND host, UINT message, WPARAM number, PreviewedDocument document)
        : m_host(host), m_message(message), m_number(number), m_document(std::move(document)),
          m_left(CreateEventW(nullptr, TRUE, TRUE, nullptr)) {}

    void Run() noexcept {
        const bool isReady = SUCCEEDED(OleInitialize(nullptr));
        try {
            PreviewCell cell(m_host);
            ShowIn(cell);
        } catch (...) {
            Report(false); // out of memory
        }
        SetEvent(m_left.get());
        if (isReady) {
            OleUninitialize();
        }
    }

    void Stop() {
        m_isStopping = true;
        ShowWindowAsync(m_cell, SW_HIDE);
        PostMessageW(m_cell, WM_NULL, 0, 0);
    }

    void Post(UINT message) const { PostMessageW(m_cell, message, 0, 0); }

    // Handles what the thread sends to the host meanwhile.
    [[nodiscard]] bool WaitUntilLeft(DWORD patience) const {
        const ULONGLONG end = GetTickCount64() + patience;
        const HANDLE left = m_left.get();
        for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
            if (MsgWaitForMultipleObjects(1, &left, FALSE, static_cast<DWORD>(end - now), QS_SENDMESSAGE) !=
                WAIT_OBJECT_0 + 1) {
                break;
            }
            MSG message = {};
            PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
        }
        return WaitForSingleObject(left, 0) == WAIT_OBJECT_0;
    }

private:
    void ShowIn(PreviewCell& cell) {
        const bool isShown = cell.Create() && Start(cell);
        Report(isShown);
        MSG message = {};
        while (isShown && !m_isStopping && GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (!cell.PreTranslate(message)) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
    }

    bool Start(PreviewCell& cell) {
        m_cell = cell.Handle();
        if (!cell.Show(m_document) || m_isStopping) {
            return false;
        }
        ResetEvent(m_left.get());
        cell.MoveIntoHost();
        return true;
    }

    void Report(bool isShown) const { PostMessageW(m_host, m_message, m_number, isShown); }

    const HWND m_host;
    const UINT m_message;
    const WPARAM m_number;
    const PreviewedDocument m_document;
    const common::UniqueHandle m_left; // signalled while no window of the thread lies in the host
    std::atomic<HWND> m_cell = nullptr;
    std::atomic<bool> m_isStopping = false;
};

PreviewRun::PreviewRun(HWND host, UINT message, WPARAM number, PreviewedDocument document)
    : m_work(std::make_shared<Work>(host, message, number, std::move(document))) {
    std::thread([work = m_work] { work->Run(); }).detach();
}

PreviewRun::~PreviewRun() {
    m_work->Stop();
}

void PreviewRun::Resize() const {
    m_work->Post(kFit);
}

void PreviewRun::TakeFocus() const {
    m_work->Post(kFocus);
}

bool PreviewRun::End(DWORD patience) const {
    m_work->Stop();
    return m_work->WaitUntilLeft(patience);
}

} // namespace viewer
