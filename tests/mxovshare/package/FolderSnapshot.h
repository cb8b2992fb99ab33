// What lies in a folder, to be compared with what lies there or elsewhere later.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <ostream>
#include <string>

struct FileSnapshot {
    std::string content;
    std::uint64_t modified = 0; ///< 0 for a folder
    bool isFolder = false;
    bool isHidden = false;

    bool operator==(const FileSnapshot&) const = default;
};

void PrintTo(const FileSnapshot& file, std::ostream* stream);

/// Everything below a folder by relative path. Reads it by the system's own functions alone.
std::map<std::wstring, FileSnapshot> TakeSnapshot(const std::wstring& folder);

/// Removes a folder with everything in it, whatever the length of the paths.
void RemoveTree(const std::wstring& folder);
