// A package folder of 200 files and 100 MB for timing: half text, half random bytes.
#pragma once

#include "TempFolder.h"

#include <string>
#include <vector>

class PackageFolder {
public:
    PackageFolder();

    [[nodiscard]] std::wstring Path() const { return m_folder.Path(); }
    /// The documents' paths relative to the folder.
    [[nodiscard]] const std::vector<std::wstring>& Names() const { return m_names; }
    /// Gives the first document, which is text, a content that it did not have before.
    void ChangeOne();

private:
    TempFolder m_folder;
    std::vector<std::wstring> m_names;
    unsigned m_changes = 0;
};
