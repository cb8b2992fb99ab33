#include "package/DocumentDetails.h"

#include "common/LongPath.h"
#include "common/Paths.h"
#include "mxovshare.h"
#include "package/CatalogueLoader.h"
#include "package/DiskCatalogueSource.h"
#include "package/PackageInformation.h"
#include "package/PackagePath.h"

#include <algorithm>

namespace viewer {

namespace {

// The lists of the control show the categories in their order.
DocumentCategory CategoryOf(int list) {
    return static_cast<DocumentCategory>(list + 1);
}

// Where the file of a document lies; empty for a copy whose path leads out of the package.
std::wstring PathOf(const std::wstring& folder, const DocumentRecord& record) {
    if (record.isReferenced || !record.isAdditional) {
        return common::FullPath(record.filePath);
    }
    return docview::LeavesPackageFolder(record.filePath) ? std::wstring()
                                                         : common::FullPath(folder + record.filePath);
}

} // namespace

bool IsSameState(const DocumentDetails& left, const DocumentDetails& right) {
    return common::IsSamePath(left.path, right.path) && left.exists == right.exists &&
           left.size == right.size && CompareFileTime(&left.modified, &right.modified) == 0;
}

std::optional<DocumentDetails> FindDocument(const std::wstring& folder, DocumentRow row) {
    const docview::DiskCatalogueSource source(docview::FindInformationFile(folder));
    std::vector<docview::CatalogueItem> items = docview::CatalogueLoader(source, folder).Load();
    std::erase_if(items, [&](const docview::CatalogueItem& item) {
        return item.record.category != CategoryOf(row.list);
    });
    if (row.row < 0 || static_cast<std::size_t>(row.row) >= items.size()) {
        return std::nullopt;
    }
    const DocumentRecord& record = items[static_cast<std::size_t>(row.row)].record;
    DocumentDetails details;
    details.name = record.fileName;
    details.path = PathOf(folder, record);
    details.section = record.sectionName;
    details.isProgram = record.category == DocumentCategory::GCode;
    details.isLink = record.isReferenced != 0;
    const docview::FileStatus status = source.Status(details.path);
    details.exists = status.exists && !status.isFolder;
    if (details.exists) {
        details.size = status.size;
        details.modified = status.lastWrite;
    }
    return details;
}

void Relink(const std::wstring& folder, const DocumentDetails& document, const std::wstring& path) {
    using namespace docview::inikey;
    const bool isPart = document.section == kFileInfo;
    mxovshare::INIFile::AddRecordToINI(document.section, isPart ? kCadPath : kFilePath, path,
                                       docview::FindInformationFile(folder));
}

} // namespace viewer
