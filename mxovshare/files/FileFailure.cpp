#include "FileFailure.h"

#include <iterator>

namespace mxovshare {

std::wstring SystemReason(DWORD error) {
    wchar_t text[512];
    constexpr DWORD kFlags =
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    const DWORD length =
        FormatMessageW(kFlags, nullptr, error, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    std::wstring reason(text, length);
    reason.erase(reason.find_last_not_of(L" .\r\n") + 1);
    return reason.empty() ? L"error " + std::to_wstring(error) : reason;
}

void ThrowFileFailure(std::wstring_view doing, const std::wstring& path, DWORD error) {
    throw FileFailure{std::wstring(doing) + L" \"" + path + L"\": " + SystemReason(error)};
}

} // namespace mxovshare
