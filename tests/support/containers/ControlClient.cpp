#include "ControlClient.h"

#include "RealMouse.h"

#include <ole2.h>

#include <ostream>
#include <stdexcept>

// The two entries of the system's ATL container that are used; documented in the ATL reference.
extern "C" BOOL WINAPI AtlAxWinInit();
extern "C" HRESULT WINAPI AtlAxGetControl(HWND container, IUnknown** control);

namespace {

constexpr wchar_t kFrameClass[] = L"MxovTestFrame";

void RegisterFrameClass() {
    WNDCLASSW description = {};
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kFrameClass;
    RegisterClassW(&description);
}

VARIANT Text(const std::wstring& text) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return value;
}

VARIANT Number(int number) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

} // namespace

bool operator==(const RECT& a, const RECT& b) {
    return EqualRect(&a, &b) != FALSE;
}

std::ostream& operator<<(std::ostream& out, const RECT& rect) {
    return out << "(" << rect.left << ", " << rect.top << ") to (" << rect.right << ", " << rect.bottom
               << ")";
}

ControlClient::ControlClient(int width, int height) {
    RegisterFrameClass();
    m_frame = CreateWindowExW(0, kFrameClass, L"Control under test", WS_OVERLAPPEDWINDOW, 60, 40, 200, 200,
                              nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    m_container = CreateWindowExW(0, L"AtlAxWin", kControlProgId, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                                  0, width, height, m_frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    IUnknown* control = nullptr;
    if (m_container && SUCCEEDED(AtlAxGetControl(m_container, &control)) && control) {
        control->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&m_automation));
        control->Release();
    }
    if (!m_automation) {
        DestroyWindow(m_frame);
        throw std::runtime_error("the control cannot be created; is it registered?");
    }
    ShowWindow(m_frame, SW_SHOW);
    SetForegroundWindow(m_frame);
    Resize(width, height);
}

ControlClient::~ControlClient() {
    m_automation->Release();
    DestroyWindow(m_frame);
    Settle();
}

HRESULT ControlClient::Invoke(const wchar_t* name, WORD flags, std::vector<VARIANT>& arguments,
                              VARIANT* result) {
    DISPID id = DISPID_UNKNOWN;
    std::wstring spelling = name;
    LPOLESTR names[] = {spelling.data()};
    HRESULT outcome = m_automation->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (SUCCEEDED(outcome)) {
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {};
        parameters.rgvarg = arguments.data();
        parameters.cArgs = static_cast<UINT>(arguments.size());
        if (flags == DISPATCH_PROPERTYPUT) {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        outcome = m_automation->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, nullptr,
                                       nullptr);
    }
    for (VARIANT& argument : arguments) {
        VariantClear(&argument);
    }
    return outcome;
}

HRESULT ControlClient::Call(const wchar_t* method, std::initializer_list<std::wstring> strings) {
    std::vector<VARIANT> arguments;
    arguments.reserve(strings.size());
    for (auto text = std::rbegin(strings); text != std::rend(strings); ++text) {
        arguments.push_back(Text(*text));
    }
    return Invoke(method, DISPATCH_METHOD, arguments, nullptr);
}

HRESULT ControlClient::CallNumbers(const wchar_t* method, std::initializer_list<int> numbers) {
    std::vector<VARIANT> arguments;
    arguments.reserve(numbers.size());
    for (auto number = std::rbegin(numbers); number != std::rend(numbers); ++number) {
        arguments.push_back(Number(*number));
    }
    return Invoke(method, DISPATCH_METHOD, arguments, nullptr);
}

HRESULT ControlClient::Put(const wchar_t* property, const std::wstring& value) {
    std::vector<VARIANT> arguments = {Text(value)};
    return Invoke(property, DISPATCH_PROPERTYPUT, arguments, nullptr);
}

std::wstring ControlClient::Get(const wchar_t* property) {
    VARIANT value;
    VariantInit(&value);
    std::vector<VARIANT> none;
    std::wstring text;
    if (SUCCEEDED(Invoke(property, DISPATCH_PROPERTYGET, none, &value)) && value.vt == VT_BSTR &&
        value.bstrVal) {
        text.assign(value.bstrVal, SysStringLen(value.bstrVal));
    }
    VariantClear(&value);
    return text;
}

HWND ControlClient::ControlWindow() const {
    return GetWindow(m_container, GW_CHILD);
}

HWND ControlClient::Dialog() const {
    // The control's window may lie inside another one of its own.
    for (HWND window = ControlWindow(); window; window = GetWindow(window, GW_CHILD)) {
        if (const HWND dialog = FindWindowExW(window, nullptr, L"#32770", nullptr)) {
            return dialog;
        }
    }
    return nullptr;
}

HWND ControlClient::Item(int id) const {
    return GetDlgItem(Dialog(), id);
}

RECT ControlClient::ItemRect(int id) const {
    RECT rect = {};
    GetWindowRect(Item(id), &rect);
    MapWindowPoints(nullptr, Dialog(), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

void ControlClient::Resize(int width, int height) {
    RECT frame = {0, 0, width, height};
    AdjustWindowRectEx(&frame, WS_OVERLAPPEDWINDOW, FALSE, 0);
    SetWindowPos(m_frame, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    MoveWindow(m_container, 0, 0, width, height, TRUE);
    Settle();
}

void ControlClient::Press(DWORD down, DWORD up, HWND window, POINT from, POINT to) {
    ClientToScreen(window, &from);
    ClientToScreen(window, &to);
    SetCursorPos(from.x, from.y);
    Settle();
    SendMouse(down, from);
    if (from.x != to.x || from.y != to.y) {
        Settle();
        SetCursorPos(to.x, to.y);
        Settle();
    }
    // A click is in the queue whole: a list view tracks the mouse inside its handling of the press.
    SendMouse(up, to);
    Settle();
}

void ControlClient::Click(HWND window, int x, int y) {
    Press(MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, window, {x, y}, {x, y});
}

void ControlClient::DoubleClick(HWND window, int x, int y) {
    POINT screen = {x, y};
    ClientToScreen(window, &screen);
    SetCursorPos(screen.x, screen.y);
    Settle();
    const DWORD time = GetTickCount();
    for (const DWORD flags :
         {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
        SendMouse(flags, screen, time);
    }
    Settle();
}

void ControlClient::RightClick(HWND window, int x, int y) {
    Press(MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, window, {x, y}, {x, y});
}

void ControlClient::Drag(HWND window, POINT from, POINT to) {
    Press(MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, window, from, to);
}

void ControlClient::Settle() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

ComApartment::ComApartment() {
    static const bool registered = AtlAxWinInit() != FALSE; // once in a program
    if (FAILED(OleInitialize(nullptr)) || !registered) {
        throw std::runtime_error("the ATL container is not available");
    }
}

ComApartment::~ComApartment() {
    OleUninitialize();
}
