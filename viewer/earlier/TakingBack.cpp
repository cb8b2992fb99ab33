#include "earlier/TakingBack.h"

#include "common/InformationFile.h"
#include "common/Paths.h"
#include "package/PackageInformation.h"

#include <care/Documents.h>

#include <algorithm>
#include <map>
#include <set>

namespace viewer {

namespace {

namespace inikey = docview::inikey;

// Sets the history that is open now in place of that of the version.
void KeepHistory(const care::Sections& then, const care::Sections& now,
                 std::vector<mxovshare::InformationChange>& changes) {
    for (const std::wstring& name : then.SectionNames(inikey::kHistoryPrefix)) {
        if (!now.Find(name)) {
            changes.push_back({name, {}, {}});
        }
    }
    for (const std::wstring& name : now.SectionNames(inikey::kHistoryPrefix)) {
        const std::optional<care::Section> entry = now.Find(name);
        const std::optional<care::Section> before = then.Find(name);
        if (before && before->values == entry->values) {
            continue;
        }
        for (const auto& [key, value] : entry->values) {
            changes.push_back({name, key, value});
        }
    }
}

std::optional<care::Section> CopyAt(const care::Sections& sections, const std::wstring& path) {
    for (care::Section section : sections) {
        if (care::IsAdditional(section) && care::IsCopy(section) &&
            common::IsSamePath(care::ValueOf(section, inikey::kFilePath), path)) {
            return section;
        }
    }
    return std::nullopt;
}

} // namespace

mxovshare::PackageChanges TakeAllBack(const RestoredVersion& restored, const care::PackageContent& open) {
    std::map<std::wstring, const mxovshare::PackageEntry*, care::NameLess> files;
    for (const mxovshare::PackageEntry& entry : open.entries) {
        if (!entry.isFolder) {
            files.emplace(entry.name, &entry);
        }
    }
    mxovshare::PackageChanges changes;
    for (const KeptFile& file : restored.version.files) {
        const auto found = files.find(file.name);
        if (found == files.end() || found->second->size != file.size || found->second->crc32 != file.crc32) {
            changes.added.push_back({file.name, restored.folder + L"\\" + file.name});
        }
        if (found != files.end()) {
            files.erase(found);
        }
    }
    for (const auto& [name, entry] : files) {
        changes.removed.push_back(name);
    }
    KeepHistory(restored.sections, open.sections, changes.information);
    return changes;
}

mxovshare::PackageChanges TakeFileBack(const RestoredVersion& restored, const std::wstring& name,
                                       const care::PackageContent& open) {
    mxovshare::PackageChanges changes;
    changes.added = {{name, restored.folder + L"\\" + name}};
    const std::optional<care::Section> listed = CopyAt(restored.sections, name);
    if (listed && !CopyAt(open.sections, name)) {
        changes.information =
            care::KeysOf({.section = care::NextSection(open.sections, inikey::kAdditionalPrefix),
                          .isCopy = true,
                          .description = care::ValueOf(*listed, inikey::kDescription),
                          .timestamp = care::ValueOf(*listed, inikey::kTimestamp),
                          .path = care::ValueOf(*listed, inikey::kFilePath)});
    }
    return changes;
}

std::wstring InformationNameOf(const Version& version) {
    for (const wchar_t* name : {common::kInformationFile, common::kPrivateInformationFile}) {
        const auto found = std::ranges::find_if(
            version.files, [name](const KeptFile& file) { return common::IsSamePath(file.name, name); });
        if (found != version.files.end()) {
            return found->name;
        }
    }
    return {};
}

} // namespace viewer
