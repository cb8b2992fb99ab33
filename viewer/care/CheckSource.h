// Where the check of an unpacked package looks its documents up.
#pragma once

#include "package/DiskCatalogueSource.h"
#include "session/WorkProgress.h"

#include <map>
#include <set>
#include <string>

namespace viewer {

/// Thrown when the user has cancelled the check.
struct CheckCancelled {};

/// Asks for each path once, and no drive or computer again that did not answer, since each such question may
/// take as long as a time-out.
class CheckSource final : public docview::CatalogueSource {
public:
    /// The progress outlives it. Queries for a status throw CheckCancelled once it is cancelled.
    CheckSource(const std::wstring& informationFile, WorkProgress& progress)
        : m_disk(informationFile), m_progress(progress) {}

    std::wstring Value(const std::wstring& section, const std::wstring& key) const override {
        return m_disk.Value(section, key);
    }
    std::vector<std::wstring> SectionNames(const std::wstring& prefix) const override {
        return m_disk.SectionNames(prefix);
    }
    docview::FileStatus Status(const std::wstring& path) const override;
    int FileSize(const std::wstring& path) const override;
    std::vector<std::wstring> FileNames(const std::wstring& folder) const override {
        return m_disk.FileNames(folder);
    }

private:
    docview::DiskCatalogueSource m_disk;
    WorkProgress& m_progress;
    mutable std::map<std::wstring, docview::FileStatus> m_known;
    mutable std::set<std::wstring> m_silent; // drives and computers
};

} // namespace viewer
