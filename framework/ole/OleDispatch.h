// Dispatch maps, and the IDispatch that they answer.
//
// Every entry carries thunks instantiated from the pointers to its members: they take the converted arguments
// and call or read the member directly, so nothing is cast, and an entry whose VTS_ list does not fit the
// member's parameters does not compile.
//
// Covered: methods and member properties with an after-set function, with fixed DISPIDs; arguments by
// position and by name; conversion of every argument by the system's rules. Not covered: automatic DISPIDs,
// stock entries, properties with parameters, COleDispatchException.
#pragma once

#include "core/CmdTarget.h"
#include "core/CString.h"

#include <ole2.h>
#include <tchar.h>

#include <cstddef>
#include <string_view>
#include <utility>

// Types of parameters, to be written one after the other in a map entry.
#define VTS_NONE ""
#define VTS_I2 "\x02"
#define VTS_I4 "\x03"
#define VTS_R8 "\x05"
#define VTS_BSTR "\x08"
#define VTS_BOOL "\x0B"

namespace framework {

/// One line of a dispatch map. A method has pfnCall; a property the other two.
struct DispatchEntry {
    LPCTSTR lpszName = nullptr; ///< null in the last line
    DISPID lDispID = DISPID_UNKNOWN;
    std::string_view params; ///< VTS_ types; of a property: its own type
    /// Arguments are converted to their types and stand first one first; the result is empty on entry.
    void (*pfnCall)(CCmdTarget& target, const VARIANT* arguments, VARIANT* result) = nullptr;
    void (*pfnGet)(CCmdTarget& target, VARIANT* result) = nullptr;
    void (*pfnSet)(CCmdTarget& target, const VARIANT& value) = nullptr;
};

/// A class's own lines and the map of its base.
struct DispatchMap {
    const DispatchMap* (*pfnGetBaseMap)(); ///< null in the root
    const DispatchEntry* lpEntries;
};

/// How a parameter or property of a C++ type travels in a VARIANT. Get reads a VARIANT of exactly that type;
/// a result's memory belongs to the VARIANT.
template <class Type>
struct OleVariantType;

template <>
struct OleVariantType<short> {
    static constexpr VARTYPE kType = VT_I2;
    static short Get(const VARIANT& value) { return value.iVal; }
};

template <>
struct OleVariantType<long> {
    static constexpr VARTYPE kType = VT_I4;
    static long Get(const VARIANT& value) { return value.lVal; }
};

template <>
struct OleVariantType<double> {
    static constexpr VARTYPE kType = VT_R8;
    static double Get(const VARIANT& value) { return value.dblVal; }
};

/// BOOL
template <>
struct OleVariantType<int> {
    static constexpr VARTYPE kType = VT_BOOL;
    static BOOL Get(const VARIANT& value) { return value.boolVal != VARIANT_FALSE; }
};

/// A parameter: never null, and valid for the call only. It ends at the first null character.
template <>
struct OleVariantType<LPCTSTR> {
    static constexpr VARTYPE kType = VT_BSTR;
    static LPCTSTR Get(const VARIANT& value) { return value.bstrVal ? value.bstrVal : L""; }
};

/// A property: keeps null characters.
template <>
struct OleVariantType<CString> {
    static constexpr VARTYPE kType = VT_BSTR;
    static CString Get(const VARIANT& value) {
        return value.bstrVal ? CString(value.bstrVal, static_cast<int>(::SysStringLen(value.bstrVal)))
                             : CString();
    }
    static void Put(const CString& text, VARIANT* result) {
        result->bstrVal = text.AllocSysString();
        result->vt = VT_BSTR;
    }
};

template <auto Member>
struct OleMember;

/// void f(parameters...)
template <class Class, class... Args, void (Class::*Method)(Args...)>
struct OleMember<Method> {
    static constexpr bool Fits(std::string_view params) {
        constexpr char kTypes[] = {static_cast<char>(OleVariantType<Args>::kType)..., '\0'};
        return params == std::string_view(kTypes, sizeof...(Args));
    }
    static void Call(CCmdTarget& target, const VARIANT* arguments, VARIANT*) {
        [&]<size_t... Index>(std::index_sequence<Index...>) {
            (static_cast<Class&>(target).*Method)(OleVariantType<Args>::Get(arguments[Index])...);
        }(std::index_sequence_for<Args...>());
    }
};

/// A member variable.
template <class Class, class Type, Type Class::*Variable>
    requires(!std::is_function_v<Type>)
struct OleMember<Variable> {
    static constexpr VARTYPE kType = OleVariantType<Type>::kType;
    static void Get(CCmdTarget& target, VARIANT* result) {
        OleVariantType<Type>::Put(static_cast<Class&>(target).*Variable, result);
    }
    template <void (Class::*AfterSet)()>
    static void Set(CCmdTarget& target, const VARIANT& value) {
        auto& object = static_cast<Class&>(target);
        object.*Variable = OleVariantType<Type>::Get(value);
        (object.*AfterSet)();
    }
};

/// Makes a method's line; does not compile when the types and the member disagree.
template <auto Method>
consteval DispatchEntry OleMethodEntry(LPCTSTR name, DISPID dispid, VARTYPE result, std::string_view params) {
    if (result != VT_EMPTY || !OleMember<Method>::Fits(params)) {
        throw "the types of the dispatch map entry are not those of the member";
    }
    return {name, dispid, params, &OleMember<Method>::Call, nullptr, nullptr};
}

/// Makes a property's line.
template <auto Variable, auto AfterSet>
consteval DispatchEntry OlePropertyEntry(LPCTSTR name, DISPID dispid, VARTYPE type) {
    if (type != OleMember<Variable>::kType) {
        throw "the type of the dispatch map entry is not that of the member";
    }
    return {name,
            dispid,
            VTS_BSTR,
            nullptr,
            &OleMember<Variable>::Get,
            &OleMember<Variable>::template Set<AfterSet>};
}

} // namespace framework

#define DECLARE_DISPATCH_MAP()                                                                               \
protected:                                                                                                   \
    static const framework::DispatchMap* GetThisDispatchMap();                                               \
    const framework::DispatchMap* GetDispatchMap() const override;

#define BEGIN_DISPATCH_MAP(theClass, baseClass)                                                              \
    const framework::DispatchMap* theClass::GetDispatchMap() const {                                         \
        return GetThisDispatchMap();                                                                         \
    }                                                                                                        \
    const framework::DispatchMap* theClass::GetThisDispatchMap() {                                           \
        using TheBaseClass = baseClass;                                                                      \
        static constexpr framework::DispatchEntry dispatchEntries[] = {

#define END_DISPATCH_MAP()                                                                                   \
    framework::DispatchEntry {}                                                                              \
    }                                                                                                        \
    ;                                                                                                        \
    static constexpr framework::DispatchMap dispatchMap = {&TheBaseClass::GetThisDispatchMap,                \
                                                           dispatchEntries};                                 \
    return &dispatchMap;                                                                                     \
    }

#define DISP_FUNCTION_ID(theClass, pszName, dispid, pfnMember, vtRetVal, vtsParams)                          \
    framework::OleMethodEntry<&theClass::pfnMember>(_T(pszName), dispid, vtRetVal, vtsParams),
#define DISP_PROPERTY_NOTIFY_ID(theClass, pszName, dispid, memberName, pfnAfterSet, vtPropType)              \
    framework::OlePropertyEntry<&theClass::memberName, &theClass::pfnAfterSet>(_T(pszName), dispid,          \
                                                                               vtPropType),

namespace framework {

/// IDispatch of a CCmdTarget. Calls on another thread than the one that made the object are refused with
/// RPC_E_WRONG_THREAD.
class OleDispatchPart final : public IDispatch {
public:
    explicit OleDispatchPart(CCmdTarget& target) noexcept : m_target(target) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                        EXCEPINFO* exception, UINT* wrongArgument) override;

private:
    template <class Accept>
    const DispatchEntry* Find(Accept accept) const;
    HRESULT OwnTypeInfo(LCID lcid, ITypeInfo** info);
    HRESULT Run(const DispatchEntry& entry, LCID lcid, WORD flags, const DISPPARAMS& params, VARIANT* result,
                UINT* wrongArgument);

    CCmdTarget& m_target;
};

} // namespace framework
