#include "care/Findings.h"

#include "care/Documents.h"
#include "care/PathList.h"
#include "common/InformationFile.h"
#include "common/Paths.h"

#include <package/CatalogueLoader.h>
#include <package/PackageInformation.h>
#include <package/PackagePath.h>

#include <algorithm>
#include <array>

using namespace docview;

namespace care {

namespace {

constexpr std::uint64_t kTicksPerDay = 864'000'000'000;

// Whether a text is a date as the format has it, so that two of them compare as texts.
bool IsDate(const std::wstring& text) {
    constexpr std::wstring_view kShape = L"0000-00-00 00:00:00";
    return std::ranges::equal(text, kShape, [](wchar_t unit, wchar_t shape) {
        return shape == L'0' ? unit >= L'0' && unit <= L'9' : unit == shape;
    });
}

// A day after `now`: local times may be ahead of it.
std::wstring DayAfter(const FILETIME& now) {
    const std::uint64_t ticks =
        (static_cast<std::uint64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime) + kTicksPerDay;
    return FormatFileTime({static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)});
}

bool IsPersonal(std::wstring path) {
    std::ranges::replace(path, L'/', L'\\');
    CharLowerBuffW(path.data(), static_cast<DWORD>(path.size()));
    constexpr std::array<std::wstring_view, 6> kFolders = {L":\\users\\",  L":\\documents and settings\\",
                                                           L"\\temp\\",    L"\\tmp\\",
                                                           L"\\desktop\\", L"\\downloads\\"};
    return path.find(L":\\users\\public\\") == std::wstring::npos &&
           std::ranges::any_of(kFolders, [&path](std::wstring_view folder) {
               return path.find(folder) != std::wstring::npos;
           });
}

// Why a path may not be followed, given what is allowed of links.
const wchar_t* FaultOf(const std::wstring& path, bool isLink, OtherComputers others) {
    return isLink && others == OtherComputers::Asked && IsNetworkPath(path) ? nullptr : PathFault(path);
}

constexpr auto kNameOf = [](const mxovshare::PackageEntry* entry) -> std::wstring_view {
    return entry->name;
};

class FaultSearch {
public:
    FaultSearch(const std::vector<mxovshare::PackageEntry>& entries, const Sections& sections,
                const CatalogueSource& source, const std::wstring& folder, const FILETIME& now,
                OtherComputers others, const FindingSink& take)
        : m_entries(entries), m_sections(sections), m_source(source), m_folder(folder),
          m_tomorrow(DayAfter(now)), m_others(others), m_documents(source, folder),
          m_entriesByName(entries.size()), m_isShown(entries.size()), m_take(take) {
        std::ranges::transform(entries, m_entriesByName.begin(), [](const auto& entry) { return &entry; });
        std::ranges::sort(m_entriesByName, NameLess(), kNameOf);
    }

    void Find() {
        FindMissing();
        FindOtherLinks();
        FindUnshown();
        FindShared();
        CheckHistory();
        CheckDates();
        CheckVersion();
        FindErrors(m_sections, m_source, m_others, m_take);
    }

private:
    // Where a finding was made: a key of a section of the information file.
    struct Place {
        std::wstring section;
        std::wstring key;
    };

    void Add(Severity severity, const wchar_t* code, Place place, std::wstring document, std::wstring message,
             const wchar_t* cure) {
        m_take({.severity = severity,
                .code = code,
                .section = std::move(place.section),
                .key = std::move(place.key),
                .document = std::move(document),
                .message = std::move(message),
                .cure = cure});
    }

    static Place PlaceOf(const DocumentRecord& record) {
        return {record.sectionName, record.isAdditional != 0 ? inikey::kFilePath : inikey::kCadPath};
    }

    const wchar_t* LinkFault(const std::wstring& path) const { return FaultOf(path, true, m_others); }

    // One of a computer that does not answer may exist.
    std::wstring MissingText(const std::wstring& path) const {
        return L"linked document \"" + path +
               (m_source.Status(path).noAnswer ? L"\" cannot be looked up: its computer does not answer"
                                               : L"\" does not exist");
    }

    bool IsMissing(const std::wstring& path) const {
        return !path.empty() && PathFault(path) == nullptr && !m_source.Status(m_folder + path).exists;
    }

    void FindMissing(const CatalogueItem& item) {
        const DocumentRecord& record = item.record;
        if (item.image == kMissingImage && LinkFault(record.filePath) == nullptr) {
            Add(Severity::Warning, finding::kLinkMissing, PlaceOf(record), record.filePath,
                MissingText(record.filePath), L"relink or remove it");
        }
        if (record.isAdditional != 0 && record.isReferenced == 0 && IsMissing(record.filePath)) {
            Add(Severity::Warning, finding::kCopyMissing, PlaceOf(record), record.filePath,
                L"document \"" + record.filePath + L"\" is not in the package", L"add or remove it");
        }
    }

    void FindMissing() {
        m_documents.ForEachItem([this](const CatalogueItem& item) {
            FindMissing(item);
            Show(InPackage(item.record));
        });
        const std::wstring thumbnail = FileInfo(inikey::kThumbnail);
        if (IsMissing(thumbnail)) {
            Add(Severity::Warning, finding::kPreviewMissing, {inikey::kFileInfo, inikey::kThumbnail},
                thumbnail, L"preview \"" + thumbnail + L"\" is not in the package", L"set Thumbnail");
        }
        if (m_sections.empty()) {
            Add(Severity::Warning, finding::kNoInformation, {}, {},
                L"the package holds no information file (mxinfo.ini), or an empty one",
                L"set MaxtlreVersion");
        }
    }

    void FindOtherLinks(const DocumentRecord& record) {
        if (record.isReferenced == 0 || LinkFault(record.filePath) != nullptr) {
            return;
        }
        const FileStatus status = m_source.Status(record.filePath);
        if (status.exists && IsDate(record.timestamp) &&
            FormatFileTime(status.lastWrite) > record.timestamp) {
            Add(Severity::Warning, finding::kLinkNewer, PlaceOf(record), record.filePath,
                L"linked document \"" + record.filePath + L"\" was changed after " + record.timestamp,
                L"check it and set its date");
        }
        if (IsPersonal(record.filePath)) {
            Add(Severity::Warning, finding::kPersonalFolder, PlaceOf(record), record.filePath,
                L"linked document \"" + record.filePath + L"\" is in a personal or temporary folder",
                L"copy it into the package");
        }
    }

    void FindOtherLinks() {
        for (const DocumentCategory category :
             {DocumentCategory::PartAssembly, DocumentCategory::AdditionalDocument}) {
            m_documents.ForEachRecord(category,
                                      [this](const DocumentRecord& record) { FindOtherLinks(record); });
        }
    }

    void Show(std::wstring_view name) {
        auto entry = std::ranges::lower_bound(m_entriesByName, name, NameLess(), kNameOf);
        for (; entry != m_entriesByName.end() && CompareNames((*entry)->name, name) == 0; ++entry) {
            m_isShown[static_cast<std::size_t>(*entry - m_entries.data())] = true;
        }
    }

    void FindUnshown() {
        Show(common::kInformationFile);
        Show(common::kPrivateInformationFile);
        Show(FileInfo(inikey::kThumbnail));
        for (std::size_t number = 0; number < m_entries.size(); ++number) {
            const mxovshare::PackageEntry& entry = m_entries[number];
            if (!entry.isFolder && !m_isShown[number]) {
                Add(Severity::Warning, finding::kNotShown, {}, entry.name,
                    L"file \"" + entry.name + L"\" is not shown", L"add it as a document or leave it out");
            }
        }
    }

    // The name of a document's file in the package; the loader joins folders with more separators than
    // needed.
    std::wstring_view InPackage(const DocumentRecord& record) const {
        const std::wstring_view path = record.filePath;
        const std::size_t skipped =
            path.starts_with(m_folder) ? path.find_first_not_of(L'\\', m_folder.size()) : 0;
        return path.substr(std::min(skipped, path.size()));
    }

    void FindShared() {
        const std::vector<std::wstring> sections = m_source.SectionNames(inikey::kAdditionalPrefix);
        const PathList paths(sections.size(), [&](std::size_t number) {
            return m_source.Value(sections[number], inikey::kFilePath);
        });
        for (const auto& [number, first] : paths.Repeated()) {
            const std::wstring path(paths[number]);
            Add(Severity::Warning, finding::kShared, {sections[number], inikey::kFilePath}, path,
                sections[first] + L" and " + sections[number] + L" both show \"" + path + L"\"",
                L"remove one of them");
        }
    }

    void CheckHistory() {
        std::wstring last;
        for (const Section& section : m_sections) {
            const std::wstring time = ValueOf(section, inikey::kTime);
            if (!HasPrefix(section.name, inikey::kHistoryPrefix) || !IsDate(time)) {
                continue;
            }
            if (time < last) {
                Add(Severity::Warning, finding::kHistoryOrder, {section.name, inikey::kTime}, {},
                    section.name + L" of " + time + L" follows an entry of " + last, L"");
            }
            last = std::max(last, time);
        }
    }

    void CheckDates() {
        for (const Section& section : m_sections) {
            for (const wchar_t* key : {inikey::kTime, inikey::kTimestamp, inikey::kCadTime}) {
                const std::wstring time = ValueOf(section, key);
                if (IsDate(time) && time > m_tomorrow) {
                    Add(Severity::Warning, finding::kFuture, {section.name, key}, {},
                        section.name + L"/" + key + L" is in the future: " + time, L"set it");
                }
            }
        }
    }

    void CheckVersion() {
        const std::wstring version = FileInfo(inikey::kVersion);
        if (!m_sections.empty() && !IsRecentVersion(version)) {
            Add(Severity::Note, finding::kOldVersion, {inikey::kFileInfo, inikey::kVersion}, {},
                L"the version \"" + version + L"\" is before 2021: additional documents are not shown",
                L"set MaxtlreVersion");
        }
    }

    std::wstring FileInfo(const wchar_t* key) const { return m_source.Value(inikey::kFileInfo, key); }

    const std::vector<mxovshare::PackageEntry>& m_entries;
    const Sections& m_sections;
    const CatalogueSource& m_source;
    const std::wstring& m_folder;
    std::wstring m_tomorrow;
    OtherComputers m_others;
    CatalogueLoader m_documents;
    std::vector<const mxovshare::PackageEntry*> m_entriesByName;
    std::vector<bool> m_isShown; // entries, by number
    const FindingSink& m_take;
};

} // namespace

const wchar_t* PathFault(const std::wstring& path) {
    if (IsNetworkPath(path)) {
        return L"leads to another computer";
    }
    return LeavesPackageFolder(path) ? L"leaves the package folder" : nullptr;
}

void FindFaults(const std::vector<mxovshare::PackageEntry>& entries, const Sections& sections,
                const CatalogueSource& source, const std::wstring& folder, const FILETIME& now,
                OtherComputers others, const FindingSink& take) {
    FaultSearch(entries, sections, source, folder, now, others, take).Find();
}

void FindErrors(const Sections& sections, const CatalogueSource& source, OtherComputers others,
                const FindingSink& take) {
    const auto check = [&](const std::wstring& section, const std::wstring& key, const std::wstring& path,
                           bool isLink) {
        if (const wchar_t* fault = FaultOf(path, isLink, others)) {
            const bool isDocument = key == inikey::kFilePath;
            take({.severity = Severity::Error,
                  .code = IsNetworkPath(path) ? finding::kOtherComputer : finding::kLeavesFolder,
                  .section = section,
                  .key = key,
                  .document = path,
                  .message = (isDocument ? section : key) + L" \"" + path + L"\" " + fault,
                  .cure = L"relink or remove it"});
        }
    };
    for (const wchar_t* key : {inikey::kCadPath, inikey::kSetupSheets, inikey::kThumbnail}) {
        check(inikey::kFileInfo, key, source.Value(inikey::kFileInfo, key), key == inikey::kCadPath);
    }
    for (const std::wstring& path : EntriesOfList(source.Value(inikey::kFileInfo, inikey::kGCode))) {
        check(inikey::kFileInfo, inikey::kGCode, path, false);
    }
    for (const Section& section : sections) {
        if (IsAdditional(section)) {
            check(section.name, inikey::kFilePath, ValueOf(section, inikey::kFilePath), !IsCopy(section));
        }
    }
}

} // namespace care
