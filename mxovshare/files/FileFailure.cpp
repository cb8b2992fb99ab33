#include "FileFailure.h"

#include "common/SystemError.h"
#include "common/Utf8.h"

namespace mxovshare {

FileFailure::FileFailure(std::wstring_view text) : Error(common::ToUtf8(text)) {}

FileChanged::FileChanged(const std::wstring& path)
    : FileFailure(L"cannot read \"" + path + L"\": another program keeps changing it") {}

void ThrowFileFailure(std::wstring_view doing, const std::wstring& path, DWORD error) {
    throw FileFailure(std::wstring(doing) + L" \"" + path + L"\": " + common::SystemErrorText(error));
}

} // namespace mxovshare
