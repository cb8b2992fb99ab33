#include "common/LongPath.h"

#include "common/Handles.h"
#include "common/Paths.h"
#include "common/Utf8.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace common {

namespace {

struct Drive {
    wchar_t letter;
    std::wstring folder; // without a separator at its end
};

wchar_t UpperLetter(wchar_t unit) {
    return unit >= L'a' && unit <= L'z' ? static_cast<wchar_t>(unit - (L'a' - L'A')) : unit;
}

bool IsLetter(wchar_t unit) {
    return UpperLetter(unit) >= L'A' && UpperLetter(unit) <= L'Z';
}

bool IsSeparator(wchar_t unit) {
    return unit == L'\\' || unit == L'/';
}

// Of "P:=/mnt/parts"; anything else is ignored.
void AddDrive(std::vector<Drive>& drives, std::wstring_view text) {
    if (text.size() > 3 && IsLetter(text[0]) && text.substr(1, 3) == L":=/") {
        const std::wstring_view folder = text.substr(3);
        drives.push_back(
            {UpperLetter(text[0]), std::wstring(folder.substr(0, folder.find_last_not_of(L'/') + 1))});
    }
}

std::vector<Drive> ReadDrives() {
    std::vector<Drive> drives;
    const char* list = std::getenv("MXOV_DRIVES");
    const std::wstring text = list != nullptr ? FromNameBytes(list) : std::wstring();
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(L';', start), text.size());
        AddDrive(drives, std::wstring_view(text).substr(start, end - start));
        start = end + 1;
    }
    drives.push_back({L'Z', {}});
    return drives;
}

const std::vector<Drive>& Drives() {
    static const std::vector<Drive> drives = ReadDrives();
    return drives;
}

std::wstring CurrentFolder() {
    const UniqueText folder(getcwd(nullptr, 0));
    return folder ? FromNameBytes(folder.get()) : std::wstring();
}

// Without empty parts, "." and "..".
std::wstring Plain(std::wstring_view path) {
    std::wstring plain;
    while (!path.empty()) {
        const std::wstring_view part = path.substr(0, path.find(L'/'));
        path.remove_prefix(std::min(part.size() + 1, path.size()));
        if (part == L"..") {
            plain.resize(plain.empty() ? 0 : plain.rfind(L'/'));
        } else if (!part.empty() && part != L".") {
            plain.append(L"/").append(part);
        }
    }
    return plain.empty() ? L"/" : plain;
}

bool Exists(const std::string& path) {
    struct stat about = {};
    return lstat(path.c_str(), &about) == 0;
}

// The entry of a folder whose name differs from `name` in case only, the first of several by their bytes;
// empty without one.
std::string SameName(const std::string& folder, const std::string& name) {
    const UniqueFolder entries(opendir(folder.c_str()));
    const std::wstring wanted = FromNameBytes(name);
    std::string found;
    while (const dirent* entry = entries ? readdir(entries.get()) : nullptr) {
        const std::string other = entry->d_name;
        if ((found.empty() || other < found) && IsSamePath(FromNameBytes(other), wanted)) {
            found = other;
        }
    }
    return found;
}

// The path with every name as the file system spells it; from the first on that is not there, as it is.
std::string SpelledAsOnDisk(const std::string& path) {
    std::string found;
    for (std::size_t start = 1; start <= path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        const std::size_t folder = found.size();
        const std::string name = path.substr(start, end - start);
        found.append("/").append(name);
        if (!Exists(found)) {
            found.resize(folder);
            const std::string other = SameName(found.empty() ? "/" : found, name);
            if (other.empty()) {
                return found.append(path, start - 1, std::string::npos);
            }
            found.append("/").append(other);
        }
        start = end + 1;
    }
    return found;
}

} // namespace

std::wstring LongPath(const std::wstring& path) {
    if (path.empty() || path.starts_with(L"\\\\")) {
        return path;
    }
    std::wstring full = path;
    if (path.size() > 2 && IsLetter(path[0]) && path[1] == L':' && IsSeparator(path[2])) {
        const auto drive = std::ranges::find(Drives(), UpperLetter(path[0]), &Drive::letter);
        if (drive == Drives().end()) {
            return path;
        }
        full = drive->folder + path.substr(2);
    } else if (!IsSeparator(path[0])) {
        full = CurrentFolder() + L"/" + path;
    }
    std::ranges::replace(full, L'\\', L'/');
    return Plain(full);
}

std::wstring FullPath(const std::wstring& path) {
    std::wstring full = LongPath(path);
    const Drive* innermost = nullptr;
    for (const Drive& drive : Drives()) {
        const bool isAbove = full.starts_with(drive.folder + L"/") || full == drive.folder;
        if (isAbove && (innermost == nullptr || drive.folder.size() > innermost->folder.size())) {
            innermost = &drive;
        }
    }
    if (innermost == nullptr) {
        return full;
    }
    std::wstring rest = full.substr(innermost->folder.size());
    std::ranges::replace(rest, L'/', L'\\');
    return std::wstring(1, innermost->letter) + L":" + (rest.empty() ? L"\\" : rest);
}

std::string FilePath(const std::wstring& path) {
    const std::wstring full = LongPath(path);
    if (!full.starts_with(L'/')) {
        return {};
    }
    std::string bytes = ToNameBytes(full);
    return Exists(bytes) ? bytes : SpelledAsOnDisk(bytes);
}

std::string NewFilePath(const std::wstring& path) {
    const std::wstring full = LongPath(path);
    if (!full.starts_with(L'/')) {
        return {};
    }
    const std::size_t name = full.rfind(L'/');
    return FilePath(full.substr(0, std::max<std::size_t>(name, 1))) + ToNameBytes(full.substr(name));
}

} // namespace common
