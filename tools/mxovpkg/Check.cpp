#include "ArchiveCatalogueSource.h"
#include "Commands.h"
#include "Output.h"
#include "Progress.h"
#include "Report.h"

#include <package/CatalogueLoader.h>
#include <package/PackageInformation.h>
#include <package/PackagePath.h>

#include <algorithm>
#include <array>
#include <sstream>

using namespace docview;

namespace {

using mxovshare::PackageResult;

struct Section {
    DocumentCategory category;
    const wchar_t* title;
};

constexpr std::array<Section, 4> kSections = {{
    {DocumentCategory::PartAssembly, L"Part / Assembly"},
    {DocumentCategory::GCode, L"G Code"},
    {DocumentCategory::SetupSheets, L"Setup Sheets"},
    {DocumentCategory::AdditionalDocument, L"Additional Documents"},
}};

// Why a path of the information file may not be followed; null when it may.
const wchar_t* PathFault(const std::wstring& path) {
    if (IsNetworkPath(path)) {
        return L"leads to another computer";
    }
    return LeavesPackageFolder(path) ? L"leaves the package folder" : nullptr;
}

const wchar_t* StateOf(const CatalogueItem& item) {
    if (PathFault(item.record.filePath) != nullptr) {
        return L"refused";
    }
    switch (item.image) {
    case kLinkedImage:
        return L"linked";
    case kMissingImage:
        return L"missing";
    default:
        return L"packaged";
    }
}

void PrintSection(const Section& section, const std::vector<CatalogueItem>& items, bool isShown) {
    PrintLine(L"");
    PrintLine(section.title +
              std::wstring(isShown ? L"" : L" (not shown: written by a version before 2021)"));
    std::size_t nameWidth = 0;
    std::size_t count = 0;
    for (const CatalogueItem& item : items) {
        if (item.record.category != section.category) {
            continue;
        }
        nameWidth = std::max(nameWidth, item.record.fileName.size());
        ++count;
    }
    if (count == 0) {
        PrintLine(L"  none");
    }
    for (const CatalogueItem& item : items) {
        if (item.record.category == section.category) {
            PrintLine(OneLine(L"  " + Padded(item.record.fileName, nameWidth) + L"  " +
                              Padded(item.sizeText, 10) + L"  " + Padded(item.record.timestamp, 19) + L"  " +
                              StateOf(item)));
        }
    }
}

// Faults of the paths that the information file names; one line each.
std::vector<std::wstring> FindPathFaults(const ArchiveCatalogueSource& source) {
    std::vector<std::wstring> faults;
    const auto check = [&faults](const std::wstring& name, const std::wstring& path) {
        if (const wchar_t* fault = PathFault(path)) {
            faults.push_back(name + L" \"" + path + L"\" " + fault);
        }
    };
    for (const wchar_t* key : {inikey::kCadPath, inikey::kSetupSheets, inikey::kThumbnail}) {
        check(key, source.Value(inikey::kFileInfo, key));
    }
    std::wistringstream list(source.Value(inikey::kFileInfo, inikey::kGCode));
    for (std::wstring path; std::getline(list, path, L';');) {
        check(inikey::kGCode, path);
    }
    for (const std::wstring& section : source.SectionNames(inikey::kAdditionalPrefix)) {
        check(section, source.Value(section, inikey::kFilePath));
    }
    return faults;
}

// Warns about documents of the catalogue that do not exist.
void WarnAboutMissing(const ArchiveCatalogueSource& source, const std::vector<CatalogueItem>& items) {
    const auto isMissing = [&source](const std::wstring& path) {
        return !path.empty() && PathFault(path) == nullptr &&
               !source.Status(ArchiveCatalogueSource::kFolder + path).exists;
    };
    for (const CatalogueItem& item : items) {
        const DocumentRecord& record = item.record;
        if (item.image == kMissingImage && PathFault(record.filePath) == nullptr) {
            PrintWarning(L"linked document \"" + record.filePath + L"\" does not exist");
        }
        if (record.isAdditional != 0 && record.isReferenced == 0 && isMissing(record.filePath)) {
            PrintWarning(L"document \"" + record.filePath + L"\" is not in the package");
        }
    }
    const std::wstring thumbnail = source.Value(inikey::kFileInfo, inikey::kThumbnail);
    if (isMissing(thumbnail)) {
        PrintWarning(L"preview \"" + thumbnail + L"\" is not in the package");
    }
}

void PrintCatalogue(const ArchiveCatalogueSource& source) {
    const std::wstring version = source.Value(inikey::kFileInfo, inikey::kVersion);
    PrintLine(L"written by: " + (version.empty() ? L"unknown" : OneLine(version)));
    const std::vector<CatalogueItem> items = CatalogueLoader(source, ArchiveCatalogueSource::kFolder).Load();
    const bool isRecent = IsRecentVersion(version);
    for (const Section& section : kSections) {
        PrintSection(section, items, isRecent || section.category != DocumentCategory::AdditionalDocument);
    }
    WarnAboutMissing(source, items);
}

PackageResult Verify(const std::wstring& file) {
    Progress progress(L"Checking");
    return mxovshare::VerifyPackage(file, &progress);
}

} // namespace

int Check(const Arguments& arguments) {
    const std::wstring& file = arguments[0];
    std::vector<mxovshare::PackageEntry> entries;
    std::vector<mxovshare::InformationSection> sections;
    PackageResult result = Verify(file);
    if (result.ok) {
        result = mxovshare::ListPackage(file, entries);
    }
    if (result.ok) {
        result = mxovshare::ReadInformation(file, sections);
    }
    if (!result.ok) {
        PrintFailure(result);
        return kFailed;
    }
    const bool hasInformation = !sections.empty();
    const std::wstring count =
        std::to_wstring(entries.size()) + (entries.size() == 1 ? L" entry" : L" entries");
    const ArchiveCatalogueSource source(std::move(entries), std::move(sections));
    const std::vector<std::wstring> faults = FindPathFaults(source);
    PrintLine(file + L": " + count + L", " +
              (faults.empty() ? std::wstring(L"all sound") : Count(faults.size(), L"fault")));
    PrintCatalogue(source);
    if (!hasInformation) {
        PrintWarning(L"the package holds no information file (mxinfo.ini), or an empty one");
    }
    std::ranges::for_each(faults, [](const std::wstring& fault) { PrintFailure(fault); });
    return faults.empty() ? kDone : kFailed;
}
