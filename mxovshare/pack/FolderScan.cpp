#include "pack/FolderScan.h"

#include "common/InformationFile.h"
#include "common/LongPath.h"
#include "common/Paths.h"
#include "common/Utf8.h"
#include "files/FileFailure.h"
#include "files/FolderPath.h"
#include "files/FolderSearch.h"
#include "files/WebMark.h"
#include "mxovpackage.h"
#include "pack/FileTimes.h"
#include "text/CaseFold.h"
#include "zip/EntryName.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <tuple>

#include <windows.h>

namespace mxovshare {

namespace {

bool IsLink(const WIN32_FIND_DATAW& data) {
    return (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (data.dwReserved0 == IO_REPARSE_TAG_SYMLINK || data.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

// Locks of office programs, and marks of the web.
bool IsLeftOut(const WIN32_FIND_DATAW& data) {
    return (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
           (IsOfficeLock(data.cFileName) || IsWebMark(data.cFileName));
}

class Scanner {
public:
    explicit Scanner(const std::vector<std::wstring>& except) {
        for (const std::wstring& path : except) {
            m_except.push_back(common::LongPath(path));
        }
    }

    std::vector<FolderItem> Scan(const std::wstring& folder) {
        m_folders.push_back({.item = {}, .path = folder, .isFolder = true});
        bool isRoot = true;
        while (!m_folders.empty()) {
            const FolderItem next = std::move(m_folders.back());
            m_folders.pop_back();
            const bool isEmpty = ScanOne(next);
            if (isEmpty && !isRoot) {
                m_items.push_back(next);
            }
            isRoot = false;
        }
        return std::move(m_items);
    }

private:
    // True when there is nothing to pack in the folder.
    bool ScanOne(const FolderItem& folder) {
        bool isEmpty = true;
        for (FolderSearch found(folder.path); found; found.Next()) {
            const WIN32_FIND_DATAW& data = *found;
            if (!IsLeftOut(data)) {
                isEmpty = false;
                Take(folder, data);
            }
        }
        return isEmpty;
    }

    void Take(const FolderItem& folder, const WIN32_FIND_DATAW& data) {
        FolderItem found;
        found.path = JoinPath(folder.path, data.cFileName);
        found.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        found.size = static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
        if (IsExcepted(common::LongPath(found.path)) || IsLeftover(found)) {
            return;
        }
        if (IsLink(data)) {
            Refuse(found.path, L"it is a link");
        }
        const std::string name = common::ToUtf8Strict(data.cFileName);
        if (name.empty()) {
            Refuse(found.path, L"its name is not valid Unicode");
        }
        found.item.name = folder.item.name.empty() ? name : folder.item.name + "/" + name;
        if (const std::string_view fault = EntryNameFault(found.item.name); !fault.empty()) {
            Refuse(found.path, common::FromUtf8(fault));
        }
        constexpr DWORD kKept = kAttributeReadOnly | kAttributeHidden | kAttributeSystem | kAttributeArchive;
        found.item.attributes = static_cast<std::uint8_t>(data.dwFileAttributes & kKept);
        found.item.modified = ToZipTime(data.ftLastWriteTime);
        (found.isFolder ? m_folders : m_items).push_back(std::move(found));
    }

    // A temporary file that a crash left beside the file that it was to replace.
    static bool IsLeftover(const FolderItem& found) {
        const std::size_t stem = found.path.size() - std::min(found.path.size(), kTemporarySuffix.size());
        const std::wstring suffix(kTemporarySuffix.begin(), kTemporarySuffix.end());
        return !found.isFolder && common::IsSamePath(found.path.substr(stem), suffix) &&
               GetFileAttributesW(common::LongPath(found.path.substr(0, stem)).c_str()) !=
                   INVALID_FILE_ATTRIBUTES;
    }

    bool IsExcepted(const std::wstring& path) const {
        return std::ranges::any_of(
            m_except, [&path](const std::wstring& other) { return common::IsSamePath(path, other); });
    }

    [[noreturn]] static void Refuse(const std::wstring& path, const std::wstring& reason) {
        throw FileFailure(L"cannot pack \"" + path + L"\": " + reason);
    }

    std::vector<std::wstring> m_except;
    std::vector<FolderItem> m_folders; // still to be scanned
    std::vector<FolderItem> m_items;
};

// Information files come first in a package.
std::ptrdiff_t Rank(std::string_view folded) {
    return std::ranges::find(common::kInformationEntries, folded) - std::begin(common::kInformationEntries);
}

} // namespace

std::vector<FolderItem> SortedItems(std::vector<FolderItem> items) {
    struct Keyed {
        std::ptrdiff_t rank;
        std::string folded;
        std::size_t index;
    };
    std::vector<Keyed> order;
    order.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        std::string folded = FoldCase(items[i].item.name);
        order.push_back({Rank(folded), std::move(folded), i});
    }
    std::ranges::sort(order, [&items](const Keyed& a, const Keyed& b) {
        return std::tie(a.rank, a.folded, items[a.index].item.name) <
               std::tie(b.rank, b.folded, items[b.index].item.name);
    });
    std::vector<FolderItem> sorted;
    sorted.reserve(items.size());
    for (const Keyed& key : order) {
        sorted.push_back(std::move(items[key.index]));
        sorted.back().item.rank = sorted.size();
    }
    return sorted;
}

std::vector<FolderItem> ScanFolder(const std::wstring& folder, const std::vector<std::wstring>& except) {
    const DWORD attributes = GetFileAttributesW(common::LongPath(folder).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        ThrowFileFailure(L"cannot open folder", folder, GetLastError());
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        throw FileFailure(L"cannot open folder \"" + folder + L"\": it is a file");
    }
    return SortedItems(Scanner(except).Scan(FolderPath(folder)));
}

} // namespace mxovshare
