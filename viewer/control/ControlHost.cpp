#include "control/ControlHost.h"

#include "common/Himetric.h"
#include "common/Paths.h"
#include "package/Paths.h"

#include <ole2.h>

#include <vector>

namespace viewer {

namespace {

constexpr wchar_t kProgId[] = L"MXOVTREETAB.MXOVDocViewCtrlVS2015.13";
constexpr wchar_t kContainerClass[] = L"AtlAxWin";

// Commands of the control's dialog: its "&Save" button, and what its properties window posts after a change.
constexpr int kSaveButton = 1039;
constexpr WPARAM kPackageChanged = 1042;

// The two functions of the system's container library that a host needs.
struct ContainerLibrary {
    BOOL(WINAPI* initialise)() = nullptr;
    HRESULT(WINAPI* getControl)(HWND, IUnknown**) = nullptr;
};

template <class Function>
void Find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

// The library stays loaded: its window class lives as long as the program.
ContainerLibrary LoadContainerLibrary() {
    ContainerLibrary library;
    if (const HMODULE module = LoadLibraryExW(L"atl.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
        Find(module, "AtlAxWinInit", library.initialise);
        Find(module, "AtlAxGetControl", library.getControl);
    }
    return library;
}

std::wstring NotRegisteredText() {
    return L"The document control is not registered on this computer.\n\n"
           L"Run this once as an administrator, then start the viewer again:\n\n"
           L"regsvr32 \"" +
           common::ModuleFolder(nullptr) + L"\\MXOVDocViewCtrl.ocx\"";
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
    CLSID classId = {};
    if (FAILED(CLSIDFromProgID(kProgId, &classId))) {
        return NotRegisteredText();
    }
    const ContainerLibrary library = LoadContainerLibrary();
    if (!library.initialise || !library.getControl || !library.initialise()) {
        return L"The system's control container (atl.dll) cannot be used.";
    }
    m_container = CreateWindowExW(0, kContainerClass, kProgId, WS_CHILD | WS_CLIPSIBLINGS | WS_TABSTOP, 0, 0,
                                  0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                  GetModuleHandleW(nullptr), nullptr);
    common::ComPtr<IUnknown> control;
    if (m_container && SUCCEEDED(library.getControl(m_container, control.Receive()))) {
        m_control = control.As<IDispatch>();
    }
    if (!m_control) {
        Destroy();
        return L"The document control is registered but cannot be created.\n\n"
               L"Check that MXOVDocViewCtrl.ocx and mxovshare.dll lie in the folder they were registered "
               L"from.";
    }
    m_naturalSize = MeasureControl();
    return {};
}

void ControlHost::Destroy() noexcept {
    m_control.Reset();
    if (m_container) {
        DestroyWindow(std::exchange(m_container, nullptr));
    }
}

void ControlHost::Move(const RECT& area) {
    const LONG width = area.right - area.left;
    const LONG height = area.bottom - area.top;
    MoveWindow(m_container, area.left, area.top, width, height, TRUE);
    Call(L"OnSizeChange", {NumberArgument(width), NumberArgument(height)});
    // The control lays itself out when it draws, and a window that gets smaller is not redrawn by itself.
    if (const HWND control = ControlWindow()) {
        RedrawWindow(control, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
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
    const HWND save = GetDlgItem(Content(), kSaveButton);
    return save && IsWindowEnabled(save);
}

void ControlHost::Save() {
    MarkChanged();
    SendMessageW(Content(), WM_COMMAND, MAKEWPARAM(kSaveButton, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(Content(), kSaveButton)));
}

void ControlHost::MarkChanged() {
    SendMessageW(Content(), WM_COMMAND, kPackageChanged, 0);
}

bool ControlHost::TranslateAccelerator(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) {
        return false;
    }
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
