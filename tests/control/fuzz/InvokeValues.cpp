#include "InvokeValues.h"

InvokeValues::InvokeValues(std::mt19937& random) {
    for (const VARTYPE type :
         {VT_EMPTY, VT_NULL, VT_I1, VT_I2, VT_I4, VT_I8, VT_UI1, VT_UI2, VT_UI4, VT_UI8, VT_INT, VT_UINT,
          VT_R4, VT_R8, VT_CY, VT_BOOL, VT_DATE, VT_ERROR, VT_DECIMAL}) {
        Add(type, static_cast<LONGLONG>(random()));
    }
    for (const VARTYPE type : {VT_BSTR, VT_DISPATCH, VT_UNKNOWN, VT_ARRAY, VT_RECORD, VT_BLOB, VT_CLSID}) {
        Add(type, 0);
    }
    for (const VARTYPE type : {VT_I2, VT_I4, VT_R8, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_UI1, VT_BOOL}) {
        Add(VT_BYREF | type, 0);
    }
    Add(VT_ERROR, DISP_E_PARAMNOTFOUND);
    for (const wchar_t* text :
         {L"", L"1", L"-7", L"1e9", L"true", L"Q:\\none\\", L"\\\\?\\x", L"con", L"C:"}) {
        AddText(SysAllocString(text));
    }
    AddText(SysAllocStringLen(L"a\0b", 3));
    AddText(SysAllocStringLen(std::wstring(32000, L'p').data(), 32000));
    AddReference(VT_I4, &m_number);
    AddReference(VT_BSTR, &m_text);
    AddReference(VT_VARIANT, &m_value.Get());
}

InvokeValues::~InvokeValues() {
    for (VARIANT& value : m_values) {
        if (value.vt == VT_BSTR) {
            VariantClear(&value);
        }
    }
    SysFreeString(m_text);
}

void InvokeValues::Add(int type, LONGLONG bits) {
    VARIANT value = {};
    value.llVal = bits;
    if (type == VT_ERROR) {
        value.scode = static_cast<SCODE>(bits);
    }
    value.vt = static_cast<VARTYPE>(type);
    m_values.push_back(value);
}

void InvokeValues::AddText(BSTR text) {
    VARIANT value = {};
    value.vt = VT_BSTR;
    value.bstrVal = text;
    m_values.push_back(value);
}

void InvokeValues::AddReference(VARTYPE type, void* place) {
    VARIANT value = {};
    value.vt = static_cast<VARTYPE>(VT_BYREF | type);
    value.byref = place;
    m_values.push_back(value);
}
