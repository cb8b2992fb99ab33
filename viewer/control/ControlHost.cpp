#include "control/ControlHost.h"

#include "common/Himetric.h"
#include "common/Paths.h"
#include "control/ControlParts.h"
#include "control/DpiContext.h"
#include "package/Paths.h"
#include "texts/Texts.h"

#include <commctrl.h>
#include <ole2.h>

#include <optional>
#include <vector>

namespace viewer {

namespace {

constexpr wchar_t kContainerClass[] = L"AtlAxWin";

// The two functions of the system's container library that a host needs.
struct ContainerLibrary {
    BOOL(WINAPI* initialise)() = nullptr;
    HRESULT(WINAPI* getControl)(HWND, IUnknown**) = nullptr;
    bool isReady = false;
};

template <class Function>
void Find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

// The library stays loaded: its window class lives as long as the program, and cannot be made again.
ContainerLibrary LoadContainerLibrary() {
    ContainerLibrary library;
    if (const HMODULE module = LoadLibraryExW(L"atl.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
        Find(module, "AtlAxWinInit", library.initialise);
        Find(module, "AtlAxGetControl", library.getControl);
    }
    library.isReady = library.initialise && library.getControl && library.initialise();
    return library;
}

VARIANT TextArgument(BSTR text) {
    VARIANT argument = {};
    argument.vt = VT_BSTR;
    argument.bstrVal = text;
    return argument;
}

VARIANT NumberArgument(LONG number) {
    VARIANT argument = {};
    argument.vt = VT_I4;
    argument.lVal = number;
    return argument;
}

SIZE WindowSize(HWND window) {
    RECT area = {};
    GetWindowRect(window, &area);
    return {area.right - area.left, area.bottom - area.top};
}

} // namespace

std::wstring ControlHost::Create(HWND parent, int id) {
    if (std::wstring error = m_activation.Activate(common::ModuleFolder(nullptr)); !error.empty()) {
        return error;
    }
    static const ContainerLibrary library = LoadContainerLibrary();
    if (!library.isReady) {
        return Text(IDS_NO_CONTAINER);
    }
    std::optional<DpiContext> ofSystem;
    if (IsMixedDpiAllowed()) {
        ofSystem.emplace(DpiContext::kSystem);
    }
    m_container = CreateWindowExW(
        0, kContainerClass, ControlActivation::kClassId, WS_CHILD | WS_CLIPSIBLINGS | WS_TABSTOP, 0, 0, 0, 0,
        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    common::ComPtr<IUnknown> control;
    if (m_container && SUCCEEDED(library.getControl(m_container, control.Receive()))) {
        m_control = control.As<IDispatch>();
    }
    if (!m_control) {
        Destroy();
        return Text(IDS_NO_CONTROL, {m_activation.File()});
    }
    m_naturalSize = MeasureControl();
    NameParts();
    return {};
}

void ControlHost::Destroy() noexcept {
    m_control.Reset();
    if (m_container) {
        DestroyWindow(std::exchange(m_container, nullptr));
    }
}

SIZE ControlHost::NaturalSize(UINT dpi) const {
    return IsScaledBySystem(m_container) ? SizeForDpi(m_naturalSize, GetDpiForSystem(), dpi) : m_naturalSize;
}

void ControlHost::Move(const RECT& area) {
    const LONG width = area.right - area.left;
    const LONG height = area.bottom - area.top;
    MoveWindow(m_container, area.left, area.top, width, height, TRUE);
    UpdatePlace();
    // The control lays itself out when it draws, and a window that gets smaller is not redrawn by itself.
    if (const HWND control = ControlWindow()) {
        RedrawWindow(control, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
}

// The control adds the width that it receives to the left edge of the screen to place that window.
void ControlHost::UpdatePlace() {
    const DpiContext ofControl(m_container);
    const RECT area = ScreenArea();
    Call(L"OnSizeChange", {NumberArgument(area.right), NumberArgument(area.bottom - area.top)});
}

RECT ControlHost::ScreenArea() const {
    RECT area = {};
    GetWindowRect(m_container, &area);
    return area;
}

void ControlHost::LoadFile(const std::wstring& folder, const std::wstring& packageFile) {
    const common::Bstr first(folder);
    const common::Bstr second(packageFile);
    Call(L"LoadFile", {TextArgument(first.Get()), TextArgument(second.Get())});
}

void ControlHost::ClosePackage() {
    Call(L"Close");
}

void ControlHost::ClearAllData() {
    Call(L"ClearAllData");
}

bool ControlHost::HasChanges() const {
    const HWND save = GetDlgItem(Content(), part::kSaveButton);
    return save && IsWindowEnabled(save);
}

void ControlHost::Save() {
    MarkChanged();
    SendMessageW(Content(), WM_COMMAND, MAKEWPARAM(part::kSaveButton, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(Content(), part::kSaveButton)));
}

void ControlHost::MarkChanged() {
    SendMessageW(Content(), WM_COMMAND, part::kUpdateButton, 0);
}

int ControlHost::SelectedRow(int list) const {
    return ListView_GetNextItem(GetDlgItem(Content(), part::kFirstList + list), -1, LVNI_SELECTED);
}

void ControlHost::SelectRow(int list, int row) {
    constexpr UINT kSelected = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(GetDlgItem(Content(), part::kFirstList + list), row, kSelected, kSelected);
}

bool ControlHost::TranslateAccelerator(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) {
        return false;
    }
    const DpiContext ofControl(m_container);
    const common::ComPtr<IOleInPlaceActiveObject> active = m_control.As<IOleInPlaceActiveObject>();
    return active && active->TranslateAccelerator(&message) == S_OK;
}

void ControlHost::SetFocus(bool last) {
    const HWND content = Content();
    HWND part = content ? GetNextDlgTabItem(content, nullptr, FALSE) : nullptr;
    if (part && last) {
        part = GetNextDlgTabItem(content, part, TRUE);
    }
    ::SetFocus(part ? part : ControlWindow());
}

void ControlHost::Call(const wchar_t* member, std::initializer_list<VARIANT> arguments) {
    if (!m_control) {
        return;
    }
    std::wstring name = member;
    LPOLESTR names[] = {name.data()};
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(m_control->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) {
        return;
    }
    const DpiContext ofControl(m_container); // for windows that the member creates
    // Automation expects the last argument first.
    std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    m_control->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                      nullptr);
}

HWND ControlHost::ControlWindow() const {
    HWND window = nullptr;
    if (const common::ComPtr<IOleWindow> oleWindow = m_control.As<IOleWindow>()) {
        oleWindow->GetWindow(&window);
    }
    return window;
}

// Screen readers say what a window's text is: a list is named after its section, a button with a picture
// after what it does.
void ControlHost::NameParts() const {
    SetWindowTextW(m_container, Text(IDS_DOCUMENTS).c_str());
    const HWND content = Content();
    for (int section = 0; section < part::kSectionCount; ++section) {
        wchar_t title[128] = L"";
        GetDlgItemTextW(content, part::kFirstSection + section, title, ARRAYSIZE(title));
        SetDlgItemTextW(content, part::kFirstList + section, title);
    }
    SetDlgItemTextW(content, part::kAddButton, Text(IDS_ADD_DOCUMENT).c_str());
    SetDlgItemTextW(content, part::kRemoveButton, Text(IDS_REMOVE_DOCUMENT).c_str());
}

// Until its first draw, the control's dialog has the size of its template.
SIZE ControlHost::MeasureControl() const {
    if (const HWND content = Content()) {
        return WindowSize(content);
    }
    SIZEL extent = {};
    const common::ComPtr<IOleObject> object = m_control.As<IOleObject>();
    if (!object || FAILED(object->GetExtent(DVASPECT_CONTENT, &extent))) {
        return {};
    }
    return common::HimetricToPixels(extent);
}

} // namespace viewer
