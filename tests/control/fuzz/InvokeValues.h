// Arguments of every kind that a caller of the control can pass.
#pragma once

#include "ControlObject.h"

#include <random>
#include <vector>

/// Values of every type, valid or not, made once; what refers to memory refers to this object's.
class InvokeValues {
public:
    explicit InvokeValues(std::mt19937& random);
    ~InvokeValues();
    InvokeValues(const InvokeValues&) = delete;
    InvokeValues& operator=(const InvokeValues&) = delete;

    [[nodiscard]] const VARIANT& Any(std::mt19937& random) const {
        return m_values[random() % m_values.size()];
    }

private:
    void Add(int type, LONGLONG bits);
    void AddText(BSTR text);
    void AddReference(VARTYPE type, void* place);

    std::vector<VARIANT> m_values;
    LONG m_number = 3;
    BSTR m_text = SysAllocString(L"by reference");
    Value m_value{std::wstring(L"inside")};
};
