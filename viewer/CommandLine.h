// What the user asked for on the command line.
#pragma once

#include <string>
#include <vector>

namespace viewer {

struct CommandLine {
    std::wstring package;     ///< full path of the package to open; empty for none
    std::wstring language;    ///< name of the language; empty for the default
    bool help = false;        ///< asked for the usage text
    unsigned error = 0;       ///< number of the text why the line cannot be understood; 0 when it can
    std::wstring wrongOption; ///< what that text names
};

/// The text that explains the command line.
[[nodiscard]] std::wstring UsageText();

/// Why a command line cannot be understood; empty when it can.
[[nodiscard]] std::wstring ErrorText(const CommandLine& line);

/// Reads the arguments that follow the program's name. A relative package is taken from the current folder.
[[nodiscard]] CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments);

} // namespace viewer
