// A package folder with many linked documents that exist, for timing.
#pragma once

#include "TempFolder.h"

#include <string>
#include <vector>

/// `count` linked documents, a hundred to a folder, and the information file that lists them.
class CatalogueFolder {
public:
    explicit CatalogueFolder(int count);

    [[nodiscard]] std::wstring Path() const { return m_folder.PathWithSeparator(); }
    [[nodiscard]] const std::wstring& Folder() const { return m_folder.Path(); }
    [[nodiscard]] std::wstring InformationFile() const { return m_folder / L"mxinfo.ini"; }
    [[nodiscard]] const std::vector<std::wstring>& Documents() const { return m_documents; }

    /// Gives the information file a new last-write time well in the past, so that nobody's copy of it counts.
    void Touch();

private:
    TempFolder m_folder;
    std::vector<std::wstring> m_documents;
    int m_touches = 0;
};
