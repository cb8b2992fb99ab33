// COleControl: events.
#include "Control.h"
#include "ControlParts.h"

#include <cstdarg>
#include <vector>

using namespace framework;

namespace {

/// Takes the next argument of a type out of the list. A text is copied into a BSTR.
common::Variant Take(va_list& list, VARTYPE type) {
    common::Variant taken;
    VARIANT* value = &taken;
    switch (type) {
    case VT_I2:
        value->iVal = static_cast<short>(va_arg(list, int));
        break;
    case VT_I4:
        value->lVal = va_arg(list, long);
        break;
    case VT_R8:
        value->dblVal = va_arg(list, double);
        break;
    case VT_BOOL:
        value->boolVal = va_arg(list, BOOL) ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case VT_BSTR:
        value->bstrVal = ::SysAllocString(va_arg(list, LPCTSTR));
        break;
    default:
        return taken;
    }
    value->vt = type;
    return taken;
}

} // namespace

const EventMap* COleControl::GetThisEventMap() {
    static constexpr EventEntry entries[] = {{nullptr, 0, {}}};
    static constexpr EventMap map = {nullptr, entries};
    return &map;
}

const EventMap* COleControl::GetEventMap() const {
    return GetThisEventMap();
}

bool COleControl::KnowsEvent(DISPID dispid) const {
    const EventMap* map = GetEventMap();
    while (map) {
        for (const EventEntry* entry = map->lpEntries; entry->lpszName; ++entry) {
            if (entry->lDispID == dispid) {
                return true;
            }
        }
        map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr;
    }
    return false;
}

void __cdecl COleControl::FireEvent(DISPID dispid, BYTE* pbParams, ...) {
    if (m_parts->frozen > 0 || !KnowsEvent(dispid)) {
        return;
    }
    const std::string_view types(reinterpret_cast<const char*>(pbParams));
    std::vector<common::Variant> owned;
    va_list list;
    va_start(list, pbParams);
    for (const char type : types) {
        owned.push_back(Take(list, static_cast<VARTYPE>(type)));
    }
    va_end(list);
    std::vector<VARIANT> arguments; // the last parameter comes first
    for (auto value = owned.rbegin(); value != owned.rend(); ++value) {
        arguments.push_back(value->Get());
    }
    DISPPARAMS params = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    const OleKeepAlive alive(*this);
    for (const common::ComPtr<IDispatch>& sink : m_parts->events.Sinks<IDispatch>()) {
        sink->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr,
                     nullptr);
    }
}
