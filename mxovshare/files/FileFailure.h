// How an operation on a file of the file system fails.
#pragma once

#include "Error.h"

#include <windows.h>

#include <string>
#include <string_view>

namespace mxovshare {

/// A file or folder of the file system is the reason; the text is complete.
class FileFailure : public Error {
public:
    explicit FileFailure(std::wstring_view text);
};

/// Another program changed a file while it was being read.
class FileChanged : public FileFailure {
public:
    explicit FileChanged(const std::wstring& path);
};

/// Throws the failure of `doing` (such as "cannot read") with a file for the system's reason.
[[noreturn]] void ThrowFileFailure(std::wstring_view doing, const std::wstring& path, DWORD error);

} // namespace mxovshare
