#include "ControlObject.h"

#include <stdexcept>

Value::Value(const std::wstring& text) : Value() {
    m_value.vt = VT_BSTR;
    m_value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

std::wstring Value::Text() const {
    return m_value.vt == VT_BSTR && m_value.bstrVal
               ? std::wstring(m_value.bstrVal, SysStringLen(m_value.bstrVal))
               : std::wstring();
}

HRESULT Invoke(IDispatch* object, DISPID member, WORD flags, const std::vector<VARIANT>& arguments,
               VARIANT* result) {
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {};
    parameters.rgvarg = reversed.data();
    parameters.cArgs = static_cast<UINT>(reversed.size());
    if (flags == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    return object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, nullptr,
                          nullptr);
}

std::wstring InputParameter(IDispatch* object) {
    Value value;
    Invoke(object, kInputParameter, DISPATCH_PROPERTYGET, {}, &value.Get());
    return value.Text();
}

ControlModule::ControlModule() : m_module(LoadLibraryW(L"MXOVDocViewCtrl.ocx")) {
    if (!m_module) {
        throw std::runtime_error("the control's module cannot be loaded");
    }
}

ControlModule::~ControlModule() {
    FreeLibrary(m_module);
}

HRESULT ControlModule::Call(const char* name) const {
    const auto function =
        reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    return function ? function() : E_NOTIMPL;
}

ControlObjectTest::ControlObjectTest() {
    if (FAILED(OleInitialize(nullptr))) {
        throw std::runtime_error("no apartment");
    }
}

ControlObjectTest::~ControlObjectTest() {
    OleUninitialize();
}

void ControlObjectTest::TearDown() {
    Pump();
    EXPECT_EQ(S_OK, m_module.Call("DllCanUnloadNow")) << "an object is left over";
}

ComPtr<IUnknown> ControlObjectTest::CreateControl() {
    ComPtr<IUnknown> control;
    const HRESULT created = CoCreateInstance(kControlClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                             reinterpret_cast<void**>(control.GetAddressOf()));
    if (FAILED(created)) {
        throw std::runtime_error("the control cannot be created; is it registered?");
    }
    return control;
}

void ControlObjectTest::Pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}
