// Verbs of an embedded object: the message map entries for them.
//
// ON_OLEVERB entries are the object's own verbs, numbered from 1 in the order in which they stand, those of
// the derived class first; containers offer them in their menus, by a string of the resource module.
// ON_STDOLEVERB entries answer the standard ones. Both name a member of the class without its scope.
#pragma once

#include "core/MessageMap.h"

/// What a verb comes with; any of it may be null.
struct AfxVerbCall {
    LPMSG message;
    HWND parent;
    LPCRECT rect;
};

/// BOOL f(LPMSG, HWND, LPCRECT)
template <class Class, auto Handler>
BOOL AfxCallVerb(CCmdTarget& target, AFX_MSG_ARGS& args) {
    const auto* call = static_cast<const AfxVerbCall*>(args.pExtra);
    return AfxBoundHandler<Class, BOOL(LPMSG, HWND, LPCRECT), Handler>::Call(target, call->message,
                                                                             call->parent, call->rect);
}

#define ON_OLEVERB(idsVerbName, memberFxn)                                                                   \
    AFX_MSGMAP_ENTRY{kAfxMsgOleVerb, 0, idsVerbName, &AfxCallVerb<ThisClass, &ThisClass::memberFxn>},
#define ON_STDOLEVERB(iVerb, memberFxn)                                                                      \
    AFX_MSGMAP_ENTRY{kAfxMsgStdOleVerb, static_cast<UINT>(iVerb), 0, &AfxCallVerb<ThisClass, &ThisClass::memberFxn>},
