// Files that the system runs when they are opened.
#pragma once

#include "common/Paths.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace common {

/// Whether the system runs, loads or installs a file of this name: programs, scripts, links to programs.
[[nodiscard]] inline bool IsProgramName(std::wstring_view name) noexcept {
    constexpr std::wstring_view kExtensions[] = {L".appref-ms", L".bat",    L".cmd",
                                                 L".com",       L".cpl",    L".dll",
                                                 L".exe",       L".gadget", L".hta",
                                                 L".inf",       L".jar",    L".js",
                                                 L".jse",       L".lnk",    L".msc",
                                                 L".msi",       L".msix",   L".msp",
                                                 L".ocx",       L".pif",    L".ps1",
                                                 L".psm1",      L".reg",    L".scf",
                                                 L".scr",       L".sct",    L".settingcontent-ms",
                                                 L".sys",       L".url",    L".vb",
                                                 L".vbe",       L".vbs",    L".ws",
                                                 L".wsc",       L".wsf",    L".wsh"};
    const std::size_t dot = name.find_last_of(L".\\/");
    return dot != std::wstring_view::npos &&
           std::ranges::any_of(kExtensions, [extension = name.substr(dot)](std::wstring_view program) {
               return IsSamePath(extension, program);
           });
}

/// A name as part of a sentence: long ones without their middle.
[[nodiscard]] inline std::wstring ShortName(std::wstring_view name) {
    constexpr std::size_t kLongest = 60;
    constexpr std::size_t kEnd = 20;
    return name.size() <= kLongest ? std::wstring(name)
                                   : std::wstring(name.substr(0, kLongest - kEnd)) + L"\u2026" +
                                         std::wstring(name.substr(name.size() - kEnd));
}

struct FoundPrograms {
    std::wstring names;   ///< of the first three, separated by commas
    std::size_t more = 0; ///< how many there are besides
};

/// The programs among the entries of a package. Each entry has a `name`, relative to the package.
template <class Entries>
[[nodiscard]] FoundPrograms FindPrograms(const Entries& entries) {
    constexpr std::size_t kMostNames = 3;
    FoundPrograms found;
    std::size_t count = 0;
    for (const auto& entry : entries) {
        if (entry.isFolder || !IsProgramName(entry.name)) {
            continue;
        }
        if (++count > kMostNames) {
            ++found.more;
        } else {
            found.names += (count > 1 ? L", " : L"") + ShortName(entry.name);
        }
    }
    return found;
}

/// The same as a text, such as "a.exe, b.js, c.lnk and 3 more"; empty for none.
template <class Entries>
[[nodiscard]] std::wstring ProgramNames(const Entries& entries) {
    const FoundPrograms found = FindPrograms(entries);
    return found.more > 0 ? found.names + L" and " + std::to_wstring(found.more) + L" more" : found.names;
}

/// Why a package that holds `programs`, a list of names, is refused: the rest of a sentence about it.
[[nodiscard]] inline std::wstring RefusalOf(const std::wstring& programs) {
    return L" holds programs, which your administrator does not allow: " + programs;
}

} // namespace common
