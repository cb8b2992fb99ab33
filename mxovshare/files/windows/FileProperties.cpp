#include "files/FileProperties.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/Paths.h"
#include "files/FolderPath.h"

#include <vector>

namespace mxovshare {

namespace {

constexpr DWORD kShareAnything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Owner and access rights of a file; empty when they cannot be read or the file system has none.
class Security {
public:
    explicit Security(const std::wstring& path) {
        constexpr SECURITY_INFORMATION kParts = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
        DWORD size = 0;
        GetFileSecurityW(path.c_str(), kParts, nullptr, 0, &size);
        m_bytes.resize(size);
        if (!GetFileSecurityW(path.c_str(), kParts, m_bytes.data(), size, &size)) {
            m_bytes.clear();
        }
    }

    bool operator==(const Security& other) const { return m_bytes == other.m_bytes; }
    bool IsEmpty() const { return m_bytes.empty(); }

    bool HasOwnerOf(const Security& other) const { return EqualSid(Owner(), other.Owner()) != FALSE; }
    bool SetOwner(const std::wstring& path) const {
        return SetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, Descriptor()) != FALSE;
    }
    bool SetRights(const std::wstring& path) const {
        SECURITY_DESCRIPTOR_CONTROL control = 0;
        DWORD revision = 0;
        GetSecurityDescriptorControl(Descriptor(), &control, &revision);
        const SECURITY_INFORMATION inheritance = (control & SE_DACL_PROTECTED) != 0
                                                     ? PROTECTED_DACL_SECURITY_INFORMATION
                                                     : UNPROTECTED_DACL_SECURITY_INFORMATION;
        return SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION | inheritance, Descriptor()) != FALSE;
    }

private:
    PSECURITY_DESCRIPTOR Descriptor() const { return const_cast<std::uint8_t*>(m_bytes.data()); }
    PSID Owner() const {
        PSID owner = nullptr;
        BOOL isDefault = FALSE;
        GetSecurityDescriptorOwner(Descriptor(), &owner, &isDefault);
        return owner;
    }

    std::vector<std::uint8_t> m_bytes;
};

void AddLoss(std::wstring& lost, const wchar_t* what) {
    lost += (lost.empty() ? L"" : L", ") + std::wstring(what);
}

void CopySecurity(const std::wstring& from, const std::wstring& to, std::wstring& lost) {
    const Security wanted(from);
    const Security given(to);
    // Setting what is there already is not harmless everywhere: Wine turns access rights into a file's mode.
    if (wanted == given || wanted.IsEmpty() || given.IsEmpty()) {
        return;
    }
    if (!wanted.SetRights(to)) {
        AddLoss(lost, L"its access rights");
    }
    if (!wanted.HasOwnerOf(given) && !wanted.SetOwner(to)) {
        AddLoss(lost, L"its owner");
    }
}

bool CopyStream(const std::wstring& from, const std::wstring& to) {
    const common::UniqueHandle source = common::OwnFile(
        CreateFileW(from.c_str(), GENERIC_READ, kShareAnything, nullptr, OPEN_EXISTING, 0, nullptr));
    const common::UniqueHandle target = common::OwnFile(
        CreateFileW(to.c_str(), GENERIC_WRITE, kShareAnything, nullptr, CREATE_ALWAYS, 0, nullptr));
    std::vector<std::uint8_t> buffer(std::size_t{64} << 10);
    while (source && target) {
        DWORD count = 0;
        DWORD written = 0;
        if (!ReadFile(source.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr)) {
            return false;
        }
        if (count == 0) {
            return true;
        }
        if (!WriteFile(target.get(), buffer.data(), count, &written, nullptr) || written != count) {
            return false;
        }
    }
    return false;
}

void CopyStreams(const std::wstring& from, const std::wstring& to, std::wstring& lost) {
    WIN32_FIND_STREAM_DATA stream = {};
    const common::UniqueSearch search =
        common::OwnSearch(FindFirstStreamW(from.c_str(), FindStreamInfoStandard, &stream, 0));
    bool copied = true;
    for (bool found = search != nullptr; found; found = FindNextStreamW(search.get(), &stream) != FALSE) {
        const std::wstring name = stream.cStreamName;
        copied = copied && (name == L"::$DATA" || CopyStream(from + name, to + name));
    }
    if (!copied) {
        AddLoss(lost, L"its alternate streams");
    }
}

common::UniqueHandle OpenForQuery(const std::wstring& path) {
    return common::OwnFile(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAnything, nullptr,
                                       OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

bool HasHardLinks(const std::wstring& path) {
    const common::UniqueHandle file = OpenForQuery(path);
    BY_HANDLE_FILE_INFORMATION information = {};
    return file && GetFileInformationByHandle(file.get(), &information) != FALSE &&
           information.nNumberOfLinks > 1;
}

// Empty for what cannot be opened.
std::wstring FinalPath(const std::wstring& path) {
    const common::UniqueHandle file = OpenForQuery(path);
    std::wstring final;
    DWORD size = file ? GetFinalPathNameByHandleW(file.get(), nullptr, 0, FILE_NAME_NORMALIZED) : 0;
    final.resize(size);
    size = file ? GetFinalPathNameByHandleW(file.get(), final.data(), size, FILE_NAME_NORMALIZED) : 0;
    final.resize(size < final.size() ? size : 0);
    return final;
}

} // namespace

std::wstring CopyFileProperties(const std::wstring& from, const std::wstring& to) {
    const std::wstring source = common::LongPath(from);
    const std::wstring target = common::LongPath(to);
    std::wstring lost;
    if (GetFileAttributesW(source.c_str()) != INVALID_FILE_ATTRIBUTES) {
        CopySecurity(source, target, lost);
        CopyStreams(source, target, lost);
        if (HasHardLinks(source)) {
            AddLoss(lost, L"its other hard links");
        }
    }
    return lost;
}

std::wstring FinalFile(const std::wstring& path) {
    const std::wstring full = common::LongPath(path);
    const std::size_t separator = full.find_last_of(L"\\/");
    const std::wstring final = FinalPath(full);
    if (final.empty() || separator == std::wstring::npos) {
        return path;
    }
    // Folders may be links or substituted drives as well; only the file's own link matters.
    const std::wstring expected =
        JoinPath(FinalPath(full.substr(0, separator + 1)), full.substr(separator + 1));
    return common::IsSamePath(final, expected) ? path : final;
}

} // namespace mxovshare
