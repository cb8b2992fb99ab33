// Texts and bitmaps of the host's resource module, by number.
#pragma once

#include "afxwin.h"
#include "common/Handles.h"

#include <string>

namespace docview {

/// Numbers of the texts that are used.
namespace hosttext {
inline constexpr UINT kNameColumn = 137;
inline constexpr UINT kSizeColumn = 138;
inline constexpr UINT kDateColumn = 139;
inline constexpr UINT kSizeLabel = 138;
inline constexpr UINT kHistoryTime = 139;
inline constexpr UINT kHistoryOperation = 140;
inline constexpr UINT kHistoryBy = 141;
inline constexpr UINT kDocumentProperties = 144;
inline constexpr UINT kNameLabel = 145;
inline constexpr UINT kPathLabel = 146;
inline constexpr UINT kDescriptionLabel = 147;
inline constexpr UINT kRegenerateOperation = 148;
inline constexpr UINT kAskSave = 149;
inline constexpr UINT kNoPreview = 150;
inline constexpr UINT kLinkFile = 151;
inline constexpr UINT kLinkNotFound = 152;
} // namespace hosttext

/// Numbers of the bitmaps that are used.
namespace hostbitmap {
inline constexpr UINT kNoPreview = 145;
inline constexpr UINT kHelp = 149;
} // namespace hostbitmap

/// Title of every message box of the module.
inline constexpr const wchar_t* kMessageTitle = L"Maxtrel Orvando Document Manager";

/// A text of the host's resource module; empty when it has none of that number.
std::wstring HostText(UINT id);

/// A bitmap of the host's resource module; empty when it has none of that number.
common::UniqueBitmap HostBitmap(UINT id);

} // namespace docview
