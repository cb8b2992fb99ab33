// Layout of the package information file: where it lies, its sections and keys, and what is read from it
// alone.
#pragma once

#include "CatalogueSource.h"
#include "DocumentRecord.h"

namespace docview {

/// Names of sections and keys, spelled as the package format has them.
namespace inikey {
inline constexpr const wchar_t* kFileInfo = L"FILEINFO";
inline constexpr const wchar_t* kVersion = L"MaxtlreVersion";
inline constexpr const wchar_t* kCadPath = L"CADFilePath";
inline constexpr const wchar_t* kCadTime = L"CADFileLastModifiedTime";
inline constexpr const wchar_t* kCadDescription = L"CADFileDescription";
inline constexpr const wchar_t* kSetupSheets = L"SetupSheets";
inline constexpr const wchar_t* kSetupSheetsDescription = L"SetupSheetsFileDescription";
inline constexpr const wchar_t* kGCode = L"GCode";
inline constexpr const wchar_t* kGCodeDescription = L"GCodeFileDescription";
inline constexpr const wchar_t* kThumbnail = L"Thumbnail";

inline constexpr const wchar_t* kAdditionalPrefix = L"REFERANCE_FILE";
inline constexpr const wchar_t* kIsReferenced = L"IsReferencedFile";
inline constexpr const wchar_t* kDescription = L"Description";
inline constexpr const wchar_t* kTimestamp = L"Timestamp";
inline constexpr const wchar_t* kFilePath = L"FilePath";

inline constexpr const wchar_t* kHistoryPrefix = L"FILE_HISTORY";
inline constexpr const wchar_t* kOperation = L"Operation";
inline constexpr const wchar_t* kTime = L"Time";
inline constexpr const wchar_t* kBy = L"By";
inline constexpr const wchar_t* kRemarks = L"Remarks";
} // namespace inikey

/// Folder of the copied additional documents, relative to the package folder.
inline constexpr const wchar_t* kCopiesFolder = L"ReferanceFiles\\";

/// Preview and history of a package.
struct PackageSummary {
    std::wstring
        thumbnailPath; ///< package folder followed by the stored path; empty when there is no preview
    std::vector<HistoryEntry> history;
};

/// Whether a path names an existing file or folder; false for an empty one.
bool PathExists(const std::wstring& path);

/// Path of the information file of a package folder: folder + "\mxinfo.ini" when that exists, else
/// folder + "Private\mxinfo.ini", which is not tested and, unlike the first, has no separator of its own.
std::wstring FindInformationFile(const std::wstring& packageFolder);

/// Whether the program that wrote the package is of 2021 or later, by the last word of its version line. A
/// line of fewer than two words is not recent.
bool IsRecentVersion(const std::wstring& versionLine);

/// Reads preview path and history entries.
PackageSummary ReadSummary(const CatalogueSource& source, const std::wstring& packageFolder);

/// Section of the next additional document, given the highest number in use: one more, or the highest free
/// number when there is none above it.
std::wstring AdditionalSection(const CatalogueSource& source, int lastIndex);

} // namespace docview
