#include "mxovshare.h"

namespace mxovshare {

std::wstring OVApplication::mxLanguageName = L"English";
HINSTANCE OVApplication::hMXOVResInstance = nullptr;

} // namespace mxovshare
