// How the commands report results.
#pragma once

#include <mxovpackage.h>

#include <string>
#include <string_view>

void PrintText(std::wstring_view text);
void PrintLine(std::wstring_view line);
void PrintWarning(const std::wstring& warning);
void PrintNote(const std::wstring& note);

/// Prints that the user cancelled.
void PrintCancelled();

/// Prints one line with the reason of a failure.
void PrintFailure(const mxovshare::PackageResult& result);
void PrintFailure(const std::wstring& message);

/// "1 file", "2 files", "1 folder", ...
std::wstring Count(std::size_t number, const std::wstring& thing);

/// `text` with blanks behind it up to `width`.
std::wstring Padded(const std::wstring& text, std::size_t width);
