#include "care/Documents.h"
#include "common/Paths.h"

#include <package/CatalogueLoader.h>
#include <package/PackageInformation.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

// A document that can be removed. The key is that of the list that shows a file of a folder.
struct Removable {
    std::wstring section;
    std::wstring path;
    const wchar_t* key;
};

std::vector<Removable> DocumentsOf(const PackageEditor& editor) {
    std::vector<Removable> documents;
    if (const std::wstring part = editor.FileInfo(inikey::kCadPath); !part.empty()) {
        documents.push_back({inikey::kFileInfo, part, inikey::kCadPath});
    }
    for (const wchar_t* key : {inikey::kGCode, inikey::kSetupSheets}) {
        const std::wstring list = editor.FileInfo(key);
        if (FirstEntry(list).empty()) {
            continue;
        }
        for (const std::wstring& name : editor.FilesIn(FolderOfList(list, {}))) {
            if (key == inikey::kGCode || IsSetupSheet(name)) {
                documents.push_back({inikey::kFileInfo, name, key});
            }
        }
    }
    for (const Section& section : editor.Information()) {
        if (IsAdditional(section)) {
            documents.push_back({section.name, ValueOf(section, inikey::kFilePath), inikey::kFilePath});
        }
    }
    return documents;
}

bool IsNamed(const Removable& document, const std::wstring& word) {
    const bool hasSection = document.key == inikey::kFilePath;
    return common::IsSamePath(document.path, word) ||
           (hasSection &&
            (common::IsSamePath(document.section, word) ||
             common::IsSamePath(document.section, std::wstring(inikey::kAdditionalPrefix) + L"_" + word)));
}

Removable Find(const PackageEditor& editor, const std::wstring& word) {
    const std::vector<Removable> documents = DocumentsOf(editor);
    std::vector<Removable> found;
    std::ranges::copy_if(documents, std::back_inserter(found),
                         [&word](const Removable& document) { return IsNamed(document, word); });
    if (found.empty()) {
        std::ranges::copy_if(documents, std::back_inserter(found), [&word](const Removable& document) {
            return common::IsSamePath(LastName(document.path), word);
        });
    }
    if (found.empty()) {
        throw Refusal{L"the package has no document \"" + word + L"\""};
    }
    if (found.size() > 1) {
        throw Refusal{L"\"" + word + L"\" names " + std::to_wstring(found.size()) +
                      L" documents; give the section or the path"};
    }
    return found.front();
}

void RemoveAdditional(PackageEditor& editor, const Removable& document) {
    const bool isCopy = IsCopy(*editor.Information().Find(document.section));
    editor.RemoveSection(document.section);
    const bool isShown = std::ranges::any_of(editor.Information(), [&document](const Section& section) {
        return IsAdditional(section) && IsCopy(section) &&
               common::IsSamePath(ValueOf(section, inikey::kFilePath), document.path);
    });
    if (isCopy && !isShown) {
        editor.RemoveFile(document.path);
    }
}

// The list keeps naming the folder while files are left in it.
void RemoveFromList(PackageEditor& editor, const Removable& document) {
    const std::wstring folder = FolderOfList(editor.FileInfo(document.key), {});
    std::wstring list;
    for (const std::wstring& entry : EntriesOfList(editor.FileInfo(document.key))) {
        if (!entry.empty() && !common::IsSamePath(entry, document.path)) {
            list += (list.empty() ? L"" : L";") + entry;
        }
    }
    editor.RemoveFile(document.path);
    const std::vector<std::wstring> left = editor.FilesIn(folder);
    if (list.empty() && !left.empty()) {
        list = left.front();
    }
    editor.SetKey(inikey::kFileInfo, document.key, list);
}

} // namespace

void RemovePart(PackageEditor& editor) {
    for (const wchar_t* key : {inikey::kCadPath, inikey::kCadTime, inikey::kCadDescription}) {
        editor.SetKey(inikey::kFileInfo, key, {});
    }
}

std::wstring RemoveDocument(PackageEditor& editor, const std::wstring& word) {
    const Removable document = Find(editor, word);
    if (document.key == inikey::kFilePath) {
        RemoveAdditional(editor, document);
    } else if (document.key == inikey::kCadPath) {
        RemovePart(editor);
    } else {
        RemoveFromList(editor, document);
    }
    return document.path;
}

} // namespace care
