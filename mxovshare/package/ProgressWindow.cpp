#include "package/ProgressWindow.h"

namespace mxovshare {

namespace {

// All in milliseconds.
constexpr ULONGLONG kDialogDelay = 500;
constexpr ULONGLONG kInterval = 50;

// Input stays in the queue: nobody can use the host while it saves. A window that invalidates itself while it
// paints always has another WM_PAINT.
void PaintWindows() {
    constexpr int kMostPaints = 50;
    constexpr ULONGLONG kLongest = 20;
    const ULONGLONG end = GetTickCount64() + kLongest;
    MSG message = {};
    for (int paints = 0; paints < kMostPaints && GetTickCount64() < end &&
                         PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE);
         ++paints) {
        DispatchMessageW(&message);
    }
}

} // namespace

ProgressWindow::ProgressWindow(std::wstring title)
    : m_title(std::move(title)), m_nextLook(GetTickCount64() + kDialogDelay) {}

void ProgressWindow::Stop::operator()(IProgressDialog* dialog) const {
    dialog->StopProgressDialog();
    dialog->Release();
}

bool ProgressWindow::OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) {
    const ULONGLONG now = GetTickCount64();
    if (now < m_nextLook) {
        return true;
    }
    if (!m_tried) {
        Open();
    }
    PaintWindows();
    m_nextLook = GetTickCount64() + kInterval;
    if (m_dialog == nullptr) {
        return true;
    }
    Show(name, done, total);
    return !m_dialog->HasUserCancelled();
}

void ProgressWindow::Open() {
    m_tried = true;
    IProgressDialog* dialog = nullptr;
    if (FAILED(CoCreateInstance(CLSID_ProgressDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IProgressDialog,
                                reinterpret_cast<void**>(&dialog)))) {
        return;
    }
    m_dialog.reset(dialog);
    m_dialog->SetTitle(L"Maxtrel Orvando Document Manager");
    m_dialog->SetLine(1, m_title.c_str(), TRUE, nullptr);
    m_dialog->SetCancelMsg(L"Cancelling...", nullptr);
    m_dialog->StartProgressDialog(GetActiveWindow(), nullptr,
                                  PROGDLG_MODAL | PROGDLG_AUTOTIME | PROGDLG_NOMINIMIZE, nullptr);
}

void ProgressWindow::Show(const std::wstring& name, std::uint64_t done, std::uint64_t total) {
    m_dialog->SetLine(2, name.c_str(), TRUE, nullptr);
    m_dialog->SetProgress64(done, total);
}

} // namespace mxovshare
