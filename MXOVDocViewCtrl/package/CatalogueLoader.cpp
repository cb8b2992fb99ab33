#include "CatalogueLoader.h"

#include "common/Paths.h"
#include "PackageInformation.h"

#include <algorithm>
#include <array>
#include <utility>

namespace docview {

namespace {

/// The path before its last "\", the whole path when there is none.
std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.rfind(L'\\'));
}

/// The server of a path on the network; of other paths the drive.
std::wstring PlaceOf(const std::wstring& path) {
    constexpr std::size_t kDriveLength = 2;
    return path.substr(0, path.starts_with(L"\\\\") ? path.find(L'\\', 2) : kDriveLength);
}

/// Name of an additional document: what follows the last "\"; of a path without one, all but the last
/// character.
std::wstring AdditionalName(const std::wstring& path) {
    const std::size_t start = path.rfind(L'\\') + 1; // 0 when there is no backslash
    return path.substr(start, path.size() - 1);
}

} // namespace

bool IsSetupSheet(const std::wstring& name) {
    static constexpr std::array<const wchar_t*, 5> kExtensions = {L".xml", L".doc", L".pdf", L".xls",
                                                                  L".html"};
    const std::size_t dot = name.rfind(L'.');
    if (dot == std::wstring::npos) {
        return false;
    }
    return std::ranges::find(kExtensions, common::LowerCase(name.substr(dot))) != kExtensions.end();
}

std::wstring FirstEntry(const std::wstring& list) {
    const std::size_t start = list.find_first_not_of(L';');
    return start == std::wstring::npos ? std::wstring() : list.substr(start, list.find(L';', start) - start);
}

CatalogueLoader::CatalogueLoader(const CatalogueSource& source, const std::wstring& packageFolder)
    : m_source(source), m_packageFolder(packageFolder) {}

std::vector<CatalogueItem> CatalogueLoader::Load() {
    m_silent.clear();
    std::vector<CatalogueItem> items;
    ForEachItem([&items](CatalogueItem item) { items.push_back(std::move(item)); });
    return items;
}

void CatalogueLoader::ForEachItem(const ItemSink& take) {
    for (const DocumentCategory category : {DocumentCategory::PartAssembly, DocumentCategory::SetupSheets,
                                            DocumentCategory::GCode, DocumentCategory::AdditionalDocument}) {
        ForEachItem(category, take);
    }
}

void CatalogueLoader::ForEachItem(DocumentCategory category, const ItemSink& take) {
    ForEach(category, [&](DocumentRecord record, const FileStatus* known) {
        const FileStatus status = known != nullptr ? *known : Status(record.filePath);
        take(ItemOf(std::move(record), status));
    });
}

void CatalogueLoader::ForEachRecord(DocumentCategory category,
                                    const std::function<void(DocumentRecord)>& take) {
    ForEach(category, [&take](DocumentRecord record, const FileStatus*) { take(std::move(record)); });
}

void CatalogueLoader::ForEach(DocumentCategory category, const Sink& take) {
    switch (category) {
    case DocumentCategory::PartAssembly:
        return FindPartAssembly(take);
    case DocumentCategory::SetupSheets:
        return FindSetupSheets(take);
    case DocumentCategory::GCode:
        return FindGCode(take);
    case DocumentCategory::AdditionalDocument:
        return FindAdditionalDocuments(take);
    }
}

FileStatus CatalogueLoader::Status(const std::wstring& path) {
    const std::wstring place = PlaceOf(path);
    if (m_silent.contains(place)) {
        return {};
    }
    const FileStatus status = m_source.Status(path);
    if (status.noAnswer) {
        m_silent.insert(place);
    }
    return status;
}

void CatalogueLoader::FindPartAssembly(const Sink& take) {
    const std::wstring path = m_source.Value(inikey::kFileInfo, inikey::kCadPath);
    if (path.empty()) {
        return;
    }
    take({.sectionName = inikey::kFileInfo,
          .fileName = FileNameOf(path),
          .timestamp = m_source.Value(inikey::kFileInfo, inikey::kCadTime),
          .filePath = path,
          .description = m_source.Value(inikey::kFileInfo, inikey::kCadDescription),
          .isReferenced = 1,
          .isAdditional = 0,
          .category = DocumentCategory::PartAssembly},
         nullptr);
}

void CatalogueLoader::FindSetupSheets(const Sink& take) {
    const std::wstring value = m_source.Value(inikey::kFileInfo, inikey::kSetupSheets);
    if (value.empty()) {
        return;
    }
    const std::wstring folder = FolderOf(m_packageFolder + L"\\" + value);
    std::vector<std::wstring> names = m_source.FileNames(folder);
    std::erase_if(names, [](const std::wstring& name) { return !IsSetupSheet(name); });
    FindInFolder(folder, names, m_source.Value(inikey::kFileInfo, inikey::kSetupSheetsDescription),
                 DocumentCategory::SetupSheets, take);
}

void CatalogueLoader::FindGCode(const Sink& take) {
    const std::wstring first = FirstEntry(m_source.Value(inikey::kFileInfo, inikey::kGCode));
    if (first.empty()) {
        return;
    }
    // Unlike the setup sheets, no separator is inserted: the package folder brings its own.
    const std::wstring folder = FolderOf(m_packageFolder + first);
    const std::vector<std::wstring> names = m_source.FileNames(folder);
    FindInFolder(folder, names, m_source.Value(inikey::kFileInfo, inikey::kGCodeDescription),
                 DocumentCategory::GCode, take);
}

void CatalogueLoader::FindInFolder(const std::wstring& folder, const std::vector<std::wstring>& names,
                                   const std::wstring& description, DocumentCategory category,
                                   const Sink& take) {
    const std::wstring start = folder + L"\\";
    for (const std::wstring& name : names) {
        const std::wstring path = start + name;
        const FileStatus status = Status(path);
        if (!status.exists) {
            continue; // it vanished since the folder was listed
        }
        take({.sectionName = inikey::kFileInfo,
              .fileName = FileNameOf(path),
              .timestamp = FormatFileTime(status.lastWrite),
              .filePath = path,
              .description = description,
              .isReferenced = 0,
              .isAdditional = 0,
              .category = category},
             &status);
    }
}

void CatalogueLoader::FindAdditionalDocuments(const Sink& take) {
    for (const std::wstring& section : m_source.SectionNames(inikey::kAdditionalPrefix)) {
        take(ReadAdditionalDocument(m_source, section), nullptr);
    }
}

CatalogueItem CatalogueLoader::ItemOf(DocumentRecord record, const FileStatus& status) const {
    std::wstring sizeText = DocumentSizeText(m_source, m_packageFolder, record.filePath, status);
    const int linkedImage = status.exists ? kLinkedImage : kMissingImage;
    const int image = record.isReferenced != 0 ? linkedImage : kPackedImage;
    return {.record = std::move(record), .sizeText = std::move(sizeText), .image = image};
}

} // namespace docview

DocumentRecord ReadAdditionalDocument(const docview::CatalogueSource& source, const std::wstring& section) {
    DocumentRecord record;
    record.sectionName = section;
    record.filePath = source.Value(section, docview::inikey::kFilePath);
    record.timestamp = source.Value(section, docview::inikey::kTimestamp);
    record.description = source.Value(section, docview::inikey::kDescription);
    record.isReferenced = source.Value(section, docview::inikey::kIsReferenced) == L"NO" ? 0 : 1;
    record.isAdditional = 1;
    record.category = DocumentCategory::AdditionalDocument;
    record.fileName = docview::AdditionalName(record.filePath);
    return record;
}
