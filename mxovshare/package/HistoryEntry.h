// The entry that a save adds to the history of a package.
#pragma once

#include "ini/IniDocument.h"
#include "ini/IniStore.h"

#include <string>

namespace mxovshare {

/// The keys and values of an entry, with the time now and this user.
IniValues NewHistoryEntry(const std::wstring& operation, const std::wstring& remarks = {});

/// Adds an entry to an information file and returns its section.
std::wstring AddHistoryEntry(IniDocument& document, const IniValues& entry);

} // namespace mxovshare
