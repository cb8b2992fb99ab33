// CCmdTarget: base of everything that has a message map.
//
// Covered: command routing through the object's own map, and the automation part. Not covered: the wait
// cursor, command updating, routing onwards to owners and the application.
#pragma once

#include "MessageMap.h"
#include "Object.h"

class CCmdTarget;

/// Where OnCmdMsg would have sent a command.
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    AFX_MSG_THUNK pmf;
};

class CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)

public:
    /// Looks for a handler of a command (pExtra null: nCode is the WM_COMMAND notification code, 0 for a menu
    /// or accelerator) or a notification (pExtra is an AFX_NOTIFY*, nCode its code) and calls it, or, with
    /// pHandlerInfo given, only names it there. TRUE when there is one and it took the command.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    // Automation and OLE members: OleDispatch.cpp.

protected:
    CCmdTarget() = default;

    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};
