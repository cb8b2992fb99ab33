#include "package/PackageSummary.h"

#include "common/InformationFile.h"
#include "mxovshare.h"
#include "package/Paths.h"
#include "package/ValueText.h"
#include "texts/Texts.h"

namespace viewer {

using mxovshare::INIFile;

namespace {

constexpr wchar_t kHistory[] = L"FILE_HISTORY";

std::wstring InformationFile(const std::wstring& folder) {
    const std::wstring file = folder + common::kInformationFile;
    return FileExists(file) ? file : folder + common::kPrivateInformationFile;
}

struct HistoryEntry {
    std::wstring operation;
    std::wstring by;
    std::wstring time;
    bool operator==(const HistoryEntry&) const = default;
};

// The newest entry in an information file; empty when there is none.
HistoryEntry LastEntry(const std::wstring& informationFile) {
    const std::vector<std::wstring> entries = INIFile::GetSectionNamesFromINI(kHistory, informationFile);
    if (entries.empty()) {
        return {};
    }
    const auto value = [&](const wchar_t* key) {
        return INIFile::GetKeyValueFromINI(entries.back(), key, informationFile);
    };
    return {value(L"Operation"), value(L"By"), value(L"Time")};
}

// The newest entry in the information file inside a package; empty when there is none.
HistoryEntry LastPackedEntry(const std::wstring& packageFile) {
    mxovshare::Information information;
    if (!mxovshare::ReadInformation(packageFile, information).ok) {
        return {};
    }
    const std::vector<std::wstring> entries = information.SectionNames(kHistory);
    if (entries.empty()) {
        return {};
    }
    const auto value = [&](const wchar_t* key) { return information.Value(entries.back(), key); };
    return {value(L"Operation"), value(L"By"), value(L"Time")};
}

// A time as the library writes it, such as "2024-02-03 04:05:06"; another text stays as it is.
std::wstring WithoutSeconds(const std::wstring& time) {
    constexpr std::wstring_view kForm = L"0000-00-00 00:00:00";
    const bool hasForm = std::ranges::equal(time, kForm, [](wchar_t character, wchar_t form) {
        return form == L'0' ? character >= L'0' && character <= L'9' : character == form;
    });
    return hasForm ? time.substr(0, time.rfind(L':')) : time;
}

std::wstring EntryText(const HistoryEntry& entry) {
    std::wstring line = entry.operation;
    if (!entry.by.empty()) {
        line = Text(IDS_ENTRY_BY, {line, entry.by});
    }
    if (!entry.time.empty()) {
        line = Text(IDS_ENTRY_TIME, {line, WithoutSeconds(entry.time)});
    }
    return line;
}

} // namespace

PackageSummary ReadPackageSummary(const std::wstring& folder, const std::wstring& packageFile) {
    const std::wstring information = InformationFile(folder);
    PackageSummary summary;
    summary.name = FileStem(packageFile);
    summary.version = INIFile::GetKeyValueFromINI(L"FILEINFO", L"MaxtlreVersion", information);
    const std::wstring thumbnail = INIFile::GetKeyValueFromINI(L"FILEINFO", L"Thumbnail", information);
    if (!thumbnail.empty()) {
        summary.previewFile = folder + thumbnail;
    }
    summary.lastChange = EntryText(LastEntry(information));
    return summary;
}

std::wstring LastSaver(const std::wstring& packageFile, const std::wstring& folder) {
    const HistoryEntry packed = LastPackedEntry(packageFile);
    return packed == LastEntry(InformationFile(folder)) ? std::wstring() : packed.by;
}

std::wstring CountsText(const std::vector<mxovshare::PackageEntry>& entries) {
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    for (const mxovshare::PackageEntry& entry : entries) {
        files += entry.isFolder ? 0 : 1;
        bytes += entry.size;
    }
    if (files == 0) {
        return {};
    }
    return files == 1 ? Text(IDS_ONE_FILE, {ByteSizeText(bytes)})
                      : Text(IDS_FILES, {std::to_wstring(files), ByteSizeText(bytes)});
}

std::wstring PropertiesText(const std::wstring& folder, const std::wstring& packageFile,
                            const std::vector<mxovshare::PackageEntry>& entries) {
    const PackageSummary summary = ReadPackageSummary(folder, packageFile);
    WIN32_FILE_ATTRIBUTE_DATA file = {};
    GetFileAttributesExW(packageFile.c_str(), GetFileExInfoStandard, &file);
    const std::uint64_t size = (std::uint64_t{file.nFileSizeHigh} << 32) | file.nFileSizeLow;
    std::wstring text = Text(IDS_PROPERTIES, {packageFile, ByteSizeText(size), CountsText(entries),
                                              LocalTimeText(file.ftLastWriteTime)});
    if (!summary.version.empty()) {
        text += L"\n" + Text(IDS_WRITTEN_BY, {summary.version});
    }
    if (!summary.lastChange.empty()) {
        text += L"\n" + Text(IDS_LAST_ENTRY, {summary.lastChange});
    }
    return text + L"\n\n" + Text(IDS_ZONES);
}

} // namespace viewer
