#include "care/Bundle.h"

#include "care/CopyNames.h"
#include "care/Documents.h"
#include "care/Links.h"
#include "common/LongPath.h"
#include "common/Paths.h"

#include <package/FileStatus.h>
#include <package/ItemText.h>
#include <package/PackageInformation.h>
#include <package/PackagePath.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

class BundlePlan {
public:
    BundlePlan(const Sections& sections, const std::vector<mxovshare::PackageEntry>& entries,
               bool includeNetwork)
        : m_sections(sections), m_names(sections, entries), m_includeNetwork(includeNetwork) {}

    Bundle Make() {
        const std::vector<Link> links = LinksOf(m_sections);
        const auto part = std::ranges::find(links, inikey::kCadPath, &Link::key);
        for (const Link& link : links) {
            if (link.key == inikey::kFilePath) {
                Take(link, link.section);
            }
        }
        if (part != links.end() && !IsSeen(part->path)) {
            Take(*part, NextSection(m_sections, inikey::kAdditionalPrefix));
        }
        return std::move(m_bundle);
    }

private:
    bool IsSeen(const std::wstring& path) const {
        const auto hasPath = [&path](const auto& document) {
            return common::IsSamePath(document.path, path);
        };
        return std::ranges::any_of(m_bundle.taken, hasPath) || std::ranges::any_of(m_bundle.left, hasPath);
    }

    void Take(const Link& link, const std::wstring& section) {
        const FileStatus status = StatusOf(link.path);
        if (!status.exists) {
            return;
        }
        const std::wstring name = m_names.Take(LastName(link.path));
        m_bundle.changes.added.push_back({name, link.path});
        const Document copy = {.section = section,
                               .isCopy = true,
                               .description = link.description,
                               .timestamp = FormatFileTime(status.lastWrite),
                               .path = name};
        for (mxovshare::InformationChange& change : KeysOf(copy)) {
            m_bundle.changes.information.push_back(std::move(change));
        }
        m_bundle.taken.push_back({link.path, name});
    }

    // That of a file to be taken along; otherwise notes that it is left.
    FileStatus StatusOf(const std::wstring& path) {
        if (!IsFullPath(path)) {
            return Leave(path, L"is not a full path");
        }
        if (IsNetworkPath(path) && !m_includeNetwork) {
            return Leave(path, L"leads to another computer");
        }
        const FileStatus status = docview::StatusOfFile(common::LongPath(path));
        if (!status.exists) {
            return Leave(path, L"does not exist");
        }
        return status.isFolder ? Leave(path, L"is a folder") : status;
    }

    FileStatus Leave(const std::wstring& path, const std::wstring& reason) {
        m_bundle.left.push_back({path, reason});
        return {};
    }

    const Sections& m_sections;
    CopyNames m_names;
    bool m_includeNetwork;
    Bundle m_bundle;
};

} // namespace

Bundle PlanBundle(const Sections& sections, const std::vector<mxovshare::PackageEntry>& entries,
                  bool includeNetwork) {
    return BundlePlan(sections, entries, includeNetwork).Make();
}

} // namespace care
