#include "PopupFixture.h"

#include "package/ItemText.h"
#include "package/RecordLists.h"

#include <mxovshare.h>

using namespace docview;

// The module defines these beside its other objects.
docview::RecordList docview::partAssemblyRecords;
docview::RecordList docview::gCodeRecords;
docview::RecordList docview::setupSheetRecords;
docview::RecordList docview::additionalRecords;

namespace {

constexpr int kOwnerRight = 300;

DocumentRecord Record(DocumentCategory category, const wchar_t* section, const std::wstring& path,
                      const wchar_t* description, bool linked) {
    return {section, FileNameOf(path), L"2024-01-01 09:05:03", path, description, linked ? 1 : 0,
            0,       category};
}

} // namespace

OwnerWindow::OwnerWindow() {
    CreateEx(0, L"Static", L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 40, kOwnerRight - 10, 300, nullptr,
             nullptr);
    const HINSTANCE module = GetModuleHandleW(nullptr);
    CreateWindowExW(0, L"Button", L"Update", WS_CHILD, 0, 0, 50, 20, m_hWnd,
                    reinterpret_cast<HMENU>(INT_PTR{IDC_UPDATE}), module, nullptr);
    CreateWindowExW(0, L"Button", L"Other", WS_CHILD | WS_VISIBLE, 20, 20, 80, 30, m_hWnd,
                    reinterpret_cast<HMENU>(INT_PTR{kOther}), module, nullptr);
}

OwnerWindow::~OwnerWindow() {
    MXOVPopupDlg::CloseOf(*this);
    DestroyWindow();
}

LRESULT OwnerWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) {
        if (wParam == MAKEWPARAM(IDC_UPDATE, 0) && lParam == reinterpret_cast<LPARAM>(Update())) {
            ++updates;
        } else if (wParam == MAKEWPARAM(kOther, BN_CLICKED)) {
            ++otherClicks;
        } else if (LOWORD(wParam) != kOther) {
            ++strangeCommands;
        }
        return 0;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

PopupFixture::PopupFixture() {
    const std::wstring part = m_package.WriteSized(L"outside\\Bracket & Arm.SldPrt", 1025);
    const std::wstring first = m_package.WriteSized(L"nc\\op10.nc", 1024);
    const std::wstring second = m_package.WriteSized(L"nc\\op20.nc", 1);
    const std::wstring sheet = m_package.WriteSized(L"sheets\\setup.html", 0);
    const std::wstring linked = m_package.WriteSized(L"outside\\notes.txt", 2048);
    m_package.WriteSized(L"ReferanceFiles\\plan.txt", 2049);
    partAssemblyRecords = {Record(DocumentCategory::PartAssembly, L"FILEINFO", part, L"The part", true)};
    gCodeRecords = {Record(DocumentCategory::GCode, L"FILEINFO", first, L"Three steps", false),
                    Record(DocumentCategory::GCode, L"FILEINFO", second, L"Three steps", false)};
    setupSheetRecords = {Record(DocumentCategory::SetupSheets, L"FILEINFO", sheet, L"One sheet", false)};
    setupSheetRecords.push_back(setupSheetRecords.front());
    additionalRecords = {
        Record(DocumentCategory::AdditionalDocument, L"REFERANCE_FILE_1", linked, L"Notes", true),
        Record(DocumentCategory::AdditionalDocument, L"REFERANCE_FILE_4", L"ReferanceFiles\\plan.txt",
               L"Plan", false)};
    m_history = {{L"Created", L"2024-01-01 10:00", L"Ana", L"first"},
                 {L"Updated", L"2024-02-02 11:00", L"Bo", L""}};
}

PopupFixture::~PopupFixture() {
    MXOVPopupDlg::CloseOf(m_owner);
}

void PopupFixture::Fill(DocumentCategory category, int index, bool recent) {
    MXOVPopupDlg* popup = MXOVPopupDlg::Open(m_owner);
    ASSERT_TRUE(popup);
    popup->FillProperties(m_preview, m_history, category, index, m_package / L"mxinfo.ini", m_package.Path(),
                          m_package / L"job.mxov", recent);
}

void PopupFixture::Show(DocumentCategory category, int index, bool recent) {
    Fill(category, index, recent);
    MXOVPopupDlg::Current()->PlaceBeside(kOwnerRight);
    MXOVPopupDlg::Current()->ShowWindow(SW_SHOW);
    HandleMessages();
}

std::wstring PopupFixture::Text(int id) const {
    const HWND item = Item(id);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(item)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(item, text.data(), static_cast<int>(text.size()))));
    return text;
}

void PopupFixture::Type(const std::wstring& text) const {
    const HWND edit = Item(IDC_DESCRIPTION);
    SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(GetWindowTextLengthW(edit)), -1);
    for (const wchar_t c : text) {
        SendMessageW(edit, WM_CHAR, c, 1);
    }
}

std::wstring PopupFixture::Value(const wchar_t* section, const wchar_t* key) const {
    return mxovshare::INIFile::GetKeyValueFromINI(section, key, m_package / L"mxinfo.ini");
}

void HandleMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}
