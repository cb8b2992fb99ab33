// The parts of a check by their subjects. Each passes what it finds to `take`.
#pragma once

#include "care/check/Findings.h"

#include <package/CatalogueLoader.h>

namespace care {

/// Why a path may not be followed, given what is allowed of links; null when it may.
const wchar_t* FaultOf(const std::wstring& path, bool isLink, OtherComputers others);

/// Documents and a preview that are not there; passes the path of each document's file to `show`.
void FindMissing(const CheckedPackage& package, docview::CatalogueLoader& documents,
                 const std::function<void(std::wstring_view name)>& show, const FindingSink& take);

/// Links to files that were changed, or that lie where others do not find them.
void FindDoubtfulLinks(const CheckedPackage& package, docview::CatalogueLoader& documents,
                       const FindingSink& take);

/// Documents that share a file.
void FindShared(const CheckedPackage& package, const FindingSink& take);

/// Entries of the history out of order.
void CheckHistory(const CheckedPackage& package, const FindingSink& take);

/// Dates more than a day after `now`, which is UTC.
void CheckDates(const CheckedPackage& package, const FILETIME& now, const FindingSink& take);

/// Whether a text is a date as the format has it, so that two of them compare as texts.
[[nodiscard]] bool IsDate(const std::wstring& text);

} // namespace care
