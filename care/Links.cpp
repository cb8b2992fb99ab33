#include "care/Links.h"

#include "common/Paths.h"

#include <package/PackageInformation.h>
#include <package/PackagePath.h>

#include <algorithm>
#include <optional>

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

void AddLink(std::vector<Link>& links, Link link) {
    if (!link.path.empty()) {
        links.push_back(std::move(link));
    }
}

} // namespace

std::vector<Link> LinksOf(const Sections& sections) {
    std::vector<Link> links;
    if (const Section* info = FindSection(sections, inikey::kFileInfo)) {
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

bool IsFullPath(std::wstring_view path) {
    return IsNetworkPath(path) || (path.size() > 2 && path[1] == L':' && IsSeparator(path[2]));
}

} // namespace care
