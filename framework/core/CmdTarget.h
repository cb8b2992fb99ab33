// CCmdTarget: base of everything that has a message map.
//
// Covered: command routing through the object's own map, and the automation part. Not covered: the wait
// cursor, command updating, routing onwards to owners and the application.
#pragma once

#include "MessageMap.h"
#include "Object.h"

#include <oaidl.h>

#include <memory>

class CCmdTarget;
class CTypeLibCache;
class OleTargetState;
struct AFX_DISPMAP;
struct AFX_INTERFACEMAP;
struct IEnumOLEVERB;

/// Frees what an object keeps for COM, where its type is known.
struct OleTargetStateDeleter {
    void operator()(OleTargetState* state) const noexcept;
};

/// Where OnCmdMsg would have sent a command.
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    AFX_MSG_THUNK pmf;
};

class CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)

public:
    /// Looks for a handler of a command (pExtra null: nCode is the WM_COMMAND notification code, 0 for a menu
    /// or accelerator) or a notification (pExtra is an AFX_NOTIFY*, nCode its code) and calls it. With
    /// pHandlerInfo it only stores the handler there. TRUE when there is one and it handled the command.
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
    /// The entry of a verb; null when there is none.
    const AFX_MSGMAP_ENTRY* FindOleVerb(LONG iVerb) const;

    /// IUnknown of the object itself; results are those of IUnknown.
    DWORD InternalQueryInterface(const void* iid, void** ppvObj);
    DWORD InternalAddRef();
    DWORD InternalRelease();
    /// IUnknown as the object's clients see it: the aggregating object's, if there is one.
    DWORD ExternalQueryInterface(const void* iid, void** ppvObj);
    DWORD ExternalAddRef();
    DWORD ExternalRelease();
    /// Makes the object a part of `outer`, which then owns it; FALSE without EnableAggregation.
    BOOL Aggregate(IUnknown* outer);
    /// The object's own unknown, without a reference; null without a COM side.
    IUnknown* GetInnerUnknown() noexcept;

protected:
    CCmdTarget() = default;

    static const AFX_DISPMAP* GetThisDispatchMap();
    virtual const AFX_DISPMAP* GetDispatchMap() const;
    static const AFX_INTERFACEMAP* GetThisInterfaceMap();
    virtual const AFX_INTERFACEMAP* GetInterfaceMap() const;

    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;

private:
    friend class OleDispatchPart;
    friend bool OleIsOnItsThread(const CCmdTarget& target) noexcept;
    OleTargetState& NeedOleState();

    std::unique_ptr<OleTargetState, OleTargetStateDeleter> m_ole;
};
