// The COM side of a CCmdTarget: one identity, interface maps, and the guard around every COM method.
//
// Covered: reference counting with OnFinalRelease, aggregation, IDispatch (OleDispatch.h), interface maps
// with INTERFACE_PART. The parts of an object that answer its interfaces forward IUnknown to the object
// (OlePart), so that only one of them, and always the same, answers to IID_IUnknown. Not covered: delegate
// maps, nested-part macros.
#pragma once

#include "common/ComPtr.h"
#include "core/Apartment.h"
#include "core/CmdTarget.h"
#include "core/ModuleState.h"
#include "OleDispatch.h"

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <atomic>
#include <new>
#include <optional>

namespace framework {

/// One line of an interface map: an interface and the part of the object that answers it.
struct InterfaceEntry {
    const IID* piid; ///< null in the last line
    IUnknown* (*pfnGetPart)(CCmdTarget& target);
};

/// A class's own lines and the map of its base.
struct InterfaceMap {
    const InterfaceMap* (*pfnGetBaseMap)(); ///< null in the root
    const InterfaceEntry* pEntry;
};

} // namespace framework

#define DECLARE_INTERFACE_MAP()                                                                              \
protected:                                                                                                   \
    static const framework::InterfaceMap* GetThisInterfaceMap();                                             \
    const framework::InterfaceMap* GetInterfaceMap() const override;

#define BEGIN_INTERFACE_MAP(theClass, theBase)                                                               \
    const framework::InterfaceMap* theClass::GetInterfaceMap() const {                                       \
        return GetThisInterfaceMap();                                                                        \
    }                                                                                                        \
    const framework::InterfaceMap* theClass::GetThisInterfaceMap() {                                         \
        using TheBaseClass = theBase;                                                                        \
        static constexpr framework::InterfaceEntry interfaceEntries[] = {

/// The member m_x<localClass> of theClass answers the interface.
#define INTERFACE_PART(theClass, iid, localClass)                                                            \
    framework::InterfaceEntry{&(iid), [](CCmdTarget& target) -> IUnknown* {                                  \
                                  return &static_cast<theClass&>(target).m_x##localClass;                    \
                              }},

#define END_INTERFACE_MAP()                                                                                  \
    framework::InterfaceEntry {                                                                              \
        nullptr, nullptr                                                                                     \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static constexpr framework::InterfaceMap interfaceMap = {&TheBaseClass::GetThisInterfaceMap,             \
                                                             interfaceEntries};                              \
    return &interfaceMap;                                                                                    \
    }

namespace framework {

/// The object's own unknown: what an aggregating object holds, and everybody's IUnknown otherwise.
class OleIdentity final : public IUnknown {
public:
    explicit OleIdentity(CCmdTarget& target) noexcept : m_target(target) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

private:
    CCmdTarget& m_target;
};

/// What a CCmdTarget keeps once it takes part in COM.
class OleTargetState {
public:
    explicit OleTargetState(CCmdTarget& target) noexcept : identity(target) {}
    ~OleTargetState() { Apartment::Leave(m_apartment); }
    OleTargetState(const OleTargetState&) = delete;
    OleTargetState& operator=(const OleTargetState&) = delete;

    OleIdentity identity;
    std::optional<OleDispatchPart> dispatch; ///< filled by EnableAutomation
    IUnknown* outer = nullptr;               ///< the aggregating object, which owns this one; no reference
    CTypeLibCache* typeLibCache = nullptr;   ///< locked while set
    std::atomic<LONG> references = 1;        ///< the creator's
    const DWORD thread = ::GetCurrentThreadId();
    bool aggregatable = false;

private:
    const ULONG m_apartment = Apartment::Join();
};

/// What the framework's own classes may do with any CCmdTarget.
struct TargetAccess {
    /// Makes the object a part of `outer`, which then owns it; FALSE without EnableAggregation.
    static BOOL Aggregate(CCmdTarget& target, IUnknown* outer) { return target.Aggregate(outer); }
    /// The entry of a verb; null when there is none.
    static const MessageEntry* FindOleVerb(const CCmdTarget& target, LONG verb) {
        return target.FindOleVerb(verb);
    }
};

/// Holds a reference to an object while something is called that may release it.
class OleKeepAlive {
public:
    explicit OleKeepAlive(CCmdTarget& target) noexcept : m_target(target) { m_target.ExternalAddRef(); }
    ~OleKeepAlive() { m_target.ExternalRelease(); }
    OleKeepAlive(const OleKeepAlive&) = delete;
    OleKeepAlive& operator=(const OleKeepAlive&) = delete;

private:
    CCmdTarget& m_target;
};

/// Runs the body of a COM method: the module's state is selected, and no exception leaves it (E_OUTOFMEMORY
/// when memory was out, else E_UNEXPECTED).
template <class Body>
HRESULT OleProtect(Body&& body) noexcept {
    try {
        AFX_MANAGE_STATE(AfxGetStaticModuleState());
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): the documented exceptions are pointers
    } catch (CException* exception) {
        exception->Delete();
        return E_UNEXPECTED;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

/// As OleProtect, and the object outlives the call. Callers from another thread get RPC_E_WRONG_THREAD.
/// Around every method that returns or changes something of the object; IUnknown and what is the same for all
/// objects of a class answer any thread.
template <class Body>
HRESULT OleGuard(CCmdTarget& target, Body&& body) noexcept {
    if (!OleIsOnItsThread(target)) {
        return RPC_E_WRONG_THREAD;
    }
    Apartment::ReleaseDeferred();
    return OleProtect([&]() -> HRESULT {
        const OleKeepAlive alive(target);
        return body();
    });
}

/// The same for a method with a result: E_POINTER without a place for it. The result is cleared for every
/// caller, also one that is refused.
template <class Result, class Body>
HRESULT OleGuard(CCmdTarget& target, Result* result, Body&& body) noexcept {
    if (!result) {
        return E_POINTER;
    }
    *result = {};
    return OleGuard(target, std::forward<Body>(body));
}

/// Base of the parts of an object: IUnknown is the object's, in any of the given interfaces.
template <class... Interfaces>
class OlePart : public Interfaces... {
public:
    OlePart(const OlePart&) = delete;
    OlePart& operator=(const OlePart&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        return static_cast<HRESULT>(m_target.ExternalQueryInterface(&iid, object));
    }
    STDMETHODIMP_(ULONG) AddRef() override { return m_target.ExternalAddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return m_target.ExternalRelease(); }

protected:
    explicit OlePart(CCmdTarget& target) noexcept : m_target(target) {}
    ~OlePart() = default;

    template <class Body>
    HRESULT Guard(Body&& body) noexcept {
        return OleGuard(m_target, std::forward<Body>(body));
    }
    template <class Result, class Body>
    HRESULT Guard(Result* result, Body&& body) noexcept {
        return OleGuard(m_target, result, std::forward<Body>(body));
    }

private:
    CCmdTarget& m_target;
};

} // namespace framework
