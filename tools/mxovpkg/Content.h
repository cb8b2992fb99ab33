// What the comparing commands read of a package file or the folder of an unpacked one.
#pragma once

#include <care/Comparison.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads directory and information file; prints the reason and returns nothing when that fails.
std::optional<care::PackageContent> ReadPackageContent(const std::wstring& path);

/// Reads the content of some files; prints the reason and returns nothing when that fails.
std::optional<care::Texts> ReadTexts(const std::wstring& path, const std::vector<std::wstring>& names);

/// The text of bytes in UTF-8, else in Latin-1, as programs for machines write it.
std::wstring Decoded(std::string_view bytes);

/// `text` on one line: control characters but the tab become "\uXXXX".
std::wstring Escaped(const std::wstring& text);
