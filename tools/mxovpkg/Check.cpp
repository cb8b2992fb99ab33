#include "ArchiveCatalogueSource.h"
#include "Commands.h"
#include "Output.h"
#include "Progress.h"
#include "Report.h"

#include <package/CatalogueLoader.h>
#include <package/PackageInformation.h>

#include <algorithm>
#include <array>

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

std::wstring Padded(const std::wstring& text, std::size_t width) {
    return text + std::wstring(width > text.size() ? width - text.size() : 0, L' ');
}

const wchar_t* StateOf(const CatalogueItem& item) {
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

// Warns about documents of the catalogue that do not exist.
void WarnAboutMissing(const ArchiveCatalogueSource& source, const std::vector<CatalogueItem>& items) {
    for (const CatalogueItem& item : items) {
        const DocumentRecord& record = item.record;
        if (item.image == kMissingImage) {
            PrintWarning(L"linked document \"" + record.filePath + L"\" does not exist");
        }
        const bool isCopy = record.isAdditional != 0 && record.isReferenced == 0;
        if (isCopy && !source.Status(ArchiveCatalogueSource::kFolder + record.filePath).exists) {
            PrintWarning(L"document \"" + record.filePath + L"\" is not in the package");
        }
    }
    const std::wstring thumbnail = source.Value(inikey::kFileInfo, inikey::kThumbnail);
    if (!thumbnail.empty() && !source.Status(ArchiveCatalogueSource::kFolder + thumbnail).exists) {
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

int Check(const std::wstring& file) {
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
    PrintLine(file + L": " + std::to_wstring(entries.size()) +
              (entries.size() == 1 ? L" entry" : L" entries") + L", all sound");
    PrintCatalogue(ArchiveCatalogueSource(std::move(entries), std::move(sections)));
    if (!hasInformation) {
        PrintWarning(L"the package holds no information file (mxinfo.ini), or an empty one");
    }
    return kDone;
}
