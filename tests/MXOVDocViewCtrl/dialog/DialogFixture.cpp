#include "DialogFixture.h"

#include "package/PackageInformation.h"
#include "package/RecordLists.h"

#include <commctrl.h>

using namespace docview;

// The module defines these beside its other objects.
docview::RecordList docview::partAssemblyRecords;
docview::RecordList docview::gCodeRecords;
docview::RecordList docview::setupSheetRecords;
docview::RecordList docview::additionalRecords;

namespace {

MessageBoxAnswer* currentAnswer = nullptr;

std::wstring TextOf(HWND window) {
    wchar_t text[512] = L"";
    GetWindowTextW(window, text, ARRAYSIZE(text));
    return text;
}

} // namespace

FrameWindow::FrameWindow() {
    CreateEx(0, L"Static", L"Frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 40, 40, 600, 700,
             nullptr, nullptr);
}

LRESULT FrameWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CONTEXTMENU) {
        ++contextMenus;
        return 0;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

void DialogFixture::Create() {
    ASSERT_TRUE(m_dialog.Create(MXOVDocViewActiveXDlg::IDD, &m_frame));
}

void DialogFixture::Load() {
    const std::wstring folder = m_package.PathWithSeparator();
    m_dialog.SetPackageFolder(folder);
    m_dialog.SetInformationFile(FindInformationFile(folder));
    m_dialog.LoadCatalogue();
}

void DialogFixture::Select(int list, int item) const {
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    state.state = item >= 0 ? state.stateMask : 0;
    SendMessageW(Item(list), LVM_SETITEMSTATE, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&state));
}

LRESULT DialogFixture::Notify(int list, UINT code) const {
    NMITEMACTIVATE notification = {};
    notification.hdr = {Item(list), static_cast<UINT_PTR>(list), code};
    return SendMessageW(m_dialog.GetSafeHwnd(), WM_NOTIFY, static_cast<WPARAM>(list),
                        reinterpret_cast<LPARAM>(&notification));
}

void DialogFixture::ClickHeader(int box) const {
    SendMessageW(Item(box), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
    SendMessageW(Item(box), WM_LBUTTONUP, 0, MAKELPARAM(10, 10));
}

void DialogFixture::Command(int id) const {
    SendMessageW(m_dialog.GetSafeHwnd(), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(Item(id)));
}

MessageBoxAnswer::MessageBoxAnswer(int button)
    : m_button(button), m_hook(SetWindowsHookExW(WH_CBT, Hook, nullptr, GetCurrentThreadId())) {
    currentAnswer = this;
}

MessageBoxAnswer::~MessageBoxAnswer() {
    UnhookWindowsHookEx(m_hook);
    currentAnswer = nullptr;
}

LRESULT CALLBACK MessageBoxAnswer::Hook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE) {
        currentAnswer->Read(reinterpret_cast<HWND>(wParam));
    } else if (code == HCBT_DESTROYWND && reinterpret_cast<HWND>(wParam) == currentAnswer->m_answered) {
        currentAnswer->m_answered = nullptr;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void MessageBoxAnswer::Read(HWND box) {
    constexpr int kMessageText = 0xffff;
    wchar_t name[16] = L"";
    GetClassNameW(box, name, ARRAYSIZE(name));
    // The window manager may activate a box again before the answer reaches it.
    if (box == m_answered || std::wstring(name) != L"#32770" || !GetDlgItem(box, m_button) ||
        !GetDlgItem(box, kMessageText)) {
        return;
    }
    m_answered = box;
    ++count;
    title = TextOf(box);
    text = TextOf(GetDlgItem(box, kMessageText));
    owner = GetWindow(box, GW_OWNER);
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(m_button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box, m_button)));
}
