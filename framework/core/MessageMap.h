// Message maps: tables that lead a message, a command or a notification to a member function.
//
// Every entry carries a thunk that is instantiated from its handler's pointer to member. The thunk takes the
// message apart and calls the handler directly, so no member pointer is ever cast to another signature, and a
// handler whose signature is not the documented one does not compile.
//
// Covered: ON_COMMAND, ON_CONTROL and the ON_BN_, ON_EN_ and ON_STN_ entries below, ON_NOTIFY,
// ON_NOTIFY_REFLECT, ON_MESSAGE here, the ON_WM_ entries in WindowMessages.h. Not covered: ranges, command
// updating, reflection of other messages, registered messages.
#pragma once

#include "Types.h"

#include <type_traits>

class CCmdTarget;

/// A message, command or notification on its way to a handler.
struct AFX_MSG_ARGS {
    UINT message;  ///< WM_COMMAND and WM_NOTIFY for those that went through OnCmdMsg
    WPARAM wParam; ///< for a command: the control or command identifier
    LPARAM lParam;
    void* pExtra;   ///< AFX_NOTIFY* for WM_NOTIFY
    LRESULT result; ///< set by the thunk
};

/// What OnCmdMsg carries in pExtra for a WM_NOTIFY.
struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

/// Calls the handler of one entry. FALSE: the handler left the message to the next one in line.
using AFX_MSG_THUNK = BOOL (*)(CCmdTarget& target, AFX_MSG_ARGS& args);

/// One line of a message map.
struct AFX_MSGMAP_ENTRY {
    UINT nMessage;     ///< window message, or one of the kAfxMsg codes below
    UINT nCode;        ///< WM_COMMAND and WM_NOTIFY: notification code
    UINT nID;          ///< WM_COMMAND and WM_NOTIFY: identifier
    AFX_MSG_THUNK pfn; ///< null in the last line
};

/// A class's own lines and the map of its base.
struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)(); ///< null in the root
    const AFX_MSGMAP_ENTRY* lpEntries;
};

/// Added to a message that a parent hands back to the control it came from.
constexpr UINT kAfxReflected = 0xBC00;

/// Entry codes that are no window messages: such lines are never reached by a message.
constexpr UINT kAfxMsgOleVerb = 0xFFFF0001;    ///< ON_OLEVERB: nID is the string of the verb's name
constexpr UINT kAfxMsgStdOleVerb = 0xFFFF0002; ///< ON_STDOLEVERB: nCode is the verb

/// The first line of the map or its bases for which `accept` holds; null when there is none.
template <class Accept>
const AFX_MSGMAP_ENTRY* AfxFindMessageEntry(const AFX_MSGMAP* map, Accept accept) {
    while (map) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn; ++entry) {
            if (accept(*entry)) {
                return entry;
            }
        }
        map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr;
    }
    return nullptr;
}

template <class Pointer>
struct AfxMemberTraits;

template <class Result, class Class, class... Args>
struct AfxMemberTraits<Result (Class::*)(Args...)> {
    using Signature = Result(Args...);
    using Owner = Class;
};

template <class Class, class Signature, auto Handler>
struct AfxBoundHandler;

/// A handler together with the class whose map names it and the signature that its entry demands.
template <class Class, class Result, class... Args, auto Handler>
struct AfxBoundHandler<Class, Result(Args...), Handler> {
    using Traits = AfxMemberTraits<decltype(Handler)>;
    static_assert(std::is_same_v<typename Traits::Signature, Result(Args...)>,
                  "the handler's signature is not the one its message map entry demands");
    static_assert(std::is_base_of_v<typename Traits::Owner, Class>, "the handler belongs to another class");

    static Result Call(CCmdTarget& target, Args... args) {
        return (static_cast<Class&>(target).*Handler)(args...);
    }
};

/// void f()
template <class Class, auto Handler>
BOOL AfxCallVoid(CCmdTarget& target, AFX_MSG_ARGS& args) {
    AfxBoundHandler<Class, void(), Handler>::Call(target);
    args.result = 0;
    return TRUE;
}

/// LRESULT f(WPARAM, LPARAM)
template <class Class, auto Handler>
BOOL AfxCallMessage(CCmdTarget& target, AFX_MSG_ARGS& args) {
    args.result =
        AfxBoundHandler<Class, LRESULT(WPARAM, LPARAM), Handler>::Call(target, args.wParam, args.lParam);
    return TRUE;
}

/// void f(NMHDR*, LRESULT*)
template <class Class, auto Handler>
BOOL AfxCallNotify(CCmdTarget& target, AFX_MSG_ARGS& args) {
    const auto* notify = static_cast<const AFX_NOTIFY*>(args.pExtra);
    AfxBoundHandler<Class, void(NMHDR*, LRESULT*), Handler>::Call(target, notify->pNMHDR, notify->pResult);
    return TRUE;
}

#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const AFX_MSGMAP* GetThisMessageMap();                                                            \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    const AFX_MSGMAP* theClass::GetMessageMap() const {                                                      \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                                        \
        using ThisClass [[maybe_unused]] = theClass;                                                         \
        using TheBaseClass = baseClass;                                                                      \
        static constexpr AFX_MSGMAP_ENTRY messageEntries[] = {

#define END_MESSAGE_MAP()                                                                                    \
    AFX_MSGMAP_ENTRY {                                                                                       \
        0, 0, 0, nullptr                                                                                     \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static constexpr AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, messageEntries};             \
    return &messageMap;                                                                                      \
    }

#define ON_CONTROL(wNotifyCode, id, memberFxn)                                                               \
    AFX_MSGMAP_ENTRY{WM_COMMAND, static_cast<UINT>(wNotifyCode), id, &AfxCallVoid<ThisClass, memberFxn>},
#define ON_COMMAND(id, memberFxn) ON_CONTROL(0, id, memberFxn)
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)
#define ON_NOTIFY(wNotifyCode, id, memberFxn)                                                                \
    AFX_MSGMAP_ENTRY{WM_NOTIFY, static_cast<UINT>(wNotifyCode), id, &AfxCallNotify<ThisClass, memberFxn>},
#define ON_NOTIFY_REFLECT(wNotifyCode, memberFxn)                                                            \
    AFX_MSGMAP_ENTRY{kAfxReflected + WM_NOTIFY, static_cast<UINT>(wNotifyCode), 0,                           \
                     &AfxCallNotify<ThisClass, memberFxn>},
#define ON_MESSAGE(message, memberFxn) AFX_MSGMAP_ENTRY{message, 0, 0, &AfxCallMessage<ThisClass, memberFxn>},
