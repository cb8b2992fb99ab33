#include "mxovpackage.h"

#include "common/InformationFile.h"
#include "files/DiskFile.h"
#include "ini/IniInformation.h"
#include "pack/FileTimes.h"
#include "pack/NewPackage.h"
#include "pack/PackageContent.h"
#include "pack/Unpack.h"
#include "package/PackageErrors.h"
#include "package/UnpackedFolders.h"
#include "text/CaseFold.h"
#include "zip/EntryReader.h"

#include <algorithm>

namespace mxovshare {

namespace {

// Larger than any information file, and small enough to be read at once.
constexpr std::uint64_t kLargestInformation = std::uint64_t{64} << 20;

PackageEntry Describe(const ZipEntry& entry) {
    PackageEntry description;
    description.name = RelativePath(entry);
    description.size = entry.size;
    description.packedSize = entry.packedSize;
    description.crc32 = entry.crc32;
    description.modified = ToFileTime(entry.modified);
    description.isFolder = entry.isFolder;
    return description;
}

// Whether a name is `folded` but for case, which is plain ASCII. No character takes more than four bytes.
bool IsSameFolded(std::string_view name, std::string_view folded) {
    return name.size() <= 4 * folded.size() && FoldCase(name) == folded;
}

const ZipEntry* FindFile(const std::vector<ZipEntry>& entries, std::string_view folded) {
    const auto found = std::ranges::find_if(entries, [folded](const ZipEntry& entry) {
        return !entry.isFolder && IsSameFolded(entry.name, folded);
    });
    return found != entries.end() ? &*found : nullptr;
}

const ZipEntry* FindInformationEntry(const std::vector<ZipEntry>& entries) {
    for (const std::string_view name : common::kInformationEntries) {
        if (const ZipEntry* entry = FindFile(entries, name)) {
            return entry;
        }
    }
    return nullptr;
}

} // namespace

PackageResult CreatePackage(const std::wstring& folder, const std::wstring& file,
                            PackageProgress* progress) noexcept {
    return RunForResult(file, [&] {
        NewPackage package(file);
        package.Pack(folder, progress);
        package.KeepProperties();
        package.Commit();
    });
}

PackageResult ListPackage(const std::wstring& file, std::vector<PackageEntry>& entries) noexcept {
    return RunForResult(file, [&] {
        entries.clear();
        for (const ZipEntry& entry : ReadZipDirectory(DiskSource(file))) {
            entries.push_back(Describe(entry));
        }
    });
}

PackageResult UnpackPackage(const std::wstring& file, const std::wstring& folder,
                            PackageProgress* progress) noexcept {
    return RunForResult(file, [&] {
        const std::wstring stamp = StampOfPackage(file);
        UnpackInto(file, folder, progress, [&] { RecordFolder(folder, file, stamp); });
    });
}

PackageResult VerifyPackage(const std::wstring& file, PackageProgress* progress) noexcept {
    return RunForResult(file, [&] {
        const DiskSource source(file);
        const std::vector<ZipEntry> entries = ReadZipDirectory(source);
        ProgressMeter meter(progress, TotalSize(entries));
        CheckEntries(source, entries, meter);
    });
}

PackageResult ReadInformation(const std::wstring& file, std::vector<InformationSection>& sections) noexcept {
    return RunForResult(file, [&] {
        sections.clear();
        const DiskSource source(file);
        const std::vector<ZipEntry> entries = ReadZipDirectory(source);
        const ZipEntry* entry = FindInformationEntry(entries);
        if (entry == nullptr) {
            return;
        }
        const std::vector<std::uint8_t> content = ReadWholeEntry(source, *entry, kLargestInformation);
        sections = ParseInformation(std::string(content.begin(), content.end()));
    });
}

} // namespace mxovshare
