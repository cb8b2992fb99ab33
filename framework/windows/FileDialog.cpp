#include "FileDialog.h"

#include "core/ModuleState.h"

#include <vector>

using namespace framework;

IMPLEMENT_DYNAMIC(CCommonDialog, CDialog)
IMPLEMENT_DYNAMIC(CFileDialog, CCommonDialog)

namespace {

// Flags that the older dialog's structure and the newer dialog share, with the same values.
constexpr DWORD kSharedFlags = OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR | OFN_NOVALIDATE | OFN_PATHMUSTEXIST |
                               OFN_FILEMUSTEXIST | OFN_CREATEPROMPT | OFN_SHAREAWARE | OFN_NOREADONLYRETURN |
                               OFN_NOTESTFILECREATE | OFN_NODEREFERENCELINKS | OFN_DONTADDTORECENT |
                               OFN_FORCESHOWHIDDEN;
static_assert(kSharedFlags ==
              (FOS_OVERWRITEPROMPT | FOS_NOCHANGEDIR | FOS_NOVALIDATE | FOS_PATHMUSTEXIST |
               FOS_FILEMUSTEXIST | FOS_CREATEPROMPT | FOS_SHAREAWARE | FOS_NOREADONLYRETURN |
               FOS_NOTESTFILECREATE | FOS_NODEREFERENCELINKS | FOS_DONTADDTORECENT | FOS_FORCESHOWHIDDEN));

/// The parts of a list separated by '|'; nothing after the last separator is no part.
std::vector<CString> Split(const CString& list) {
    std::vector<CString> parts;
    int from = 0;
    for (int to = list.Find(L'|'); to != -1; to = list.Find(L'|', from)) {
        parts.push_back(list.Mid(from, to - from));
        from = to + 1;
    }
    if (from < list.GetLength()) {
        parts.push_back(list.Mid(from));
    }
    return parts;
}

CString PathOf(IShellItem& item) {
    LPWSTR text = nullptr;
    if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &text))) {
        return {};
    }
    CString path(text);
    ::CoTaskMemFree(text);
    return path;
}

} // namespace

CCommonDialog::CCommonDialog(CWnd* pParentWnd) : CDialog(LPCTSTR{}, pParentWnd) {}

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt, LPCTSTR lpszFileName, DWORD dwFlags,
                         LPCTSTR lpszFilter, CWnd* pParentWnd, DWORD, BOOL)
    : CCommonDialog(pParentWnd), m_owner(pParentWnd), m_extension(lpszDefExt), m_name(lpszFileName),
      m_filter(lpszFilter), m_flags(dwFlags) {
    const ActivationScope activation;
    static_cast<void>(::CoCreateInstance(bOpenFileDialog ? CLSID_FileOpenDialog : CLSID_FileSaveDialog,
                                         nullptr, CLSCTX_INPROC_SERVER, IID_IFileDialog,
                                         m_dialog.ReceiveVoid()));
    m_customize = m_dialog.As<IFileDialogCustomize>(IID_IFileDialogCustomize);
}

INT_PTR CFileDialog::DoModal() {
    if (!m_dialog || FAILED(Prepare())) {
        return IDCANCEL;
    }
    // The whole host window is disabled meanwhile, not only the child that asks.
    const HWND owner = m_owner ? ::GetAncestor(m_owner->m_hWnd, GA_ROOT) : nullptr;
    const ActivationScope activation;
    common::ComPtr<IShellItem> chosen;
    if (FAILED(m_dialog->Show(owner)) || FAILED(m_dialog->GetResult(chosen.Receive()))) {
        return IDCANCEL;
    }
    m_path = PathOf(*chosen.Get());
    return m_path.IsEmpty() ? IDCANCEL : IDOK;
}

HRESULT CFileDialog::Prepare() {
    FILEOPENDIALOGOPTIONS options = 0;
    HRESULT result = m_dialog->GetOptions(&options);
    if (SUCCEEDED(result)) {
        result = m_dialog->SetOptions(options | (m_flags & kSharedFlags) | FOS_FORCEFILESYSTEM);
    }
    if (SUCCEEDED(result) && !m_extension.IsEmpty()) {
        result = m_dialog->SetDefaultExtension(m_extension);
    }
    if (SUCCEEDED(result) && !m_name.IsEmpty()) {
        result = m_dialog->SetFileName(m_name);
    }
    return SUCCEEDED(result) ? SetFilter() : result;
}

HRESULT CFileDialog::SetFilter() {
    const std::vector<CString> parts = Split(m_filter);
    std::vector<COMDLG_FILTERSPEC> types;
    for (size_t i = 0; i + 1 < parts.size(); i += 2) {
        types.push_back({parts[i], parts[i + 1]});
    }
    return types.empty() ? S_OK : m_dialog->SetFileTypes(static_cast<UINT>(types.size()), types.data());
}

HRESULT CFileDialog::AddCheckButton(DWORD dwIDCtl, const CString& strLabel, BOOL bChecked) {
    return m_customize ? m_customize->AddCheckButton(dwIDCtl, strLabel, bChecked) : E_NOINTERFACE;
}

HRESULT CFileDialog::SetCheckButtonState(DWORD dwIDCtl, BOOL bChecked) {
    return m_customize ? m_customize->SetCheckButtonState(dwIDCtl, bChecked) : E_NOINTERFACE;
}

HRESULT CFileDialog::GetCheckButtonState(DWORD dwIDCtl, BOOL& bChecked) {
    return m_customize ? m_customize->GetCheckButtonState(dwIDCtl, &bChecked) : E_NOINTERFACE;
}
