// What the user asked for on the command line.
#pragma once

#include <string>
#include <vector>

namespace viewer {

struct CommandLine {
    std::wstring package;  ///< full path of the package to open; empty for none
    std::wstring language; ///< name of the language; empty for the default
    bool help = false;     ///< asked for the usage text
    std::wstring error;    ///< why the line cannot be understood; empty when it can
};

/// The text that explains the command line.
[[nodiscard]] std::wstring UsageText();

/// Reads the arguments that follow the program's name. A relative package is taken from the current folder.
[[nodiscard]] CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments);

} // namespace viewer
