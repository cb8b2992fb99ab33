// The commands of the package command line. Each gives the program's exit code.
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
/// Unpacks nowhere: verifies every entry, shows the catalogue, warns about what it names and nobody finds.
int Check(const std::wstring& file);
