#include "care/Links.h"

#include "common/Paths.h"

#include <package/PackageInformation.h>
#include <package/PackagePath.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

constexpr std::wstring_view kSeparators = L"\\/";

bool IsSeparator(wchar_t unit) {
    return kSeparators.find(unit) != std::wstring_view::npos;
}

std::wstring WithoutSeparatorAtEnd(std::wstring_view path) {
    return std::wstring(path.substr(0, path.find_last_not_of(kSeparators) + 1));
}

std::wstring WithBackslashes(std::wstring path) {
    std::ranges::replace(path, L'/', L'\\');
    return path;
}

// What follows a folder in a path, with its separator; empty for the folder itself, none for another path.
std::optional<std::wstring> Below(const std::wstring& path, const std::wstring& folder) {
    const std::wstring start = WithBackslashes(path.substr(0, folder.size()));
    if (!common::IsSamePath(start, WithBackslashes(folder))) {
        return {};
    }
    std::wstring rest = path.substr(folder.size());
    if (!rest.empty() && !IsSeparator(rest.front())) {
        return {};
    }
    return rest;
}

// The part before the last separator; empty without one.
std::wstring FolderOfFile(const std::wstring& path) {
    const std::size_t end = path.find_last_of(kSeparators);
    return path.substr(0, end == std::wstring::npos ? 0 : end);
}

void AddLink(std::vector<Link>& links, Link link) {
    if (!link.path.empty()) {
        links.push_back(std::move(link));
    }
}

} // namespace

std::vector<Link> LinksOf(const Sections& sections) {
    std::vector<Link> links;
    if (const std::optional<Section> info = sections.Find(inikey::kFileInfo)) {
        AddLink(links, {info->name, inikey::kCadPath, ValueOf(*info, inikey::kCadPath),
                        ValueOf(*info, inikey::kCadDescription)});
    }
    for (const Section& section : sections) {
        if (IsAdditional(section) && !IsCopy(section)) {
            AddLink(links, {section.name, inikey::kFilePath, ValueOf(section, inikey::kFilePath),
                            ValueOf(section, inikey::kDescription)});
        }
    }
    return links;
}

std::vector<Relinked> Relink(const Sections& sections, const std::wstring& from, const std::wstring& to) {
    const std::wstring oldFolder = WithoutSeparatorAtEnd(from);
    const std::wstring newFolder = WithoutSeparatorAtEnd(to);
    std::vector<Relinked> relinked;
    for (const Link& link : LinksOf(sections)) {
        const auto rest = Below(link.path, oldFolder);
        if (rest && newFolder + *rest != link.path) {
            relinked.push_back({link, newFolder + *rest});
        }
    }
    return relinked;
}

// The folder that moved is the one above all that the two paths have in common at their ends.
std::optional<std::wstring> MovedWith(const std::wstring& other, const std::wstring& from,
                                      const std::wstring& to) {
    std::wstring oldFolder = from;
    std::wstring newFolder = to;
    while (!oldFolder.empty() && common::IsSamePath(LastName(oldFolder), LastName(newFolder))) {
        oldFolder = FolderOfFile(oldFolder);
        newFolder = FolderOfFile(newFolder);
    }
    if (oldFolder == from || oldFolder.empty() || newFolder.empty()) {
        return {};
    }
    const auto rest = Below(other, oldFolder);
    return rest ? std::optional(newFolder + *rest) : std::nullopt;
}

bool IsFullPath(std::wstring_view path) {
    return IsNetworkPath(path) || (path.size() > 2 && path[1] == L':' && IsSeparator(path[2]));
}

} // namespace care
