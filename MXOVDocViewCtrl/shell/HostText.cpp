#include "HostText.h"

#include <mxovshare.h>

namespace docview {

std::wstring HostText(UINT id) {
    CString text;
    text.LoadString(mxovshare::OVApplication::hMXOVResInstance, id);
    return text.GetString();
}

} // namespace docview
