#include "pack/FolderScan.h"

#include "common/InformationFile.h"
#include "common/LongPath.h"
#include "common/Paths.h"
#include "common/Utf8.h"
#include "files/FileFailure.h"
#include "files/FileSystem.h"
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

namespace mxovshare {

namespace {

// Locks of office programs, and marks of the web.
bool IsLeftOut(const FolderEntry& entry) {
    return !entry.isFolder && (IsOfficeLock(entry.name) || IsWebMark(entry.name));
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
            if (!IsLeftOut(*found)) {
                isEmpty = false;
                Take(folder, *found);
            }
        }
        return isEmpty;
    }

    void Take(const FolderItem& folder, const FolderEntry& entry) {
        FolderItem found;
        found.path = JoinPath(folder.path, entry.name);
        found.isFolder = entry.isFolder;
        found.size = entry.size;
        if (IsExcepted(common::LongPath(found.path)) || IsLeftover(found)) {
            return;
        }
        if (entry.isLink) {
            Refuse(found.path, L"it is a link");
        }
        const std::string name = common::ToUtf8Strict(entry.name);
        if (name.empty()) {
            Refuse(found.path, L"its name is not valid Unicode");
        }
        found.item.name = folder.item.name.empty() ? name : folder.item.name + "/" + name;
        if (const std::string_view fault = EntryNameFault(found.item.name); !fault.empty()) {
            Refuse(found.path, common::FromUtf8(fault));
        }
        constexpr unsigned kKept =
            kAttributeReadOnly | kAttributeHidden | kAttributeSystem | kAttributeArchive;
        found.item.attributes = static_cast<std::uint8_t>(entry.attributes & kKept);
        found.item.modified = ToZipTime(entry.written);
        (found.isFolder ? m_folders : m_items).push_back(std::move(found));
    }

    // A temporary file that a crash left beside the file that it was to replace.
    static bool IsLeftover(const FolderItem& found) {
        const std::size_t stem = found.path.size() - std::min(found.path.size(), kTemporarySuffix.size());
        const std::wstring suffix(kTemporarySuffix.begin(), kTemporarySuffix.end());
        return !found.isFolder && common::IsSamePath(found.path.substr(stem), suffix) &&
               StatusOfPath(found.path.substr(0, stem)).exists;
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
    const PathStatus status = StatusOfPath(folder);
    if (!status.exists) {
        ThrowFileFailure(L"cannot open folder", folder, status.error);
    }
    if (!status.isFolder) {
        throw FileFailure(L"cannot open folder \"" + folder + L"\": it is a file");
    }
    return SortedItems(Scanner(except).Scan(FolderPath(folder)));
}

} // namespace mxovshare
