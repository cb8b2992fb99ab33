#include "ArchiveCatalogueSource.h"
#include "Commands.h"
#include "InterruptibleWork.h"
#include "output/JsonText.h"
#include "output/LineText.h"
#include "output/Progress.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <care/check/Findings.h>
#include <common/Clock.h>
#include <package/CatalogueLoader.h>
#include <package/PackageInformation.h>

#include <algorithm>
#include <array>
#include <string_view>

using namespace docview;

namespace {

using care::Finding;
using care::Severity;
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

// A longer name moves what follows it on its line, and on no other.
constexpr std::size_t kWidestColumn = 80;

const wchar_t* StateOf(const CatalogueItem& item) {
    if (care::PathFault(item.record.filePath) != nullptr) {
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

struct Column {
    std::size_t width = 0;
    std::size_t lines = 0;
};

Column NamesOf(DocumentCategory category, CatalogueLoader& documents) {
    Column column;
    documents.ForEachRecord(category, [&column](const DocumentRecord& record) {
        column.width = std::max(column.width, std::min(CharacterCount(record.fileName), kWidestColumn));
        ++column.lines;
    });
    return column;
}

void PrintSection(const Section& section, CatalogueLoader& documents, bool isShown) {
    PrintLine(L"");
    PrintLine(section.title +
              std::wstring(isShown ? L"" : L" (not shown: written by a version before 2021)"));
    const Column names = NamesOf(section.category, documents);
    if (names.lines == 0) {
        PrintLine(L"  none");
    }
    documents.ForEachItem(section.category, [&names](const CatalogueItem& item) {
        PrintLine(OneLine(L"  " + Padded(item.record.fileName, names.width) + L"  " +
                          Padded(item.sizeText, 10) + L"  " + Padded(item.record.timestamp, 19) + L"  " +
                          StateOf(item)));
    });
}

// What a check without --strict reports besides errors.
bool IsAlwaysReported(const Finding& finding) {
    constexpr std::array<std::wstring_view, 4> kCodes = {
        care::finding::kLinkMissing, care::finding::kCopyMissing, care::finding::kPreviewMissing,
        care::finding::kNoInformation};
    return std::ranges::find(kCodes, finding.code) != kCodes.end();
}

// Of errors, warnings and notes.
using Counts = std::array<std::size_t, 3>;

std::size_t& CountOf(Counts& counts, Severity severity) {
    return counts[static_cast<std::size_t>(severity)];
}

void PrintFinding(const Finding& finding, bool isStrict) {
    if (finding.severity == Severity::Error) {
        PrintFailure(care::EnglishMessage(finding));
    } else if (isStrict && finding.severity == Severity::Note) {
        PrintNote(care::EnglishMessage(finding));
    } else if (isStrict || IsAlwaysReported(finding)) {
        PrintWarning(care::EnglishMessage(finding));
    }
}

int ExitCodeOf(Counts counts, bool isStrict) {
    if (CountOf(counts, Severity::Error) > 0) {
        return kFailed;
    }
    return isStrict && CountOf(counts, Severity::Warning) > 0 ? kFindings : kDone;
}

std::string FindingJson(const Finding& finding) {
    constexpr const char* kSeverities[] = {"\"error\"", "\"warning\"", "\"note\""};
    return JsonObject({{"severity", kSeverities[static_cast<std::size_t>(finding.severity)]},
                       {"code", JsonString(finding.code)},
                       {"section", JsonString(finding.section)},
                       {"document", JsonString(finding.document)},
                       {"message", JsonString(care::EnglishMessage(finding))},
                       {"cure", JsonString(care::EnglishCure(finding))}});
}

JsonMembers CountsJson(Counts counts) {
    return {{"errors", std::to_string(CountOf(counts, Severity::Error))},
            {"warnings", std::to_string(CountOf(counts, Severity::Warning))}};
}

void PrintCatalogue(const ArchiveCatalogueSource& source) {
    const std::wstring version = source.Value(inikey::kFileInfo, inikey::kVersion);
    PrintLine(L"written by: " + (version.empty() ? L"unknown" : OneLine(version)));
    CatalogueLoader documents(source, ArchiveCatalogueSource::kFolder);
    const bool isRecent = IsRecentVersion(version);
    for (const Section& section : kSections) {
        PrintSection(section, documents,
                     isRecent || section.category != DocumentCategory::AdditionalDocument);
    }
}

PackageResult Verify(const std::wstring& file) {
    Progress progress(L"Checking");
    return mxovshare::VerifyPackage(file, &progress);
}

int CheckNow(const Arguments& arguments) {
    const std::wstring& file = arguments[0];
    const bool isJson = arguments.Has(L"--json");
    care::PackageContent view;
    PackageResult result = Verify(file);
    if (result.ok) {
        result = mxovshare::ReadContent(file, view.entries, view.sections);
    }
    if (!result.ok) {
        PrintFailure(result);
        if (isJson) {
            JsonListing findings({{"file", JsonString(file)}}, "findings");
            findings.Print(FindingJson(care::DamageOf(result.message)));
            findings.End(CountsJson({1, 0, 0}));
        }
        return kFailed;
    }
    const ArchiveCatalogueSource source(view.entries, view.sections);
    const care::CheckedPackage package = {.entries = view.entries,
                                          .sections = view.sections,
                                          .source = source,
                                          .folder = ArchiveCatalogueSource::kFolder,
                                          .others = care::OtherComputers::Refused};
    const bool isStrict = arguments.Has(L"--strict");
    Counts counts = {};
    const auto findEach = [&](const care::FindingSink& take) {
        care::FindFaults(package, common::SystemTime(), [&](const Finding& finding) {
            ++CountOf(counts, finding.severity);
            take(finding);
        });
    };
    if (isJson) {
        JsonListing findings({{"file", JsonString(file)}}, "findings");
        findEach([&findings](const Finding& finding) { findings.Print(FindingJson(finding)); });
        findings.End(CountsJson(counts));
        return ExitCodeOf(counts, isStrict);
    }
    std::size_t errors = 0;
    care::FindErrors(package, [&errors](const Finding&) { ++errors; });
    PrintLine(file + L": " + std::to_wstring(view.entries.size()) +
              (view.entries.size() == 1 ? L" entry" : L" entries") + L", " +
              (errors == 0 ? std::wstring(L"all sound") : Count(errors, L"fault")));
    PrintCatalogue(source);
    findEach([isStrict](const Finding& finding) { PrintFinding(finding, isStrict); });
    return ExitCodeOf(counts, isStrict);
}

} // namespace

int Check(const Arguments& arguments) {
    return RunInterruptibly([&arguments] { return CheckNow(arguments); });
}
