#include "HostText.h"

#include <mxovshare.h>

std::wstring HostText(UINT id) {
    CString text;
    text.LoadString(mxovshare::OVApplication::hMXOVResInstance, id);
    return text.GetString();
}
