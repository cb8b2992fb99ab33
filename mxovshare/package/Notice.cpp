#include "package/Notice.h"

#include <windows.h>

#include <utility>

namespace mxovshare {

namespace {

NoticeSink g_sink = nullptr;

} // namespace

void TellUser(const std::wstring& text) {
    if (g_sink != nullptr)
        g_sink(text);
    else
        MessageBoxW(GetActiveWindow(), text.c_str(), L"Maxtrel Orvando Document Manager",
                    MB_OK | MB_ICONERROR);
}

NoticeSink SetNoticeSink(NoticeSink sink) {
    return std::exchange(g_sink, sink);
}

} // namespace mxovshare
