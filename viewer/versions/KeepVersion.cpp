#include "versions/KeepVersion.h"

#include "common/SystemError.h"
#include "package/PackageInformation.h"
#include "package/Paths.h"
#include "texts/Texts.h"
#include "versions/StoredFiles.h"
#include "versions/StoreResult.h"
#include "versions/VersionFolder.h"

#include <algorithm>

namespace viewer {

namespace {

using mxovshare::PackageEntry;
using mxovshare::PackageResult;

// The files that earlier versions have.
class KnownFiles {
public:
    explicit KnownFiles(const std::vector<Version>& versions) {
        for (const Version& version : versions) {
            for (const KeptFile& file : version.files) {
                m_files.emplace(file.name, &file);
            }
        }
    }

    // Null when none has it with this content.
    [[nodiscard]] const KeptFile* Find(const PackageEntry& entry) const {
        const auto [first, last] = m_files.equal_range(entry.name);
        const auto found = std::find_if(first, last, [&entry](const auto& known) {
            return known.second->size == entry.size && known.second->crc32 == entry.crc32;
        });
        return found == last ? nullptr : found->second;
    }

private:
    std::multimap<std::wstring_view, const KeptFile*, care::NameLess> m_files;
};

// A package file as it is now, and what of it has to be stored.
struct State {
    Version version;
    mxovshare::PackageChanges changes; // that leave its new files
    std::vector<KeptFile> added;       // those
    std::uint64_t addedSize = 0;       // bytes that they take in the package
};

std::wstring NewId(const std::vector<std::wstring>& ids) {
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    std::wstring id = VersionId(now);
    if (!ids.empty() && id <= ids.back()) { // the clock was set back
        FILETIME next = TimeOfId(ids.back());
        next.dwHighDateTime += ++next.dwLowDateTime == 0 ? 1 : 0;
        id = VersionId(next);
    }
    return id;
}

void DescribeLastEntry(const mxovshare::Information& information, Version& version) {
    namespace inikey = docview::inikey;
    const std::vector<std::wstring> entries = information.SectionNames(inikey::kHistoryPrefix);
    if (!entries.empty()) {
        version.by = information.Value(entries.back(), inikey::kBy);
        version.operation = information.Value(entries.back(), inikey::kOperation);
        version.remarks = information.Value(entries.back(), inikey::kRemarks);
    }
}

void AddFile(const PackageEntry& entry, const KeptFile* known, State& state) {
    const KeptFile& file = state.version.files.emplace_back(
        KeptFile{entry.name, entry.size, entry.crc32, known ? known->contents : state.version.id});
    if (known) {
        state.changes.removed.push_back(entry.name);
    } else {
        state.added.push_back(file);
        state.addedSize += entry.packedSize;
    }
}

PackageResult ReadState(const std::wstring& packageFile, const KnownFiles& known, State& state) {
    state.version.package = packageFile;
    state.version.saved = LastWriteOf(packageFile);
    std::vector<PackageEntry> entries;
    mxovshare::Information information;
    PackageResult result = mxovshare::ReadContent(packageFile, entries, information);
    for (const PackageEntry& entry : entries) {
        if (!entry.isFolder) {
            AddFile(entry, known.Find(entry), state);
        }
    }
    DescribeLastEntry(information, state.version);
    return result;
}

bool HaveSameFiles(const std::vector<KeptFile>& left, const std::vector<KeptFile>& right) {
    return std::ranges::equal(left, right, [](const KeptFile& one, const KeptFile& other) {
        return one.name == other.name && one.size == other.size && one.crc32 == other.crc32;
    });
}

// Copies the new files as they are packed.
PackageResult StoreFiles(const std::wstring& contents, const State& state,
                         mxovshare::PackageProgress* progress) {
    const std::wstring& package = state.version.package;
    PackageResult result = mxovshare::ChangePackage(package, contents, state.changes, progress);
    if (result.ok) {
        result = mxovshare::CopyWebMark(package, contents);
    }
    StoredFiles stored;
    if (result.ok) {
        result = stored.Read(contents);
    }
    const bool isComplete =
        std::ranges::all_of(state.added, [&stored](const KeptFile& file) { return stored.Holds(file); });
    return result.ok && !isComplete ? FailedBecause(Text(IDS_VERSION_REPLACED)) : result;
}

PackageResult Store(const std::wstring& folder, const State& state, std::uint64_t most,
                    mxovshare::PackageProgress* progress) {
    if (state.addedSize > most) {
        return FailedBecause(Text(IDS_VERSION_TOO_LARGE));
    }
    DWORD error = MakeFolders(folder) ? ERROR_SUCCESS : GetLastError();
    if (!error && !state.added.empty()) {
        PackageResult stored = StoreFiles(ContentsPath(folder, state.version.id), state, progress);
        if (!stored.ok) {
            return stored;
        }
    }
    if (!error) {
        error = WriteVersion(folder, state.version);
    }
    return error ? FailedBecause(Text(IDS_STORE_UNUSABLE, {folder, common::SystemErrorText(error)}))
                 : Succeeded();
}

PackageResult KeepNow(const std::wstring& folder, const std::wstring& packageFile, std::uint64_t most,
                      mxovshare::PackageProgress* progress) {
    const VersionList list = ReadVersions(folder);
    State state;
    state.version.id = NewId(VersionIds(folder));
    if (PackageResult result = ReadState(packageFile, KnownFiles(list.versions), state); !result.ok) {
        return result;
    }
    const bool isKept =
        !list.versions.empty() && HaveSameFiles(list.versions.back().files, state.version.files);
    return isKept ? Succeeded() : Store(folder, state, most, progress);
}

} // namespace

PackageResult KeepVersion(const std::wstring& folder, const std::wstring& packageFile, std::uint64_t most,
                          mxovshare::PackageProgress* progress) {
    constexpr int kAttempts = 3; // another save may replace the package meanwhile
    for (int attempt = 1;; ++attempt) {
        const std::wstring stamp = mxovshare::StampOfPackageFile(packageFile);
        PackageResult result = KeepNow(folder, packageFile, most, progress);
        if (result.ok || result.cancelled || attempt == kAttempts ||
            mxovshare::StampOfPackageFile(packageFile) == stamp) {
            return result;
        }
    }
}

} // namespace viewer
