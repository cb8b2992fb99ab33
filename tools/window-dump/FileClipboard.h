// Files and text on the clipboard.
#pragma once

#include <string>
#include <vector>

/// Puts the files of these UTF-8 paths on the clipboard. Throws std::runtime_error.
void CopyFiles(const std::vector<std::string>& paths);

/// The text on the clipboard in UTF-8; empty when it holds none. Throws std::runtime_error.
std::string ClipboardText();
