#include "OleVerbs.h"

#include "core/CmdTarget.h"
#include "core/CString.h"
#include "OleEnum.h"
#include "OleTaskString.h"

#include <ole2.h>

using namespace framework;

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
    FindMessageEntry(GetMessageMap(), [&](const MessageEntry& entry) {
        if (entry.nMessage == kOleVerbEntry) {
            verbs.push_back({static_cast<LONG>(verbs.size()) + 1, NameOf(entry.nID)});
        }
        return false;
    });
    *ppenumOleVerb = verbs.empty() ? nullptr : new EnumVerbs(std::move(verbs));
    return *ppenumOleVerb != nullptr;
}

const MessageEntry* CCmdTarget::FindOleVerb(LONG iVerb) const {
    LONG number = 0;
    return FindMessageEntry(GetMessageMap(), [&](const MessageEntry& entry) {
        return (entry.nMessage == kStdOleVerbEntry && static_cast<LONG>(entry.nCode) == iVerb) ||
               (entry.nMessage == kOleVerbEntry && ++number == iVerb);
    });
}

BOOL CCmdTarget::DoOleVerb(LONG iVerb, LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect) {
    const MessageEntry* entry = FindOleVerb(iVerb);
    if (!entry) {
        return FALSE;
    }
    VerbCall call = {lpMsg, hWndParent, lpRect};
    MessageArguments args = {entry->nMessage, 0, 0, &call, 0};
    return entry->pfn(*this, args);
}
