// CCmdTarget: base of everything that has a message map.
//
// Covered: command routing through the object's own map, and the automation part. Not covered: the wait
// cursor, command updating, routing onwards to owners and the application.
#pragma once

#include "MessageMap.h"
#include "Object.h"

#include <oaidl.h>
#include <oleidl.h>

#include <memory>

class CCmdTarget;
class CTypeLibCache;

namespace framework {

class OleDispatchPart;
class OleTargetState;
struct DispatchMap;
struct InterfaceMap;
struct TargetAccess;

/// TRUE on the thread that made the object, the only one of its apartment.
[[nodiscard]] bool OleIsOnItsThread(const CCmdTarget& target) noexcept;

/// Frees what an object keeps for COM, where its type is known.
struct OleTargetStateDeleter {
    void operator()(OleTargetState* state) const noexcept;
};

} // namespace framework

/// Where OnCmdMsg would have sent a command.
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    framework::MessageThunk pmf;
};

class CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)

public:
    /// Looks for a handler of a command (pExtra null: nCode is the WM_COMMAND notification code, 0 for a menu
    /// or accelerator) or a notification (pExtra is a framework::Notification*, nCode its code) and calls it.
    /// With pHandlerInfo it only stores the handler there. TRUE when there is one and it handled the command.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    // Automation and COM. An object starts with one reference, its creator's; without EnableAutomation or
    // EnableAggregation, called in a constructor, it has no COM side.

    /// Switches IDispatch on, answered by the dispatch map.
    void EnableAutomation();
    /// Allows the object to be made as a part of another one.
    void EnableAggregation();
    /// Keeps the type library in the cache of GetTypeLibCache while this object lives.
    void EnableTypeLib();

    /// The object's IDispatch, with a reference for the caller when asked; null without EnableAutomation.
    IDispatch* GetIDispatch(BOOL bAddRef);
    /// The primary dispatch interface; FALSE when there is none.
    virtual BOOL GetDispatchIID(IID* pIID);
    virtual UINT GetTypeInfoCount();
    virtual CTypeLibCache* GetTypeLibCache();
    /// The object's type library, with a reference for the caller; TYPE_E_CANTLOADLIBRARY when it has none.
    virtual HRESULT GetTypeLib(LCID lcid, ITypeLib** ppTypeLib);
    /// The library's description of a GUID; the caller owns the reference.
    HRESULT GetTypeInfoOfGuid(LCID lcid, const GUID& guid, ITypeInfo** ppTypeInfo);
    /// Asked before Invoke runs a member; FALSE refuses it.
    virtual BOOL IsInvokeAllowed(DISPID dispid);
    /// The last reference is gone; deletes the object.
    virtual void OnFinalRelease();

    /// The verbs of the ON_OLEVERB entries of the message map, numbered from 1. FALSE when there are none.
    BOOL EnumOleVerbs(IEnumOLEVERB** ppenumOleVerb);
    /// Runs the entry of a verb; FALSE when there is none or it failed.
    BOOL DoOleVerb(LONG iVerb, LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect);

    /// IUnknown of the object itself; results are those of IUnknown.
    DWORD InternalQueryInterface(const void* iid, void** ppvObj);
    DWORD InternalAddRef();
    DWORD InternalRelease();
    /// IUnknown as the object's clients see it: the aggregating object's, if there is one.
    DWORD ExternalQueryInterface(const void* iid, void** ppvObj);
    DWORD ExternalAddRef();
    DWORD ExternalRelease();

protected:
    CCmdTarget() = default;

    static const framework::DispatchMap* GetThisDispatchMap();
    virtual const framework::DispatchMap* GetDispatchMap() const;
    static const framework::InterfaceMap* GetThisInterfaceMap();
    virtual const framework::InterfaceMap* GetInterfaceMap() const;

    static const framework::MessageMap* GetThisMessageMap();
    virtual const framework::MessageMap* GetMessageMap() const;

private:
    friend class framework::OleDispatchPart;
    friend struct framework::TargetAccess;
    friend bool framework::OleIsOnItsThread(const CCmdTarget& target) noexcept;
    framework::OleTargetState& NeedOleState();
    const framework::MessageEntry* FindOleVerb(LONG iVerb) const;
    BOOL Aggregate(IUnknown* outer);

    std::unique_ptr<framework::OleTargetState, framework::OleTargetStateDeleter> m_ole;
};
