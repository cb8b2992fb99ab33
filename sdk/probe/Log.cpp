#include "Log.h"

#include <ocidl.h>
#include <ole2.h>

#include <cstdio>

namespace {

int depth = 0; // of calls into the control
const ULONGLONG start = GetTickCount64();

void Write(const char* direction, const std::string& text, const char* ending) {
    std::printf("%6llu ms  %*s%s  %s%s\n", GetTickCount64() - start, 2 * depth, "", direction, text.c_str(),
                ending);
    std::fflush(stdout);
}

} // namespace

void LogCall(bool fromControl, const std::string& call, HRESULT result) {
    char ending[16] = "";
    std::snprintf(ending, sizeof ending, "  %08lx", static_cast<unsigned long>(result));
    Write(fromControl ? "control > host" : "host > control", call, ending);
}

CallIntoControl::CallIntoControl(std::string call) : m_call(std::move(call)) {
    Write("host > control", m_call, "");
    ++depth;
}

CallIntoControl::~CallIntoControl() {
    --depth;
    LogCall(false, "end of " + m_call, m_result);
}

std::string InterfaceName(REFIID iid) {
    static const struct {
        const IID& iid;
        const char* name;
    } names[] = {{IID_IUnknown, "IUnknown"},
                 {IID_IDispatch, "IDispatch"},
                 {IID_IOleClientSite, "IOleClientSite"},
                 {IID_IOleContainer, "IOleContainer"},
                 {IID_IOleControlSite, "IOleControlSite"},
                 {IID_IOleInPlaceFrame, "IOleInPlaceFrame"},
                 {IID_IOleInPlaceObject, "IOleInPlaceObject"},
                 {IID_IOleInPlaceSite, "IOleInPlaceSite"},
                 {IID_IOleInPlaceSiteEx, "IOleInPlaceSiteEx"},
                 {IID_IOleInPlaceSiteWindowless, "IOleInPlaceSiteWindowless"},
                 {IID_IOleInPlaceUIWindow, "IOleInPlaceUIWindow"},
                 {IID_IOleObject, "IOleObject"},
                 {IID_IOleWindow, "IOleWindow"},
                 {IID_IPersistStreamInit, "IPersistStreamInit"},
                 {IID_IServiceProvider, "IServiceProvider"}};
    for (const auto& [known, name] : names) {
        if (known == iid) {
            return name;
        }
    }
    OLECHAR text[40] = L"";
    StringFromGUID2(iid, text, 40);
    return {text, text + lstrlenW(text)};
}

std::string RectText(const RECT* rect) {
    if (!rect) {
        return "null";
    }
    return std::to_string(rect->left) + "," + std::to_string(rect->top) + " " +
           std::to_string(rect->right - rect->left) + "x" + std::to_string(rect->bottom - rect->top);
}
