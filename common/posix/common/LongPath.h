// Paths of this system, and of Windows for files of this system.
//
// A path is taken as it is typed on either system: "\" and "/" separate, "P:\parts" lies in the folder that
// stands for the drive. The variable MXOV_DRIVES of the environment names those folders, such as
// "P:=/mnt/parts;Q:=/srv/q"; the root stands for Z:. A drive without a folder, and another computer
// ("\\server\share"), names nothing here. A name that is not there stands for the one that differs in case
// only.
#pragma once

#include <string>

namespace common {

/// The full path of `path` as Windows has it, "Z:\home\plan.pdf": what packages hold of files outside them.
[[nodiscard]] std::wstring FullPath(const std::wstring& path);

/// The full path of `path` on this system, "/home/plan.pdf". Unchanged for one that names nothing here.
[[nodiscard]] std::wstring LongPath(const std::wstring& path);

/// The full path of a file as the system takes it; empty for one that names nothing here.
[[nodiscard]] std::string FilePath(const std::wstring& path);

/// The same for a file that is to be created: only the folders above it are looked up.
[[nodiscard]] std::string NewFilePath(const std::wstring& path);

} // namespace common
