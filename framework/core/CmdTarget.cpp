#include "CmdTarget.h"

using namespace framework;

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const MessageMap* CCmdTarget::GetThisMessageMap() {
    static constexpr MessageEntry entries[] = {{0, 0, 0, nullptr}};
    static constexpr MessageMap map = {nullptr, entries};
    return &map;
}

const MessageMap* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    const UINT message = pExtra ? WM_NOTIFY : WM_COMMAND;
    const MessageEntry* entry = FindMessageEntry(GetMessageMap(), [=](const MessageEntry& candidate) {
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
    MessageArguments args = {message, nID, 0, pExtra, 0};
    return entry->pfn(*this, args);
}
