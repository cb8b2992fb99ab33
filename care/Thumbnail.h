// The preview of a package: a bitmap inside it that the information file names.
#pragma once

#include "care/PackageEditor.h"

namespace care {

/// The name of the preview as the package spells it; empty when the package does not contain one.
std::wstring ThumbnailName(const PackageEditor& editor);

/// Packs a bitmap file as the preview, in place of the one before, and returns its name in the package.
/// Throws Refusal for what is no bitmap file, and for a new name that another file of the package has.
std::wstring SetThumbnail(PackageEditor& editor, const std::wstring& picture);

} // namespace care
