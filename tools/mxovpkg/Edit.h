// The frame of the commands that change a package.
#pragma once

#include "Arguments.h"

#include <care/PackageEditor.h>

#include <functional>

/// Edits the catalogue for one word of the command line and returns a line about what it did. Throws
/// care::Refusal.
using PackageEdit = std::function<std::wstring(care::PackageEditor&, const std::wstring& word)>;

/// Applies `edit` to each word and writes the package, which is the first argument, in one step. Prints what
/// was done or the reason of a failure; returns the program's exit code.
int EditPackage(const Arguments& arguments, const std::wstring& operation,
                const std::vector<std::wstring>& words, const PackageEdit& edit);

/// The same for the words behind the package.
int EditPackage(const Arguments& arguments, const std::wstring& operation, const PackageEdit& edit);
