// Property exchange: one function of a control, DoPropExchange, loads, saves and resets its properties,
// depending on the kind of exchange.
//
// Covered: streams, property bags and the reset to defaults; whole numbers. Not covered: every other type,
// data paths. Data of the control's version and of older ones is loaded, that of newer ones refused.
#pragma once

#include "common/ComPtr.h"
#include "core/Types.h"

#include <ocidl.h>

class CPropExchange {
public:
    virtual ~CPropExchange() = default;
    CPropExchange(const CPropExchange&) = delete;
    CPropExchange& operator=(const CPropExchange&) = delete;

    /// Moves one property of type VT_I4 (long). On loading, pvDefault, unless null, stands in for a value
    /// that the source does not have. FALSE when the value could not be moved.
    virtual BOOL ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp,
                              const void* pvDefault = nullptr) = 0;
    /// Moves the version; the first thing in the data. FALSE when it could not be moved, is 0 or newer
    /// than dwVersionDefault; the exchange has failed then. Nothing is converted, so bConvert has no effect.
    virtual BOOL ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL bConvert) = 0;

    /// TRUE also while properties are reset to their defaults.
    BOOL IsLoading() const noexcept { return m_loading; }

protected:
    explicit CPropExchange(BOOL loading) noexcept : m_loading(loading) {}

private:
    BOOL m_loading;
};

namespace framework {

/// An exchange that remembers whether it has failed.
class PropExchange : public CPropExchange {
public:
    /// Something could not be moved, and the data as a whole is not to be trusted.
    bool HasFailed() const noexcept { return m_failed; }

protected:
    using CPropExchange::CPropExchange;

    /// Notes a failure and returns it.
    BOOL Check(bool done) noexcept {
        m_failed = m_failed || !done;
        return done;
    }
    /// FALSE when the version found is newer than the control's own, or none.
    BOOL CheckVersion(DWORD found, DWORD own) noexcept { return Check(found != 0 && found <= own); }

private:
    bool m_failed = false;
};

/// Sets every property to its default.
class OleResetExchange final : public PropExchange {
public:
    OleResetExchange() noexcept : PropExchange(TRUE) {}
    BOOL ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault) override;
    BOOL ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL bConvert) override;
};

/// Values one after the other in a stream, in the control's order.
class OleStreamExchange final : public PropExchange {
public:
    /// Does not own the stream.
    OleStreamExchange(IStream& stream, BOOL loading) noexcept : PropExchange(loading), m_stream(stream) {}
    BOOL ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault) override;
    BOOL ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL bConvert) override;

private:
    bool Move(void* data, ULONG bytes);

    IStream& m_stream;
};

/// Values by name in a property bag. What a bag leaves out, the version included, has its default.
class OleBagExchange final : public PropExchange {
public:
    /// Owns neither; the error log may be null.
    OleBagExchange(IPropertyBag& bag, IErrorLog* log, BOOL loading, bool saveDefaults) noexcept
        : PropExchange(loading), m_bag(bag), m_log(log), m_saveDefaults(saveDefaults) {}
    BOOL ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault) override;
    BOOL ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL bConvert) override;

private:
    bool Load(LPCTSTR name, long& value);
    bool Save(LPCTSTR name, long value);

    IPropertyBag& m_bag;
    IErrorLog* m_log;
    bool m_saveDefaults;
};

} // namespace framework

/// One whole number with a default; FALSE when the value could not be moved.
BOOL PX_Long(CPropExchange* pPX, LPCTSTR pszPropName, long& lValue, long lDefault);
