#include "OleVerbs.h"

#include "core/CmdTarget.h"
#include "core/CString.h"
#include "OleEnum.h"
#include "OleTaskString.h"

#include <ole2.h>

namespace {

struct VerbName {
    LONG verb;
    CString name;
};

struct VerbPolicy {
    static bool Copy(const VerbName& from, OLEVERB& to) noexcept {
        to = {from.verb, OleTaskString(from.name), MF_STRING, OLEVERBATTRIB_ONCONTAINERMENU};
        return to.lpszVerbName != nullptr;
    }
    static void Clean(OLEVERB& item) noexcept { ::CoTaskMemFree(item.lpszVerbName); }
    static VerbName Duplicate(const VerbName& item) { return item; }
};

using EnumVerbs = OleEnum<IEnumOLEVERB, IID_IEnumOLEVERB, OLEVERB, VerbName, VerbPolicy>;

CString NameOf(UINT id) {
    CString name;
    name.LoadString(id);
    return name;
}

} // namespace

BOOL CCmdTarget::EnumOleVerbs(IEnumOLEVERB** ppenumOleVerb) {
    std::vector<VerbName> verbs;
    AfxFindMessageEntry(GetMessageMap(), [&](const AFX_MSGMAP_ENTRY& entry) {
        if (entry.nMessage == kAfxMsgOleVerb) {
            verbs.push_back({static_cast<LONG>(verbs.size()) + 1, NameOf(entry.nID)});
        }
        return false;
    });
    *ppenumOleVerb = verbs.empty() ? nullptr : new EnumVerbs(std::move(verbs));
    return *ppenumOleVerb != nullptr;
}

const AFX_MSGMAP_ENTRY* CCmdTarget::FindOleVerb(LONG iVerb) const {
    LONG number = 0;
    return AfxFindMessageEntry(GetMessageMap(), [&](const AFX_MSGMAP_ENTRY& entry) {
        return (entry.nMessage == kAfxMsgStdOleVerb && static_cast<LONG>(entry.nCode) == iVerb) ||
               (entry.nMessage == kAfxMsgOleVerb && ++number == iVerb);
    });
}

BOOL CCmdTarget::DoOleVerb(LONG iVerb, LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect) {
    const AFX_MSGMAP_ENTRY* entry = FindOleVerb(iVerb);
    if (!entry) {
        return FALSE;
    }
    AfxVerbCall call = {lpMsg, hWndParent, lpRect};
    AFX_MSG_ARGS args = {entry->nMessage, 0, 0, &call, 0};
    return entry->pfn(*this, args);
}
