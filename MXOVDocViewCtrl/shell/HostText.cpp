#include "HostText.h"

#include <mxovshare.h>

namespace docview {

std::wstring HostText(UINT id) {
    CString text;
    text.LoadString(mxovshare::OVApplication::hMXOVResInstance, id);
    return text.GetString();
}

common::UniqueBitmap HostBitmap(UINT id) {
    return common::UniqueBitmap(
        LoadBitmapW(mxovshare::OVApplication::hMXOVResInstance, MAKEINTRESOURCEW(id)));
}

} // namespace docview
