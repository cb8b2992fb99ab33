// The history of a package, and the entry that a changing command adds.
#pragma once

#include "Arguments.h"

#include <mxovchange.h>

/// The options that every changing command has.
std::vector<Option> HistoryOptions();

/// Adds an entry for `operation` with the remarks given, unless none is wanted.
void SetHistory(const Arguments& arguments, const std::wstring& operation,
                mxovshare::PackageChanges& changes);

/// An entry of the history in JSON.
std::string HistoryJson(const mxovshare::InformationSection& entry);
