#include "mxovchange.h"

#include "common/Clock.h"
#include "common/Utf8.h"
#include "files/FileFailure.h"
#include "files/FileSystem.h"
#include "ini/IniInformation.h"
#include "pack/FileTimes.h"
#include "pack/NewPackage.h"
#include "pack/TemporaryFile.h"
#include "package/HistoryEntry.h"
#include "package/PackageErrors.h"
#include "package/PackageStamp.h"
#include "package/PackedFiles.h"
#include "text/CaseFold.h"
#include "text/SystemText.h"
#include "zip/EntryName.h"
#include "zip/EntryReader.h"
#include "zip/PackageError.h"
#include "zip/ZipDirectory.h"
#include "zip/ZipWriter.h"

#include <deque>
#include <map>

namespace mxovshare {

namespace {

constexpr char kInformationName[] = "mxinfo.ini";
// Of an information file that did not exist before: UTF-16LE, which every reader understands.
constexpr char kUtf16Mark[] = "\xFF\xFE";

FolderItem ItemOf(const AddedFile& added) {
    FolderItem item;
    item.item.name = EntryName(added.name);
    if (const std::string_view fault = EntryNameFault(item.item.name); !fault.empty()) {
        throw EntryError(item.item.name, fault);
    }
    const PathStatus status = StatusOfPath(added.path);
    if (!status.exists) {
        ThrowFileFailure(L"cannot open", added.path, status.error);
    }
    if (status.isFolder) {
        throw FileFailure(L"cannot pack \"" + added.path + L"\": it is a folder");
    }
    item.path = added.path;
    item.size = status.size;
    item.item.modified = ToZipTime(status.written);
    return item;
}

void Apply(const InformationChange& change, IniDocument& document) {
    const std::u16string section = ToUtf16(change.section);
    if (change.key.empty()) {
        document.RemoveSection(section);
        return;
    }
    const std::u16string value = ToUtf16(change.value);
    document.SetValue(section, ToUtf16(change.key), value);
    if (document.Value(section, ToUtf16(change.key)) != value) {
        throw PackageError("the information file cannot hold the value of " +
                           QuoteName(common::ToUtf8(change.section + L"/" + change.key)));
    }
}

// The files and folders of the new package by their folded names.
class NewContent {
public:
    explicit NewContent(const ByteSource& source) : m_source(source), m_entries(ReadZipDirectory(source)) {
        for (const ZipEntry& entry : m_entries) {
            m_content.insert_or_assign(FoldCase(entry.name), Keep(entry));
        }
    }

    void Change(const PackageChanges& changes) {
        for (const std::wstring& name : changes.removed) {
            Remove(name);
        }
        for (const AddedFile& added : changes.added) {
            Add({.item = ItemOf(added)});
        }
        if (!changes.information.empty() || !changes.operation.empty()) {
            ChangeInformation(changes);
        }
    }

    void PackInto(NewPackage& package, PackageProgress* progress) const {
        std::vector<FolderItem> items;
        for (const auto& [folded, kept] : m_content) {
            items.push_back(kept.item);
        }
        items = SortedItems(std::move(items));
        std::vector<const ZipEntry*> reuse;
        reuse.reserve(items.size());
        for (const FolderItem& item : items) {
            reuse.push_back(m_content.at(FoldCase(item.item.name)).entry);
        }
        package.Pack(items, m_source, reuse, progress);
    }

private:
    struct Content {
        FolderItem item;
        const ZipEntry* entry = nullptr; // whose packed data is copied
    };

    Content Keep(const ZipEntry& entry) {
        Content kept;
        kept.item.item = entry;
        kept.item.item.modified = ToZipTime(ToFileTime(entry.modified));
        kept.item.size = entry.size;
        kept.item.isFolder = entry.isFolder;
        if (ZipWriter::CanCopyPacked(entry)) {
            kept.entry = &entry;
        } else if (!entry.isFolder) {
            UseTemporaryFile(kept.item, [this, &entry](TemporaryFile& file) {
                ReadEntry(m_source, entry, [&file](Bytes piece) { file.Append(piece); });
            });
        }
        return kept;
    }

    template <typename Write>
    void UseTemporaryFile(FolderItem& item, Write write) {
        TemporaryFile& file = m_temporary.emplace_back();
        write(file);
        item.path = file.Path();
        item.size = file.Size();
        item.isExclusive = true;
    }

    void Remove(const std::wstring& name) {
        if (m_content.erase(FoldCase(EntryName(name))) == 0) {
            throw EntryError(EntryName(name), "the package does not contain it");
        }
    }

    // Entries of the folders above it, which were empty, are dropped.
    void Add(Content content) {
        const std::string folded = FoldCase(content.item.item.name);
        for (std::size_t end = folded.find('/'); end != std::string::npos; end = folded.find('/', end + 1)) {
            const auto folder = m_content.find(folded.substr(0, end));
            if (folder != m_content.end() && folder->second.item.isFolder) {
                m_content.erase(folder);
            }
        }
        m_content.insert_or_assign(folded, std::move(content));
    }

    void ChangeInformation(const PackageChanges& changes) {
        const ZipEntry* old = FindInformation(m_entries);
        const SystemText text;
        IniDocument document(text, old != nullptr ? ReadInformationFile(m_source, *old) : kUtf16Mark,
                             kMostInformation);
        if (!document.IsComplete()) {
            throw InformationTooLong();
        }
        for (const InformationChange& change : changes.information) {
            Apply(change, document);
        }
        if (!changes.operation.empty()) {
            AddHistoryEntry(document, NewHistoryEntry(changes.operation, changes.remarks));
        }
        Content changed;
        changed.item.item.name = old != nullptr ? old->name : kInformationName;
        changed.item.item.modified = ToZipTime(common::SystemTime());
        changed.item.item.attributes = old != nullptr ? old->attributes : std::uint8_t{0};
        UseTemporaryFile(changed.item, [&document](TemporaryFile& file) {
            const std::string& bytes = document.Bytes();
            file.Append({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        });
        Add(std::move(changed));
    }

    const ByteSource& m_source;
    std::vector<ZipEntry> m_entries;
    std::map<std::string, Content> m_content;
    std::deque<TemporaryFile> m_temporary;
};

// Closes the old package on return, so that it can be replaced.
void PackChanged(NewPackage& package, const std::wstring& file, const PackageChanges& changes,
                 PackageProgress* progress) {
    const DiskSource source(file);
    NewContent content(source);
    content.Change(changes);
    content.PackInto(package, progress);
}

void Change(const std::wstring& file, const std::wstring& target, const PackageChanges& changes,
            PackageProgress* progress) {
    const std::wstring stamp = StampOfPackage(file);
    const bool isSameFile = StampOfPackage(target) == stamp;
    NewPackage package(target);
    PackChanged(package, file, changes, progress);
    package.KeepProperties(progress);
    package.Commit([&] {
        if (isSameFile && StampOfPackage(file) != stamp) {
            throw FileFailure(L"cannot replace \"" + file + L"\": another program changed it meanwhile");
        }
    });
}

} // namespace

PackageResult ChangePackage(const std::wstring& file, const std::wstring& target,
                            const PackageChanges& changes, PackageProgress* progress) noexcept {
    return RunForResult(file, [&] { Change(file, target, changes, progress); });
}

} // namespace mxovshare
