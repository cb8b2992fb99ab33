// What a file has besides its content.
#pragma once

#include <string>

namespace mxovshare {

/// Copies owner, access rights and alternate streams of the file `from` to the file `to`, which is to replace
/// it. Returns what is lost then, in words such as "its owner, its hard links"; empty when nothing is, or
/// when there is no file `from`.
std::wstring CopyFileProperties(const std::wstring& from, const std::wstring& to);

/// The file that a symbolic link leads to; `path` itself for any other file or none.
std::wstring FinalFile(const std::wstring& path);

} // namespace mxovshare
