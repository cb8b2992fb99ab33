// The entry that a save adds to the history of a package.
#pragma once

#include "ini/IniDocument.h"
#include "ini/IniStore.h"

#include <string>

namespace mxovshare {

/// The keys and values of an entry, with the time now and this user.
IniValues NewHistoryEntry(const std::wstring& operation, const std::wstring& remarks = {});

/// Adds an entry to an information file.
void AddHistoryEntry(IniDocument& document, const IniValues& entry);
/// The same with the file at this path, by way of the store: kept while the file is locked, and under the
/// next free number when another program takes its number first.
void AddHistoryEntry(IniStore& store, const std::wstring& file, const IniValues& entry);

} // namespace mxovshare
