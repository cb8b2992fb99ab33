#include "files/WebMark.h"

#include "common/Paths.h"

namespace mxovshare {

bool HasStreams(const std::wstring& /*path*/) {
    return false;
}

bool IsWebMark(std::wstring_view name) noexcept {
    constexpr std::wstring_view kStream = L":Zone.Identifier";
    return name.size() > kStream.size() &&
           common::IsSamePath(name.substr(name.size() - kStream.size()), kStream);
}

WebMark::WebMark(const std::wstring& /*file*/, StreamProbe hasStreams) : m_hasStreams(hasStreams) {}

void WebMark::CopyTo(const std::wstring& /*file*/) const {
    static_cast<void>(m_hasStreams); // no file has a mark that could be copied
}

} // namespace mxovshare
