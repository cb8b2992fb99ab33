// The entry that a save adds to the history of a package.
#pragma once

#include "ini/IniDocument.h"
#include "ini/IniStore.h"

#include <string>

namespace mxovshare {

/// What the names of the sections of entries begin with.
inline constexpr wchar_t kHistoryPrefix[] = L"FILE_HISTORY";

/// The keys and values of an entry, with the time now and this user.
IniValues NewHistoryEntry(const std::wstring& operation, const std::wstring& remarks = {});

/// Adds an entry to an information file.
void AddHistoryEntry(IniDocument& document, const IniValues& entry);

} // namespace mxovshare
