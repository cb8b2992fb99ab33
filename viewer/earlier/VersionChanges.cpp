#include "earlier/VersionChanges.h"

#include "package/Paths.h"
#include "texts/Texts.h"

#include <algorithm>

namespace viewer {

namespace {

constexpr care::FileChangeKind kKinds[] = {care::FileChangeKind::Changed, care::FileChangeKind::Added,
                                           care::FileChangeKind::Removed, care::FileChangeKind::Renamed};

// The names of the changes of one kind.
std::wstring NamesOf(const std::vector<care::FileChange>& changes, care::FileChangeKind kind) {
    std::wstring names;
    for (const care::FileChange& change : changes) {
        if (change.kind == kind) {
            names += (names.empty() ? L"" : L", ") + FileName(change.name);
        }
    }
    return names;
}

} // namespace

care::PackageContent ContentOf(const Version& version) {
    care::PackageContent content;
    content.entries.reserve(version.files.size());
    for (const KeptFile& file : version.files) {
        mxovshare::PackageEntry& entry = content.entries.emplace_back();
        entry.name = file.name;
        entry.size = file.size;
        entry.crc32 = file.crc32;
    }
    return content;
}

std::wstring ChangesText(const Version& before, const Version& after) {
    const std::vector<care::FileChange> changes = care::CompareFiles(ContentOf(before), ContentOf(after));
    std::wstring text;
    for (const care::FileChangeKind kind : kKinds) {
        if (const std::wstring names = NamesOf(changes, kind); !names.empty()) {
            text += (text.empty() ? L"" : L"; ") + Text(IDS_CHANGES_OF_KIND, {Text(KindText(kind)), names});
        }
    }
    return text.empty() ? Text(IDS_VERSION_PROPERTIES) : text;
}

bool IsSame(const Version& version, const care::PackageContent& content) {
    std::map<std::wstring, const mxovshare::PackageEntry*, care::NameLess> files;
    for (const mxovshare::PackageEntry& entry : content.entries) {
        if (!entry.isFolder) {
            files.emplace(entry.name, &entry);
        }
    }
    return files.size() == version.files.size() &&
           std::ranges::all_of(version.files, [&files](const KeptFile& file) {
               const auto found = files.find(file.name);
               return found != files.end() && found->second->size == file.size &&
                      found->second->crc32 == file.crc32;
           });
}

unsigned KindText(care::FileChangeKind kind) {
    switch (kind) {
    case care::FileChangeKind::Added:
        return IDS_KIND_ADDED;
    case care::FileChangeKind::Removed:
        return IDS_KIND_REMOVED;
    case care::FileChangeKind::Renamed:
        return IDS_KIND_RENAMED;
    default:
        return IDS_KIND_CHANGED;
    }
}

} // namespace viewer
