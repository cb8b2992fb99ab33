// The arguments of one automation call, converted to the types that the member takes.
#pragma once

#include "common/ComPtr.h"

#include <string_view>
#include <vector>

namespace framework {

class OleArguments {
public:
    /// `wrongArgument` (or null) receives the place, in the caller's array, of the argument that a failure is
    /// about.
    OleArguments(LCID lcid, UINT* wrongArgument) noexcept : m_lcid(lcid), m_wrongArgument(wrongArgument) {}
    ~OleArguments();
    OleArguments(const OleArguments&) = delete;
    OleArguments& operator=(const OleArguments&) = delete;

    /// Reads the arguments of a method by position and by name, where a parameter's name is its place counted
    /// from 0. DISP_E_BADPARAMCOUNT, DISP_E_PARAMNOTFOUND, DISP_E_PARAMNOTOPTIONAL, DISP_E_TYPEMISMATCH,
    /// DISP_E_OVERFLOW or DISP_E_BADVARTYPE when they do not fit.
    HRESULT Read(const DISPPARAMS& params, std::string_view types);

    /// Reads the one value that a property is set to, which is named DISPID_PROPERTYPUT.
    HRESULT ReadValue(const DISPPARAMS& params, std::string_view type);

    /// The converted arguments, the first parameter first.
    [[nodiscard]] const VARIANT* Values() const noexcept { return m_values.data(); }

private:
    HRESULT Convert(const DISPPARAMS& params, UINT place, VARTYPE type, VARIANT& converted) const;

    LCID m_lcid;
    UINT* m_wrongArgument;
    std::vector<VARIANT> m_values;
};

} // namespace framework
