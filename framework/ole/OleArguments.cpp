#include "OleArguments.h"

namespace framework {

OleArguments::~OleArguments() {
    for (VARIANT& value : m_values) {
        ::VariantClear(&value);
    }
}

HRESULT OleArguments::Read(const DISPPARAMS& params, std::string_view types) {
    if (params.cArgs != types.size()) {
        return DISP_E_BADPARAMCOUNT;
    }
    // The caller's array holds the named arguments first, then the others from the last parameter to the
    // first.
    constexpr UINT kMissing = ~0U;
    std::vector<UINT> places(types.size(), kMissing);
    for (UINT place = 0; place < params.cArgs; ++place) {
        const bool named = place < params.cNamedArgs;
        const DISPID parameter =
            named ? params.rgdispidNamedArgs[place] : static_cast<DISPID>(params.cArgs - 1 - place);
        if (parameter < 0 || static_cast<UINT>(parameter) >= params.cArgs || places[parameter] != kMissing) {
            if (m_wrongArgument) {
                *m_wrongArgument = place;
            }
            return DISP_E_PARAMNOTFOUND;
        }
        places[parameter] = place;
    }
    m_values.resize(types.size()); // all VT_EMPTY, so that the destructor may clear them
    for (size_t parameter = 0; parameter < types.size(); ++parameter) {
        const HRESULT converted =
            Convert(params, places[parameter], static_cast<VARTYPE>(types[parameter]), m_values[parameter]);
        if (FAILED(converted)) {
            return converted;
        }
    }
    return S_OK;
}

HRESULT OleArguments::ReadValue(const DISPPARAMS& params, std::string_view type) {
    if (params.cArgs != 1) {
        return DISP_E_BADPARAMCOUNT;
    }
    if (params.cNamedArgs != 1 || params.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) {
        return DISP_E_PARAMNOTOPTIONAL;
    }
    m_values.resize(1);
    return Convert(params, 0, static_cast<VARTYPE>(type.front()), m_values.front());
}

namespace {

/// A value by reference to nothing would be read by the system's conversion.
bool IsReadable(const VARIANT& value) noexcept {
    if (!(value.vt & VT_BYREF)) {
        return true;
    }
    if (!value.byref) {
        return false;
    }
    return value.vt != (VT_BYREF | VT_VARIANT) || !(value.pvarVal->vt & VT_BYREF) || value.pvarVal->byref;
}

} // namespace

HRESULT OleArguments::Convert(const DISPPARAMS& params, UINT place, VARTYPE type, VARIANT& converted) const {
    VARIANT& given = params.rgvarg[place];
    HRESULT result = DISP_E_BADVARTYPE;
    if (given.vt == VT_ERROR && given.scode == DISP_E_PARAMNOTFOUND) {
        result = DISP_E_PARAMNOTOPTIONAL;
    } else if (IsReadable(given)) {
        result = ::VariantChangeTypeEx(&converted, &given, m_lcid, 0, type);
    }
    if (FAILED(result) && m_wrongArgument) {
        *m_wrongArgument = place;
    }
    return result;
}

} // namespace framework
