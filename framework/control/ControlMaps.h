// The maps and type macros of a control class, besides those for messages and automation.
#pragma once

#include "ole/OleDispatch.h"
#include "ole/OleVerbs.h"

#include <cstddef>
#include <iterator>

namespace framework {

/// One event that a control may fire.
struct EventEntry {
    LPCTSTR lpszName; ///< null in the last line
    DISPID lDispID;
    std::string_view params; ///< VTS_ types
};

/// A class's own events and the map of its base.
struct EventMap {
    const EventMap* (*pfnGetBaseMap)(); ///< null in the root
    const EventEntry* lpEntries;
};

} // namespace framework

#define DECLARE_EVENT_MAP()                                                                                  \
protected:                                                                                                   \
    static const framework::EventMap* GetThisEventMap();                                                     \
    const framework::EventMap* GetEventMap() const override;

#define BEGIN_EVENT_MAP(theClass, baseClass)                                                                 \
    const framework::EventMap* theClass::GetEventMap() const {                                               \
        return GetThisEventMap();                                                                            \
    }                                                                                                        \
    const framework::EventMap* theClass::GetThisEventMap() {                                                 \
        using TheBaseClass = baseClass;                                                                      \
        static constexpr framework::EventEntry eventEntries[] = {

#define END_EVENT_MAP()                                                                                      \
    framework::EventEntry {                                                                                  \
        nullptr, 0, {}                                                                                       \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static constexpr framework::EventMap eventMap = {&TheBaseClass::GetThisEventMap, eventEntries};          \
    return &eventMap;                                                                                        \
    }

/// pfnFire is the member that fires the event; the map ignores it.
#define EVENT_CUSTOM_ID(pszName, dispid, pfnFire, vtsParams)                                                 \
    framework::EventEntry{_T(pszName), dispid, vtsParams},

/// The second argument of FireEvent.
#define EVENT_PARAM(vtsParams) reinterpret_cast<BYTE*>(const_cast<char*>(vtsParams))

#define DECLARE_OLECTLTYPE(class_name)                                                                       \
protected:                                                                                                   \
    UINT GetUserTypeNameID() override;                                                                       \
    DWORD GetMiscStatus() override;

#define IMPLEMENT_OLECTLTYPE(class_name, idsUserTypeName, dwOleMisc)                                         \
    UINT class_name::GetUserTypeNameID() {                                                                   \
        return idsUserTypeName;                                                                              \
    }                                                                                                        \
    DWORD class_name::GetMiscStatus() {                                                                      \
        return dwOleMisc;                                                                                    \
    }

#define DECLARE_PROPPAGEIDS(class_name)                                                                      \
protected:                                                                                                   \
    const CLSID* GetPropPageIDs(ULONG& cPropPages) override;

#define BEGIN_PROPPAGEIDS(class_name, count)                                                                 \
    const CLSID* class_name::GetPropPageIDs(ULONG& cPropPages) {                                             \
        constexpr size_t kPages = count;                                                                     \
        static const CLSID pages[] = {

#define PROPPAGEID(clsid) clsid,

#define END_PROPPAGEIDS(class_name)                                                                          \
    }                                                                                                        \
    ;                                                                                                        \
    static_assert(std::size(pages) == kPages, "the number of pages is not the one stated");                  \
    cPropPages = static_cast<ULONG>(kPages);                                                                 \
    return pages;                                                                                            \
    }
