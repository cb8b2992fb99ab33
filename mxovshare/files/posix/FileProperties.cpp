#include "files/FileProperties.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/Utf8.h"

#include <cstdlib>
#include <string_view>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace mxovshare {

namespace {

void AddLoss(std::wstring& lost, const wchar_t* what) {
    lost += (lost.empty() ? L"" : L", ") + std::wstring(what);
}

// Access rights last: a new owner takes some of them away.
void CopyRights(const struct stat& wanted, const std::string& to, std::wstring& lost) {
    struct stat given = {};
    if (stat(to.c_str(), &given) != 0) {
        return;
    }
    const bool hasOwner = given.st_uid == wanted.st_uid && given.st_gid == wanted.st_gid;
    if (!hasOwner && chown(to.c_str(), wanted.st_uid, wanted.st_gid) != 0) {
        AddLoss(lost, L"its owner");
    }
    if (chmod(to.c_str(), wanted.st_mode & 07777) != 0) {
        AddLoss(lost, L"its access rights");
    }
}

bool CopyAttribute(const std::string& from, const std::string& to, const char* name) {
    const ssize_t size = getxattr(from.c_str(), name, nullptr, 0);
    std::string value(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    return size >= 0 && getxattr(from.c_str(), name, value.data(), value.size()) == size &&
           setxattr(to.c_str(), name, value.data(), value.size(), 0) == 0;
}

// Lists of access rights are among them. A file system without any has none to lose.
void CopyAttributes(const std::string& from, const std::string& to, std::wstring& lost) {
    const ssize_t size = listxattr(from.c_str(), nullptr, 0);
    std::string names(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    if (names.empty() || listxattr(from.c_str(), names.data(), names.size()) != size) {
        return;
    }
    bool copied = true;
    for (std::size_t start = 0; start < names.size(); start = names.find('\0', start) + 1) {
        copied = CopyAttribute(from, to, names.c_str() + start) && copied;
    }
    if (!copied) {
        AddLoss(lost, L"its extended attributes");
    }
}

} // namespace

std::wstring CopyFileProperties(const std::wstring& from, const std::wstring& to) {
    const std::string source = common::FilePath(from);
    const std::string target = common::FilePath(to);
    std::wstring lost;
    struct stat about = {};
    if (stat(source.c_str(), &about) == 0) {
        CopyAttributes(source, target, lost);
        CopyRights(about, target, lost);
        if (about.st_nlink > 1) {
            AddLoss(lost, L"its other hard links");
        }
    }
    return lost;
}

std::wstring FinalFile(const std::wstring& path) {
    const std::string file = common::FilePath(path);
    struct stat about = {};
    if (lstat(file.c_str(), &about) != 0 || !S_ISLNK(about.st_mode)) {
        return path;
    }
    const common::UniqueText final(realpath(file.c_str(), nullptr));
    return final ? common::FromNameBytes(final.get()) : path;
}

} // namespace mxovshare
