// The commands of the package command line. Each returns the program's exit code.
#pragma once

#include <string>

enum ExitCode : int {
    kDone = 0,
    kFailed = 1,
    kUsage = 2,
};

int Create(const std::wstring& folder, const std::wstring& file);
int List(const std::wstring& file);
int Extract(const std::wstring& file, const std::wstring& folder);
/// Verifies every entry without unpacking it to disk, prints the catalogue, warns about missing documents.
int Check(const std::wstring& file);
