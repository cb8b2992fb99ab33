#include "PropExchange.h"

using namespace framework;

namespace {

long& AsLong(void* value) noexcept {
    return *static_cast<long*>(value);
}

long AsLong(const void* value) noexcept {
    return *static_cast<const long*>(value);
}

} // namespace

namespace framework {

BOOL OleResetExchange::ExchangeProp(LPCTSTR, VARTYPE vtProp, void* pvProp, const void* pvDefault) {
    if (!pvDefault || vtProp != VT_I4) {
        return FALSE;
    }
    AsLong(pvProp) = AsLong(pvDefault);
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

BOOL OleStreamExchange::ExchangeProp(LPCTSTR, VARTYPE vtProp, void* pvProp, const void*) {
    return Check(!HasFailed() && vtProp == VT_I4 && Move(pvProp, sizeof(long)));
}

BOOL OleStreamExchange::ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL) {
    DWORD version = dwVersionDefault;
    if (!Check(Move(&version, sizeof(version)))) {
        return FALSE;
    }
    dwVersionLoaded = version;
    return CheckVersion(version, dwVersionDefault);
}

bool OleBagExchange::Load(LPCTSTR name, long& value) {
    common::Variant read;
    (&read)->vt = VT_I4; // the type that the bag is asked for
    common::Variant wanted;
    if (FAILED(m_bag.Read(name, &read, m_log)) || read.Get().vt == VT_EMPTY ||
        FAILED(::VariantChangeType(&wanted, &read, 0, VT_I4))) {
        return false;
    }
    value = wanted.Get().lVal;
    return true;
}

bool OleBagExchange::Save(LPCTSTR name, long value) {
    VARIANT written{};
    written.vt = VT_I4;
    written.lVal = value;
    return SUCCEEDED(m_bag.Write(name, &written));
}

BOOL OleBagExchange::ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault) {
    if (HasFailed() || vtProp != VT_I4) {
        return Check(false);
    }
    if (!IsLoading()) {
        const bool skip =
            !m_saveDefaults && pvDefault && AsLong(static_cast<const void*>(pvProp)) == AsLong(pvDefault);
        return Check(skip || Save(pszPropName, AsLong(pvProp)));
    }
    if (!Load(pszPropName, AsLong(pvProp)) && pvDefault) {
        AsLong(pvProp) = AsLong(pvDefault);
    }
    return TRUE;
}

BOOL OleBagExchange::ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL) {
    auto version = static_cast<long>(dwVersionDefault);
    if (!IsLoading()) {
        return Check(Save(L"_Version", version)) && CheckVersion(dwVersionDefault, dwVersionDefault);
    }
    Load(L"_Version", version);
    dwVersionLoaded = static_cast<DWORD>(version);
    return CheckVersion(dwVersionLoaded, dwVersionDefault);
}

} // namespace framework

BOOL PX_Long(CPropExchange* pPX, LPCTSTR pszPropName, long& lValue, long lDefault) {
    return pPX->ExchangeProp(pszPropName, VT_I4, &lValue, &lDefault);
}
