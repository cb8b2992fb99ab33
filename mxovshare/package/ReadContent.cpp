#include "mxovchange.h"

#include "common/InformationFile.h"
#include "files/DiskFile.h"
#include "files/FileFailure.h"
#include "files/FileSystem.h"
#include "files/FolderPath.h"
#include "pack/FolderScan.h"
#include "pack/ProgressMeter.h"
#include "package/PackageErrors.h"
#include "package/PackedFiles.h"
#include "text/CaseFold.h"
#include "zip/Checksum.h"
#include "zip/EntryReader.h"
#include "zip/PackageError.h"
#include "zip/ZipDirectory.h"

#include <map>

namespace mxovshare {

namespace {

std::string ReadFileUpTo(const std::wstring& path, std::uint64_t limit) {
    const DiskSource source(path);
    if (source.Size() > limit) {
        throw FileFailure(L"cannot read \"" + path + L"\": it is longer than " +
                          std::to_wstring(limit / 1024) + L" KB");
    }
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(source.Size()));
    ReadPieces(source, 0, source.Size(), [&bytes](Bytes piece) { bytes.append(piece.begin(), piece.end()); });
    return bytes;
}

PackageEntry DescribeItem(const FolderItem& item, ProgressMeter& meter) {
    ZipEntry entry;
    static_cast<ZipItem&>(entry) = item.item;
    entry.isFolder = item.isFolder;
    if (!item.isFolder) {
        const DiskSource source(item.path);
        entry.size = source.Size();
        ReadPieces(source, 0, source.Size(), [&](Bytes piece) {
            entry.crc32 = Checksum(entry.crc32, piece);
            meter.Advance(piece.size());
        });
    }
    return Describe(entry);
}

Information InformationOfFolder(const std::wstring& folder) {
    for (const wchar_t* name : {common::kInformationFile, common::kPrivateInformationFile}) {
        const std::wstring path = JoinPath(folder, name);
        if (StatusOfPath(path).exists) {
            return ParseInformation(ReadFileUpTo(path, kLargestInformation));
        }
    }
    return {};
}

void ReadFolder(const std::wstring& folder, std::vector<PackageEntry>& entries, Information& information,
                PackageProgress* progress) {
    const std::vector<FolderItem> items = ScanFolder(folder, {});
    std::uint64_t total = 0;
    for (const FolderItem& item : items) {
        total += item.size;
    }
    ProgressMeter meter(progress, total);
    for (const FolderItem& item : items) {
        meter.Begin(item.path);
        entries.push_back(DescribeItem(item, meter));
    }
    information = InformationOfFolder(folder);
}

Information InformationOf(const ByteSource& source, const std::vector<ZipEntry>& directory) {
    const ZipEntry* entry = FindInformation(directory);
    return entry != nullptr ? ParseInformation(ReadInformationFile(source, *entry)) : Information();
}

void ReadPackageFile(const std::wstring& file, std::vector<PackageEntry>& entries, Information& information) {
    const DiskSource source(file);
    const std::vector<ZipEntry> directory = ReadZipDirectory(source);
    for (const ZipEntry& entry : directory) {
        entries.push_back(Describe(entry));
    }
    information = InformationOf(source, directory);
}

class PackageFiles {
public:
    explicit PackageFiles(const std::wstring& file) : m_source(file), m_entries(ReadZipDirectory(m_source)) {
        for (const ZipEntry& entry : m_entries) {
            if (!entry.isFolder) {
                m_byName.emplace(FoldCase(entry.name), &entry);
            }
        }
    }

    std::string Read(const std::wstring& name, std::uint64_t limit) const {
        const std::string entryName = EntryName(name);
        const auto found = m_byName.find(FoldCase(entryName));
        if (found == m_byName.end()) {
            throw EntryError(entryName, "the package does not contain it");
        }
        return ReadWholeEntry(m_source, *found->second, limit);
    }

private:
    DiskSource m_source;
    std::vector<ZipEntry> m_entries;
    std::map<std::string, const ZipEntry*> m_byName; // names could be chosen to collide in a hash table
};

} // namespace

PackageResult ReadInformation(const std::wstring& path, Information& information) noexcept {
    return RunForResult(path, [&] {
        information = {};
        if (IsFolder(path)) {
            information = InformationOfFolder(path);
        } else {
            const DiskSource source(path);
            information = InformationOf(source, ReadZipDirectory(source));
        }
    });
}

PackageResult ReadContent(const std::wstring& path, std::vector<PackageEntry>& entries,
                          Information& information, PackageProgress* progress) noexcept {
    return RunForResult(path, [&] {
        entries.clear();
        information = {};
        if (IsFolder(path)) {
            ReadFolder(path, entries, information, progress);
        } else {
            ReadPackageFile(path, entries, information);
        }
    });
}

PackageResult
ReadContentFiles(const std::wstring& path, const std::vector<std::wstring>& names, std::uint64_t limit,
                 const std::function<void(const std::wstring& name, std::string bytes)>& take) noexcept {
    return RunForResult(path, [&] {
        if (IsFolder(path)) {
            for (const std::wstring& name : names) {
                take(name, ReadFileUpTo(JoinPath(path, name), limit));
            }
            return;
        }
        const PackageFiles files(path);
        for (const std::wstring& name : names) {
            take(name, files.Read(name, limit));
        }
    });
}

} // namespace mxovshare
