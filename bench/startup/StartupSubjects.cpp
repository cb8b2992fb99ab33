#include "StartupSubjects.h"

#include "common/Paths.h"

#include <ole2.h>

#include <commctrl.h>

#include <functional>
#include <string>

namespace {

constexpr int kWidth = 420; // pixels
constexpr int kHeight = 560;
constexpr wchar_t kControlModule[] = L"..\\bin\\MXOVDocViewCtrl.ocx"; // from the folder of this program
constexpr wchar_t kMinimalModule[] = L"minimal_control.dll";
constexpr CLSID kControlClass = {
    0x6406ff95, 0x0f04, 0x4382, {0x85, 0x2b, 0x89, 0xe0, 0x97, 0x9e, 0xae, 0xe8}};
constexpr CLSID kMinimalClass = {
    0x5a1f7c24, 0x93d0, 0x4b8e, {0x8e, 0x61, 0x1c, 0x0b, 0x75, 0xd2, 0x4f, 0x39}};

/// Loads a module as the system does that of a registered class: by its full path, with its own folder as the
/// first for what it needs.
HMODULE LoadModule(const wchar_t* name) {
    return LoadLibraryExW((common::ModuleFolder(nullptr) + L"\\" + name).c_str(), nullptr,
                          LOAD_WITH_ALTERED_SEARCH_PATH);
}

/// Makes a class known to this process, without the registry; once for each.
void MakeKnown(const wchar_t* moduleName, REFCLSID clsid) {
    const HMODULE module = LoadModule(moduleName);
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto get = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(module ? GetProcAddress(module, "DllGetClassObject") : nullptr));
    IUnknown* factory = nullptr;
    if (!get || FAILED(get(clsid, IID_IUnknown, reinterpret_cast<void**>(&factory)))) {
        return;
    }
    DWORD cookie = 0;
    CoRegisterClassObject(clsid, factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie);
    factory->Release();
}

HWND ShowInContainer(HWND frame, REFCLSID clsid) {
    LPOLESTR text = nullptr;
    StringFromCLSID(clsid, &text);
    const HWND container = CreateWindowExW(0, L"AtlAxWin", text, WS_CHILD | WS_VISIBLE, 0, 0, kWidth, kHeight,
                                           frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    CoTaskMemFree(text);
    return container;
}

HWND ShowControl(HWND frame) {
    static const bool known = (MakeKnown(kControlModule, kControlClass), true);
    return known ? ShowInContainer(frame, kControlClass) : nullptr;
}

HWND ShowMinimal(HWND frame) {
    static const bool known = (MakeKnown(kMinimalModule, kMinimalClass), true);
    return known ? ShowInContainer(frame, kMinimalClass) : nullptr;
}

void AddColumns(HWND list) {
    wchar_t title[] = L"Column";
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = title;
    for (const int width : {150, 40, 150}) {
        column.cx = width;
        SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    }
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) {
        return FALSE;
    }
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t name[40] = L"";
        GetClassNameW(child, name, ARRAYSIZE(name));
        if (lstrcmpiW(name, WC_LISTVIEWW) == 0) {
            AddColumns(child);
        }
    }
    return TRUE;
}

/// The dialog of the control's resources, under the manifest of the control's module.
HWND ShowWindows(HWND frame) {
    constexpr int kMainDialog = 1017;
    static const HMODULE module = LoadModule(kControlModule);
    static const HANDLE context = [] {
        ACTCTXW description = {};
        description.cbSize = sizeof description;
        description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        description.hModule = module;
        description.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
        return CreateActCtxW(&description);
    }();
    ULONG_PTR cookie = 0;
    ActivateActCtx(context, &cookie);
    const HWND dialog = CreateDialogParamW(module, MAKEINTRESOURCEW(kMainDialog), frame, DialogProcedure, 0);
    HandleMessages();
    DeactivateActCtx(0, cookie);
    return dialog;
}

void ForEachVisible(HWND window, std::function<void(HWND)> act) {
    EnumChildWindows(
        window,
        [](HWND child, LPARAM parameter) -> BOOL {
            if (IsWindowVisible(child)) {
                (*reinterpret_cast<std::function<void(HWND)>*>(parameter))(child);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&act));
}

} // namespace

const Subject kControl = {L"control", ShowControl, 4};
const Subject kMinimal = {L"minimal", ShowMinimal, 1};
const Subject kWindows = {L"windows", ShowWindows, 4};

HWND CreateFrame() {
    const HWND frame = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 40, 40,
                                       kWidth, kHeight, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    HandleMessages();
    return frame;
}

void HandleMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    GdiFlush();
}

bool IsPainted(HWND window) {
    bool painted = window != nullptr;
    ForEachVisible(window, [&](HWND child) { painted = painted && !GetUpdateRect(child, nullptr, FALSE); });
    return painted;
}

int CountLists(HWND window) {
    int lists = 0;
    ForEachVisible(window, [&](HWND child) {
        wchar_t name[40] = L"";
        GetClassNameW(child, name, ARRAYSIZE(name));
        lists += lstrcmpiW(name, WC_LISTVIEWW) == 0;
    });
    return lists;
}
