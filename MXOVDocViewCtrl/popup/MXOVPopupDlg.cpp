// The popup as a window: creation, controls, closing.
#include "MXOVPopupDlg.h"

#include "shell/HelpLauncher.h"
#include "shell/HostText.h"

#include <mxovshare.h>

#include <utility>

using namespace docview;

namespace {

constexpr int kGap = 6;            // pixels between the control and the popup
constexpr int kTop = 180;          // pixels, on the screen
constexpr int kBottomOffset = 179; // the popup is placed one pixel shorter than it is
constexpr DWORD kStaticKindBits = 0x000F;
constexpr COLORREF kHighlight = RGB(0, 102, 178);

/// Keeps the module loaded: the mouse hooks are never removed, so their procedure must stay.
void PinModule(HOOKPROC procedure) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(procedure), &module);
}

bool IsPress(WPARAM message) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
        return true;
    default:
        return false;
    }
}

} // namespace

MXOVPopupDlg* MXOVPopupDlg::current = nullptr;
bool MXOVPopupDlg::browsing = false;

MXOVPopupDlg::MXOVPopupDlg(CWnd& owner) : m_owner(&owner) {
    browsing = false;
}

MXOVPopupDlg::~MXOVPopupDlg() = default;

MXOVPopupDlg* MXOVPopupDlg::Open(CWnd& owner) {
    if (!current) {
        current = new MXOVPopupDlg(owner);
        current->Create(IDD, &owner); // a failure deletes the popup and clears `current`
    }
    return current;
}

void MXOVPopupDlg::CloseOf(const CWnd& owner) {
    if (current && current->m_owner == &owner) {
        current->DestroyWindow();
    }
}

void MXOVPopupDlg::PlaceBeside(int controlWidth) {
    CRect rect;
    GetWindowRect(rect);
    const int left = controlWidth + kGap;
    MoveWindow(CRect(left, kTop, left + rect.Width(), rect.Height() + kBottomOffset), TRUE);
}

BOOL MXOVPopupDlg::DestroyWindow() {
    return ModelessDialog::DestroyWindow();
}

void MXOVPopupDlg::DoDataExchange(CDataExchange* dx) {
    ModelessDialog::DoDataExchange(dx);
    DDX_Control(dx, IDC_PREVIEW_BOX, m_previewBox);
    DDX_Control(dx, IDC_HISTORY_BOX, m_historyBox);
    DDX_Control(dx, IDC_PROPERTIES_BOX, m_propertiesBox);
    DDX_Control(dx, IDC_HISTORY, m_history);
    DDX_Control(dx, IDC_DOCUMENT_NAME, m_name);
    DDX_Control(dx, IDC_DOCUMENT_SIZE, m_size);
    DDX_Control(dx, IDC_NAME_LABEL, m_nameLabel);
    DDX_Control(dx, IDC_PATH_LABEL, m_pathLabel);
    DDX_Control(dx, IDC_SIZE_LABEL, m_sizeLabel);
    DDX_Control(dx, IDC_DESCRIPTION_LABEL, m_descriptionLabel);
    DDX_Text(dx, IDC_DOCUMENT_PATH, m_pathText);
    DDX_Text(dx, IDC_DESCRIPTION, m_descriptionText);
}

void MXOVPopupDlg::PostNcDestroy() {
    ModelessDialog::PostNcDestroy();
    if (current == this) {
        current = nullptr;
    }
    delete this;
}

BEGIN_MESSAGE_MAP(MXOVPopupDlg, ModelessDialog)
    ON_WM_PAINT()
    ON_WM_CTLCOLOR()
    ON_BN_CLICKED(IDC_BROWSE, &MXOVPopupDlg::OnBrowse)
    ON_EN_CHANGE(IDC_DESCRIPTION, &MXOVPopupDlg::OnDescriptionChanged)
    ON_STN_CLICKED(IDC_HELP_ICON, &MXOVPopupDlg::OnHelp)
END_MESSAGE_MAP()

BOOL MXOVPopupDlg::OnInitDialog() {
    ModelessDialog::OnInitDialog();
    PinModule(MouseHook);
    m_hook = SetWindowsHookExW(WH_MOUSE, MouseHook, nullptr, GetCurrentThreadId());
    m_keyboard.Start(GetSafeHwnd(), CloseByCommand);
    SetLabels();
    GetDlgItem(IDC_DESCRIPTION)->SendMessage(EM_SETLIMITTEXT); // no limit: the default truncates long texts
    ShowPicture(IDC_HELP_ICON, m_helpBitmap, HostBitmap(hostbitmap::kHelp));
    return TRUE;
}

void MXOVPopupDlg::OnPaint() {
    ModelessDialog::OnPaint();
    m_history.Invalidate();
}

HBRUSH MXOVPopupDlg::OnCtlColor(CDC* dc, CWnd* window, UINT /*kind*/) {
    const int id = window->GetDlgCtrlID();
    if (id == IDC_HIGHLIGHT_FIRST || id == IDC_HIGHLIGHT_SECOND) {
        dc->SetTextColor(kHighlight);
    }
    // The base class is not called: it would set the colours of a grey dialog.
    return static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
}

void MXOVPopupDlg::OnHelp() {
    LaunchHelp();
}

LRESULT CALLBACK MXOVPopupDlg::MouseHook(int code, WPARAM message, LPARAM parameter) noexcept {
    const auto* mouse = reinterpret_cast<const MOUSEHOOKSTRUCT*>(parameter);
    if (!current || !mouse) {
        return CallNextHookEx(nullptr, code, message, parameter);
    }
    HHOOK hook = current->m_hook;
    if (IsPress(message)) {
        AFX_MANAGE_STATE(AfxGetStaticModuleState());
        current->CloseOnPress(mouse->pt);
    }
    return CallNextHookEx(hook, code, message, parameter);
}

void MXOVPopupDlg::CloseOnPress(POINT screen) {
    CRect inside;
    GetClientRect(inside);
    ScreenToClient(&screen);
    if (!inside.PtInRect(screen)) {
        Close();
    }
}

void MXOVPopupDlg::CloseByCommand() {
    if (current) {
        AFX_MANAGE_STATE(AfxGetStaticModuleState());
        current->Close();
    }
}

void MXOVPopupDlg::Close() {
    if (browsing) {
        return;
    }
    if (IsEdited()) {
        PostUpdate();
    }
    DestroyWindow();
}

bool MXOVPopupDlg::IsEdited() const {
    return m_record.filePath != m_snapshot.filePath || m_record.description != m_snapshot.description;
}

void MXOVPopupDlg::ShowPicture(int id, CBitmap& shown, common::UniqueBitmap picture) {
    CStatic place;
    place.Attach(::GetDlgItem(m_hWnd, id));
    place.ModifyStyle(kStaticKindBits, SS_BITMAP | SS_CENTERIMAGE);
    place.SetBitmap(picture.get());
    place.Detach();
    shown.DeleteObject(); // the previous bitmap, which is no longer shown
    shown.Attach(picture.release());
}
