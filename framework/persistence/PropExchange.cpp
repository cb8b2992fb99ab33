#include "PropExchange.h"

#include <algorithm>
#include <vector>

namespace {

bool IsExchangeable(VARTYPE type) noexcept {
    return type == VT_I4 || type == VT_BOOL || type == VT_BSTR;
}

void Assign(VARTYPE type, void* value, const void* source) {
    if (type == VT_BSTR) {
        *static_cast<CString*>(value) = *static_cast<const CString*>(source);
    } else {
        *static_cast<long*>(value) = *static_cast<const long*>(source);
    }
}

bool AreEqual(VARTYPE type, const void* left, const void* right) {
    return type == VT_BSTR ? *static_cast<const CString*>(left) == *static_cast<const CString*>(right)
                           : *static_cast<const long*>(left) == *static_cast<const long*>(right);
}

static_assert(sizeof(long) == sizeof(BOOL));

} // namespace

BOOL OleResetExchange::ExchangeProp(LPCTSTR, VARTYPE vtProp, void* pvProp, const void* pvDefault) {
    if (!pvDefault || !IsExchangeable(vtProp)) {
        return FALSE;
    }
    Assign(vtProp, pvProp, pvDefault);
    return TRUE;
}

BOOL OleResetExchange::ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL) {
    dwVersionLoaded = dwVersionDefault;
    return CheckVersion(dwVersionDefault, dwVersionDefault);
}

bool OleStreamExchange::Move(void* data, ULONG bytes) {
    ULONG moved = 0;
    const HRESULT result =
        IsLoading() ? m_stream.Read(data, bytes, &moved) : m_stream.Write(data, bytes, &moved);
    return SUCCEEDED(result) && moved == bytes;
}

bool OleStreamExchange::MoveText(CString& text) {
    auto length = static_cast<DWORD>(text.GetLength());
    if (!Move(&length, sizeof(length))) {
        return false;
    }
    if (!IsLoading()) {
        return Move(const_cast<LPTSTR>(text.GetString()), length * static_cast<DWORD>(sizeof(TCHAR)));
    }
    // A damaged length must not allocate more than the stream can fill.
    constexpr DWORD kPiece = 4096;
    std::vector<TCHAR> loaded;
    while (loaded.size() < length) {
        const size_t start = loaded.size();
        const auto piece = static_cast<DWORD>(std::min<size_t>(kPiece, length - start));
        loaded.resize(start + piece);
        if (!Move(&loaded[start], piece * static_cast<DWORD>(sizeof(TCHAR)))) {
            return false;
        }
    }
    text = CString(loaded.data(), static_cast<int>(loaded.size()));
    return true;
}

BOOL OleStreamExchange::ExchangeProp(LPCTSTR, VARTYPE vtProp, void* pvProp, const void*) {
    if (HasFailed() || !IsExchangeable(vtProp)) {
        return Check(false);
    }
    return Check(vtProp == VT_BSTR ? MoveText(*static_cast<CString*>(pvProp)) : Move(pvProp, sizeof(long)));
}

BOOL OleStreamExchange::ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL) {
    DWORD version = dwVersionDefault;
    if (!Check(Move(&version, sizeof(version)))) {
        return FALSE;
    }
    dwVersionLoaded = version;
    return CheckVersion(version, dwVersionDefault);
}

bool OleBagExchange::Load(LPCTSTR name, VARTYPE type, void* value) {
    common::Variant read;
    (&read)->vt = type; // tells the bag what is wanted
    common::Variant wanted;
    if (FAILED(m_bag.Read(name, &read, m_log)) || read.Get().vt == VT_EMPTY ||
        FAILED(::VariantChangeType(&wanted, &read, 0, type))) {
        return false;
    }
    switch (type) {
    case VT_BSTR:
        *static_cast<CString*>(value) =
            CString(wanted.Get().bstrVal, static_cast<int>(::SysStringLen(wanted.Get().bstrVal)));
        break;
    case VT_BOOL:
        *static_cast<BOOL*>(value) = wanted.Get().boolVal != VARIANT_FALSE;
        break;
    default:
        *static_cast<long*>(value) = wanted.Get().lVal;
    }
    return true;
}

bool OleBagExchange::Save(LPCTSTR name, VARTYPE type, const void* value) {
    common::Variant written;
    VARIANT* variant = &written;
    switch (type) {
    case VT_BSTR:
        variant->bstrVal = static_cast<const CString*>(value)->AllocSysString();
        break;
    case VT_BOOL:
        variant->boolVal = *static_cast<const BOOL*>(value) ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    default:
        variant->lVal = *static_cast<const long*>(value);
    }
    variant->vt = type;
    return SUCCEEDED(m_bag.Write(name, variant));
}

BOOL OleBagExchange::ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault) {
    if (HasFailed() || !IsExchangeable(vtProp)) {
        return Check(false);
    }
    if (!IsLoading()) {
        const bool skip = !m_saveDefaults && pvDefault && AreEqual(vtProp, pvProp, pvDefault);
        return Check(skip || Save(pszPropName, vtProp, pvProp));
    }
    if (!Load(pszPropName, vtProp, pvProp) && pvDefault) {
        Assign(vtProp, pvProp, pvDefault);
    }
    return TRUE;
}

BOOL OleBagExchange::ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL) {
    auto version = static_cast<long>(dwVersionDefault);
    if (!IsLoading()) {
        return Check(Save(L"_Version", VT_I4, &version)) && CheckVersion(dwVersionDefault, dwVersionDefault);
    }
    Load(L"_Version", VT_I4, &version);
    dwVersionLoaded = static_cast<DWORD>(version);
    return CheckVersion(dwVersionLoaded, dwVersionDefault);
}

BOOL PX_Long(CPropExchange* pPX, LPCTSTR pszPropName, long& lValue, long lDefault) {
    return pPX->ExchangeProp(pszPropName, VT_I4, &lValue, &lDefault);
}

BOOL PX_Bool(CPropExchange* pPX, LPCTSTR pszPropName, BOOL& bValue, BOOL bDefault) {
    return pPX->ExchangeProp(pszPropName, VT_BOOL, &bValue, &bDefault);
}

BOOL PX_String(CPropExchange* pPX, LPCTSTR pszPropName, CString& strValue, const CString& strDefault) {
    return pPX->ExchangeProp(pszPropName, VT_BSTR, &strValue, &strDefault);
}
