#include "care/check/FaultSearch.h"
#include "care/check/FindingForms.h"
#include "care/check/PathList.h"
#include "common/Paths.h"

#include <package/PackageInformation.h>
#include <package/PackagePath.h>

#include <algorithm>
#include <array>

using namespace docview;

namespace care {

namespace {

FindingPlace PlaceOf(const DocumentRecord& record) {
    return {record.sectionName, record.isAdditional != 0 ? inikey::kFilePath : inikey::kCadPath};
}

bool IsMissing(const CheckedPackage& package, const std::wstring& path) {
    return !path.empty() && PathFault(path) == nullptr &&
           !package.source.Status(package.folder + path).exists;
}

void TakeIfMissing(const CheckedPackage& package, const CatalogueItem& item, const FindingSink& take) {
    const DocumentRecord& record = item.record;
    const std::wstring& path = record.filePath;
    if (item.image == kMissingImage && FaultOf(path, true, package.others) == nullptr) {
        // One of a computer that does not answer may exist.
        const bool isUnanswered = package.source.Status(path).noAnswer;
        take(MakeFinding(isUnanswered ? FindingText::LinkUnanswered : FindingText::LinkMissing,
                         PlaceOf(record), path, {path}));
    }
    if (record.isAdditional != 0 && record.isReferenced == 0 && IsMissing(package, path)) {
        take(MakeFinding(FindingText::CopyMissing, PlaceOf(record), path, {path}));
    }
}

// The name of a document's file in the package; the loader joins folders with more separators than needed.
std::wstring_view InPackage(const std::wstring& folder, std::wstring_view path) {
    const std::size_t skipped = path.starts_with(folder) ? path.find_first_not_of(L'\\', folder.size()) : 0;
    return path.substr(std::min(skipped, path.size()));
}

bool IsPersonal(std::wstring path) {
    std::ranges::replace(path, L'/', L'\\');
    path = common::LowerCase(std::move(path));
    constexpr std::array<std::wstring_view, 6> kFolders = {L":\\users\\",  L":\\documents and settings\\",
                                                           L"\\temp\\",    L"\\tmp\\",
                                                           L"\\desktop\\", L"\\downloads\\"};
    return path.find(L":\\users\\public\\") == std::wstring::npos &&
           std::ranges::any_of(kFolders, [&path](std::wstring_view folder) {
               return path.find(folder) != std::wstring::npos;
           });
}

void TakeIfDoubtful(const CheckedPackage& package, const DocumentRecord& record, const FindingSink& take) {
    const std::wstring& path = record.filePath;
    if (record.isReferenced == 0 || FaultOf(path, true, package.others) != nullptr) {
        return;
    }
    const FileStatus status = package.source.Status(path);
    if (status.exists && IsDate(record.timestamp) && FormatFileTime(status.lastWrite) > record.timestamp) {
        take(MakeFinding(FindingText::LinkNewer, PlaceOf(record), path, {path, record.timestamp}));
    }
    if (IsPersonal(path)) {
        take(MakeFinding(FindingText::PersonalFolder, PlaceOf(record), path, {path}));
    }
}

} // namespace

void FindMissing(const CheckedPackage& package, CatalogueLoader& documents,
                 const std::function<void(std::wstring_view name)>& show, const FindingSink& take) {
    documents.ForEachItem([&](const CatalogueItem& item) {
        TakeIfMissing(package, item, take);
        show(InPackage(package.folder, item.record.filePath));
    });
    const std::wstring preview = package.source.Value(inikey::kFileInfo, inikey::kThumbnail);
    if (IsMissing(package, preview)) {
        take(MakeFinding(FindingText::PreviewMissing, {inikey::kFileInfo, inikey::kThumbnail}, preview,
                         {preview}));
    }
}

void FindDoubtfulLinks(const CheckedPackage& package, CatalogueLoader& documents, const FindingSink& take) {
    for (const DocumentCategory category :
         {DocumentCategory::PartAssembly, DocumentCategory::AdditionalDocument}) {
        documents.ForEachRecord(category,
                                [&](const DocumentRecord& record) { TakeIfDoubtful(package, record, take); });
    }
}

void FindShared(const CheckedPackage& package, const FindingSink& take) {
    const std::vector<std::wstring> sections = package.source.SectionNames(inikey::kAdditionalPrefix);
    const PathList paths(sections.size(), [&](std::size_t number) {
        return package.source.Value(sections[number], inikey::kFilePath);
    });
    for (const auto& [number, first] : paths.Repeated()) {
        const std::wstring path(paths[number]);
        take(MakeFinding(FindingText::Shared, {sections[number], inikey::kFilePath}, path,
                         {sections[first], sections[number], path}));
    }
}

} // namespace care
