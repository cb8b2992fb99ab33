// The registered control as a bare object, and the fixture of the tests that work on its interfaces.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <gtest/gtest.h>
#include <wrl/client.h>

#include <string>
#include <vector>

using Microsoft::WRL::ComPtr;

// What hosts know of the control.
inline constexpr CLSID kControlClass = {
    0x6406ff95, 0x0f04, 0x4382, {0x85, 0x2b, 0x89, 0xe0, 0x97, 0x9e, 0xae, 0xe8}};
inline constexpr CLSID kPageClass = {
    0xd282cb0e, 0x7c46, 0x48a7, {0xb1, 0x2a, 0xe3, 0x13, 0x79, 0x55, 0xf8, 0xc1}};
inline constexpr GUID kTypeLibrary = {
    0xd14d7a76, 0xf727, 0x49fe, {0xad, 0xa4, 0x64, 0x1d, 0x4b, 0x61, 0xed, 0x73}};
inline constexpr IID kPrimaryInterface = {
    0x31b4576c, 0x4787, 0x4990, {0x98, 0x02, 0x92, 0x88, 0x95, 0x26, 0x6f, 0x40}};
inline constexpr IID kEventInterface = {
    0xfb6d0baa, 0x7c82, 0x4145, {0xa7, 0x25, 0x2e, 0x02, 0xbb, 0xd5, 0x98, 0x1c}};

/// Dispatch identifiers of the control's members.
enum Member : DISPID {
    kInputParameter = 1,
    kClearAllData = 2,
    kOnSizeChange = 5,
    kLoadFile = 6,
    kClose = 7,
    kAboutBox = DISPID_ABOUTBOX,
};

/// A VARIANT that is freed with its object.
class Value {
public:
    Value() { VariantInit(&m_value); }
    explicit Value(LONG number) : Value() {
        m_value.vt = VT_I4;
        m_value.lVal = number;
    }
    explicit Value(const std::wstring& text);
    Value(Value&& other) noexcept : m_value(other.m_value) { VariantInit(&other.m_value); }
    Value& operator=(Value&&) = delete;
    ~Value() { VariantClear(&m_value); }

    [[nodiscard]] VARIANT& Get() { return m_value; }
    /// The text of a string; empty for anything else.
    [[nodiscard]] std::wstring Text() const;

private:
    VARIANT m_value;
};

/// Calls a member; `arguments` are in the order of its declaration and stay the caller's.
HRESULT Invoke(IDispatch* object, DISPID member, WORD flags, const std::vector<VARIANT>& arguments = {},
               VARIANT* result = nullptr);

/// Reads the control's one property.
std::wstring InputParameter(IDispatch* object);

/// The control's module, loaded for the life of the object.
class ControlModule {
public:
    ControlModule();
    ~ControlModule();
    ControlModule(const ControlModule&) = delete;
    ControlModule& operator=(const ControlModule&) = delete;

    [[nodiscard]] HMODULE Handle() const { return m_module; }
    /// Calls one of the exported functions that take nothing.
    [[nodiscard]] HRESULT Call(const char* name) const;

private:
    HMODULE m_module;
};

/// An apartment around each test, and the certainty that no object of the module outlives it.
class ControlObjectTest : public testing::Test {
protected:
    ControlObjectTest();
    ~ControlObjectTest() override;
    void TearDown() override;

    /// A new control, made by its class id.
    static ComPtr<IUnknown> CreateControl();
    /// Another interface of an object; null when it has none.
    template <class Interface>
    static ComPtr<Interface> As(IUnknown* object, REFIID iid) {
        ComPtr<Interface> found;
        object->QueryInterface(iid, reinterpret_cast<void**>(found.GetAddressOf()));
        return found;
    }
    static ComPtr<IDispatch> Automation(IUnknown* object) { return As<IDispatch>(object, IID_IDispatch); }
    /// Handles messages until none is waiting.
    static void Pump();

    ControlModule m_module;
};
