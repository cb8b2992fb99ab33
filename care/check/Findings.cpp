#include "care/check/Findings.h"

#include "care/check/FaultSearch.h"
#include "care/check/FindingForms.h"
#include "common/InformationFile.h"

#include <package/PackageInformation.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

constexpr auto kNameOf = [](const mxovshare::PackageEntry* entry) -> std::wstring_view {
    return entry->name;
};

// Which entries of a package are a document, or serve it otherwise.
class ShownEntries {
public:
    explicit ShownEntries(const std::vector<mxovshare::PackageEntry>& entries)
        : m_entries(entries), m_byName(entries.size()), m_isShown(entries.size()) {
        std::ranges::transform(entries, m_byName.begin(), [](const auto& entry) { return &entry; });
        std::ranges::sort(m_byName, NameLess(), kNameOf);
    }

    void Show(std::wstring_view name) {
        auto entry = std::ranges::lower_bound(m_byName, name, NameLess(), kNameOf);
        for (; entry != m_byName.end() && CompareNames((*entry)->name, name) == 0; ++entry) {
            m_isShown[static_cast<std::size_t>(*entry - m_entries.data())] = true;
        }
    }

    void FindOthers(const FindingSink& take) const {
        for (std::size_t number = 0; number < m_entries.size(); ++number) {
            const mxovshare::PackageEntry& entry = m_entries[number];
            if (!entry.isFolder && !m_isShown[number]) {
                take(MakeFinding(FindingText::NotShown, {}, entry.name, {entry.name}));
            }
        }
    }

private:
    const std::vector<mxovshare::PackageEntry>& m_entries;
    std::vector<const mxovshare::PackageEntry*> m_byName;
    std::vector<bool> m_isShown; // by number
};

void CheckVersion(const CheckedPackage& package, const FindingSink& take) {
    const std::wstring version = package.source.Value(inikey::kFileInfo, inikey::kVersion);
    if (!package.sections.empty() && !IsRecentVersion(version)) {
        take(MakeFinding(FindingText::OldVersion, {inikey::kFileInfo, inikey::kVersion}, {}, {version}));
    }
}

} // namespace

void FindFaults(const CheckedPackage& package, const FILETIME& now, const FindingSink& take) {
    CatalogueLoader documents(package.source, package.folder);
    ShownEntries shown(package.entries);
    FindMissing(
        package, documents, [&shown](std::wstring_view name) { shown.Show(name); }, take);
    if (package.sections.empty()) {
        take(MakeFinding(FindingText::NoInformation, {}, {}, {}));
    }
    FindDoubtfulLinks(package, documents, take);
    shown.Show(common::kInformationFile);
    shown.Show(common::kPrivateInformationFile);
    shown.Show(package.source.Value(inikey::kFileInfo, inikey::kThumbnail));
    shown.FindOthers(take);
    FindShared(package, take);
    CheckHistory(package, take);
    CheckDates(package, now, take);
    CheckVersion(package, take);
    FindErrors(package, take);
}

} // namespace care
