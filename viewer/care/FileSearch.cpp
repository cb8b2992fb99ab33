#include "care/FileSearch.h"

#include "common/Paths.h"
#include "package/Paths.h"

namespace viewer {

namespace {

constexpr std::size_t kMostHits = 20;

class FileSearch {
public:
    FileSearch(const std::wstring& name, WorkProgress& progress) : m_name(name), m_progress(progress) {}

    // Files before the folders beside them.
    void Search(const std::wstring& folder) {
        if (!m_progress.OnProgress(folder, 0, 0)) {
            return;
        }
        for (const std::wstring& below : Look(folder)) {
            if (m_hits.size() < kMostHits && !m_progress.IsCancelled()) {
                Search(below);
            }
        }
    }

    [[nodiscard]] std::vector<std::wstring> TakeHits() { return std::move(m_hits); }

private:
    // Notes the hits in a folder and returns its folders.
    std::vector<std::wstring> Look(const std::wstring& folder) {
        std::vector<std::wstring> folders;
        for (const FolderEntry& entry : EntriesOf(folder)) {
            const std::wstring path = folder + L"\\" + entry.name;
            if (!entry.isFolder) {
                if (common::IsSamePath(entry.name, m_name) && m_hits.size() < kMostHits) {
                    m_hits.push_back(path);
                }
            } else if (!entry.isLink) {
                folders.push_back(path);
            }
        }
        return folders;
    }

    const std::wstring& m_name;
    WorkProgress& m_progress;
    std::vector<std::wstring> m_hits;
};

} // namespace

std::vector<std::wstring> FindBelow(const std::wstring& folder, const std::wstring& name,
                                    WorkProgress& progress) {
    FileSearch search(name, progress);
    search.Search(folder.substr(0, folder.find_last_not_of(L'\\') + 1));
    return search.TakeHits();
}

} // namespace viewer
