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

namespace framework {

/// A message, command or notification on its way to a handler.
struct MessageArguments {
    UINT message;  ///< WM_COMMAND and WM_NOTIFY for those that went through OnCmdMsg
    WPARAM wParam; ///< for a command: the control or command identifier
    LPARAM lParam;
    void* pExtra;   ///< Notification* for WM_NOTIFY
    LRESULT result; ///< set by the thunk
};

/// What OnCmdMsg carries in pExtra for a WM_NOTIFY.
struct Notification {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

/// Calls the handler of one entry. FALSE: the handler left the message to the next one in line.
using MessageThunk = BOOL (*)(CCmdTarget& target, MessageArguments& args);

/// One line of a message map.
struct MessageEntry {
    UINT nMessage;    ///< window message, or one of the codes below
    UINT nCode;       ///< WM_COMMAND and WM_NOTIFY: notification code
    UINT nID;         ///< WM_COMMAND and WM_NOTIFY: identifier
    MessageThunk pfn; ///< null in the last line
};

/// A class's own lines and the map of its base.
struct MessageMap {
    const MessageMap* (*pfnGetBaseMap)(); ///< null in the root
    const MessageEntry* lpEntries;
};

/// Added to a message that a parent hands back to the control it came from.
constexpr UINT kReflected = 0xBC00;

/// Entry codes that are no window messages: such lines are never reached by a message.
constexpr UINT kOleVerbEntry = 0xFFFF0001;    ///< ON_OLEVERB: nID is the string of the verb's name
constexpr UINT kStdOleVerbEntry = 0xFFFF0002; ///< ON_STDOLEVERB: nCode is the verb

/// The first line of the map or its bases for which `accept` holds; null when there is none.
template <class Accept>
const MessageEntry* FindMessageEntry(const MessageMap* map, Accept accept) {
    while (map) {
        for (const MessageEntry* entry = map->lpEntries; entry->pfn; ++entry) {
            if (accept(*entry)) {
                return entry;
            }
        }
        map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr;
    }
    return nullptr;
}

template <class Pointer>
struct MemberTraits;

template <class Result, class Class, class... Args>
struct MemberTraits<Result (Class::*)(Args...)> {
    using Signature = Result(Args...);
    using Owner = Class;
};

template <class Class, class Signature, auto Handler>
struct BoundHandler;

/// A handler together with the class whose map names it and the signature that its entry demands.
template <class Class, class Result, class... Args, auto Handler>
struct BoundHandler<Class, Result(Args...), Handler> {
    using Traits = MemberTraits<decltype(Handler)>;
    static_assert(std::is_same_v<typename Traits::Signature, Result(Args...)>,
                  "the handler's signature is not the one its message map entry demands");
    static_assert(std::is_base_of_v<typename Traits::Owner, Class>, "the handler belongs to another class");

    static Result Call(CCmdTarget& target, Args... args) {
        return (static_cast<Class&>(target).*Handler)(args...);
    }
};

/// void f()
template <class Class, auto Handler>
BOOL CallVoid(CCmdTarget& target, MessageArguments& args) {
    BoundHandler<Class, void(), Handler>::Call(target);
    args.result = 0;
    return TRUE;
}

/// LRESULT f(WPARAM, LPARAM)
template <class Class, auto Handler>
BOOL CallMessage(CCmdTarget& target, MessageArguments& args) {
    args.result =
        BoundHandler<Class, LRESULT(WPARAM, LPARAM), Handler>::Call(target, args.wParam, args.lParam);
    return TRUE;
}

/// void f(NMHDR*, LRESULT*)
template <class Class, auto Handler>
BOOL CallNotify(CCmdTarget& target, MessageArguments& args) {
    const auto* notify = static_cast<const Notification*>(args.pExtra);
    BoundHandler<Class, void(NMHDR*, LRESULT*), Handler>::Call(target, notify->pNMHDR, notify->pResult);
    return TRUE;
}

} // namespace framework

#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const framework::MessageMap* GetThisMessageMap();                                                 \
    const framework::MessageMap* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    const framework::MessageMap* theClass::GetMessageMap() const {                                           \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    const framework::MessageMap* theClass::GetThisMessageMap() {                                             \
        using ThisClass [[maybe_unused]] = theClass;                                                         \
        using TheBaseClass = baseClass;                                                                      \
        static constexpr framework::MessageEntry messageEntries[] = {

#define END_MESSAGE_MAP()                                                                                    \
    framework::MessageEntry {                                                                                \
        0, 0, 0, nullptr                                                                                     \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static constexpr framework::MessageMap messageMap = {&TheBaseClass::GetThisMessageMap, messageEntries};  \
    return &messageMap;                                                                                      \
    }

#define ON_CONTROL(wNotifyCode, id, memberFxn)                                                               \
    framework::MessageEntry{WM_COMMAND, static_cast<UINT>(wNotifyCode), id,                                  \
                            &framework::CallVoid<ThisClass, memberFxn>},
#define ON_COMMAND(id, memberFxn) ON_CONTROL(0, id, memberFxn)
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)
#define ON_NOTIFY(wNotifyCode, id, memberFxn)                                                                \
    framework::MessageEntry{WM_NOTIFY, static_cast<UINT>(wNotifyCode), id,                                   \
                            &framework::CallNotify<ThisClass, memberFxn>},
#define ON_NOTIFY_REFLECT(wNotifyCode, memberFxn)                                                            \
    framework::MessageEntry{framework::kReflected + WM_NOTIFY, static_cast<UINT>(wNotifyCode), 0,            \
                            &framework::CallNotify<ThisClass, memberFxn>},
#define ON_MESSAGE(message, memberFxn)                                                                       \
    framework::MessageEntry{message, 0, 0, &framework::CallMessage<ThisClass, memberFxn>},
