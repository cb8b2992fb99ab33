// The texts and the image of a list item.
#pragma once

#include "CatalogueSource.h"
#include "DocumentRecord.h"

namespace docview {

/// Index into both image lists.
enum ItemImage : int {
    kLinkedImage = 0,  ///< linked document whose file exists
    kMissingImage = 1, ///< linked document whose file does not exist
    kPackedImage = 2,  ///< document stored inside the package
};

/// A record with what its list item shows besides the record's name and timestamp.
struct CatalogueItem {
    DocumentRecord record;
    std::wstring sizeText;
    int image = kLinkedImage;
};

/// "n KB", rounded up: 0 bytes give 0, 1 to 1024 bytes give 1.
std::wstring SizeText(int bytes);

/// Size text of a document: of its path when that exists, otherwise of package folder + "\" + path. `status`
/// is that of the path.
std::wstring DocumentSizeText(const CatalogueSource& source, const std::wstring& packageFolder,
                              const std::wstring& path, const FileStatus& status);

/// Last component of a path.
std::wstring FileNameOf(const std::wstring& path);

} // namespace docview

/// "2024-01-01 09:05:03" of the calendar fields as they stand, without conversion to local time.
std::wstring FormatFileTime(const FILETIME& time);
