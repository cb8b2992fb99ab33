// Texts of the host's resource module, by number.
#pragma once

#include "afxwin.h"

#include <string>

/// Numbers of the texts that are used.
namespace hosttext {
inline constexpr UINT kNameColumn = 137;
inline constexpr UINT kSizeColumn = 138;
inline constexpr UINT kDateColumn = 139;
inline constexpr UINT kRegenerateOperation = 148;
inline constexpr UINT kAskSave = 149;
inline constexpr UINT kLinkNotFound = 152;
} // namespace hosttext

/// Title of every message box of the module.
inline constexpr const wchar_t* kMessageTitle = L"Maxtrel Orvando Document Manager";

/// A text of the host's resource module; empty when it has none of that number.
std::wstring HostText(UINT id);
