// Verbs of an embedded object: the message map entries for them.
//
// ON_OLEVERB entries are the object's own verbs, numbered from 1 in the order in which they stand, those of
// the derived class first; containers offer them in their menus, by a string of the resource module.
// ON_STDOLEVERB entries answer the standard ones. Both name a member of the class without its scope.
#pragma once

#include "core/MessageMap.h"

namespace framework {

/// What a verb comes with; any of it may be null.
struct VerbCall {
    LPMSG message;
    HWND parent;
    LPCRECT rect;
};

/// BOOL f(LPMSG, HWND, LPCRECT)
template <class Class, auto Handler>
BOOL CallVerb(CCmdTarget& target, MessageArguments& args) {
    const auto* call = static_cast<const VerbCall*>(args.pExtra);
    return BoundHandler<Class, BOOL(LPMSG, HWND, LPCRECT), Handler>::Call(target, call->message, call->parent,
                                                                          call->rect);
}

} // namespace framework

#define ON_OLEVERB(idsVerbName, memberFxn)                                                                   \
    framework::MessageEntry{framework::kOleVerbEntry, 0, idsVerbName,                                        \
                            &framework::CallVerb<ThisClass, &ThisClass::memberFxn>},
#define ON_STDOLEVERB(iVerb, memberFxn)                                                                      \
    framework::MessageEntry{framework::kStdOleVerbEntry, static_cast<UINT>(iVerb), 0,                        \
                            &framework::CallVerb<ThisClass, &ThisClass::memberFxn>},
