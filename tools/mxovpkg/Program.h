// The program behind its command line.
#pragma once

#include <string>
#include <vector>

/// Runs the command that the words are, which come behind the program's name. Returns the program's exit
/// code.
int RunProgram(const std::vector<std::wstring>& words);
