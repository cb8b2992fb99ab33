#include "CmdTarget.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static constexpr AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, nullptr}};
    static constexpr AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    const UINT message = pExtra ? WM_NOTIFY : WM_COMMAND;
    const AFX_MSGMAP_ENTRY* entry =
        AfxFindMessageEntry(GetMessageMap(), [=](const AFX_MSGMAP_ENTRY& candidate) {
            return candidate.nMessage == message && candidate.nCode == static_cast<UINT>(nCode) &&
                   candidate.nID == nID;
        });
    if (!entry) {
        return FALSE;
    }
    if (pHandlerInfo) {
        *pHandlerInfo = {this, entry->pfn};
        return TRUE;
    }
    AFX_MSG_ARGS args = {message, nID, 0, pExtra, 0};
    return entry->pfn(*this, args);
}
