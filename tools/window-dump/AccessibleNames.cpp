#include "AccessibleNames.h"

#include "common/ComPtr.h"
#include "RemoteWindows.h"

#include <oleacc.h>

namespace {

std::optional<std::wstring> NameOf(HWND window) {
    common::ComPtr<IAccessible> accessible;
    if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                          accessible.ReceiveVoid()))) {
        return std::nullopt;
    }
    VARIANT self = {};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    common::Bstr name;
    accessible->get_accName(self, name.Receive());
    return name.Get() ? std::wstring(name.Get()) : std::wstring();
}

void AddBelow(HWND window, std::vector<AccessibleName>& names) {
    for (const HWND child : Children(window)) {
        if (IsWindowVisible(child)) {
            names.push_back({child, NameOf(child)});
            AddBelow(child, names);
        }
    }
}

} // namespace

std::vector<AccessibleName> AccessibleNames(HWND window) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); // for the rest of the process
    std::vector<AccessibleName> names;
    AddBelow(window, names);
    return names;
}
