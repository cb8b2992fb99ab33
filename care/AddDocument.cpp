#include "care/Documents.h"
#include "common/LongPath.h"
#include "common/Paths.h"

#include <package/CatalogueLoader.h>
#include <package/PackageInformation.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

constexpr wchar_t kUsualGCode[] = L"GCode\\";
constexpr wchar_t kUsualSheets[] = L"SetupSheets\\";

class DocumentAdder {
public:
    DocumentAdder(PackageEditor& editor, const NewDocument& document)
        : m_editor(editor), m_document(document), m_time(DateOfFile(document.path)) {}

    std::wstring Add() {
        switch (m_document.kind) {
        case DocumentKind::Copy:
            return AddCopy();
        case DocumentKind::Link:
            return AddLink();
        case DocumentKind::Part:
            return SetPart();
        case DocumentKind::GCode:
            return AddToList(inikey::kGCode, inikey::kGCodeDescription, kUsualGCode);
        default:
            return AddSheet();
        }
    }

private:
    std::wstring FullPath() const { return common::FullPath(m_document.path); }

    std::wstring AddCopy() {
        const std::wstring name = Pack(kCopiesFolder);
        AddSection(name, true);
        return name;
    }

    std::wstring AddLink() {
        const std::wstring path = FullPath();
        AddSection(path, false);
        return path;
    }

    std::wstring SetPart() {
        const std::wstring path = FullPath();
        m_editor.SetKey(inikey::kFileInfo, inikey::kCadPath, path);
        m_editor.SetKey(inikey::kFileInfo, inikey::kCadTime, m_time);
        Describe(inikey::kFileInfo, inikey::kCadDescription);
        return path;
    }

    std::wstring AddSheet() {
        if (!IsSetupSheet(LastName(m_document.path))) {
            throw Refusal{L"cannot add \"" + m_document.path +
                          L"\": a setup sheet is a .xml, .doc, .pdf, .xls or .html file"};
        }
        return AddToList(inikey::kSetupSheets, inikey::kSetupSheetsDescription, kUsualSheets);
    }

    // The key lists every G-code file, but one of the setup sheets.
    std::wstring AddToList(const wchar_t* key, const wchar_t* descriptionKey, const wchar_t* usualFolder) {
        const std::wstring list = m_editor.FileInfo(key);
        const std::wstring name = Pack(FolderOfList(list, usualFolder));
        if (list.empty()) {
            m_editor.SetKey(inikey::kFileInfo, key, name);
        } else if (key == inikey::kGCode && !IsListed(list, name)) {
            m_editor.SetKey(inikey::kFileInfo, key, list + L";" + name);
        }
        Describe(inikey::kFileInfo, descriptionKey);
        return name;
    }

    static bool IsListed(const std::wstring& list, const std::wstring& name) {
        const std::wstring padded = L";" + list + L";";
        const std::wstring wanted = L";" + name + L";";
        for (std::size_t i = 0; i + wanted.size() <= padded.size(); ++i) {
            if (common::IsSamePath(std::wstring_view(padded).substr(i, wanted.size()), wanted)) {
                return true;
            }
        }
        return false;
    }

    std::wstring Pack(const std::wstring& folder) {
        std::wstring name = folder + LastName(m_document.path);
        const std::wstring present = m_editor.FindFile(name);
        if (!present.empty()) {
            RequireReplacing(present);
            name = present;
        }
        m_editor.AddFile(name, m_document.path);
        return name;
    }

    void RequireReplacing(const std::wstring& path) const {
        if (!m_document.replaces) {
            throw Refusal{L"cannot add \"" + m_document.path + L"\": the package already has \"" + path +
                          L"\"; --replace replaces it"};
        }
    }

    void AddSection(const std::wstring& path, bool isCopy) {
        const Sections& sections = m_editor.Information();
        const auto present = std::ranges::find_if(sections, [&](const Section& section) {
            return IsAdditional(section) && IsCopy(section) == isCopy &&
                   common::IsSamePath(ValueOf(section, inikey::kFilePath), path);
        });
        if (present != sections.end()) {
            RequireReplacing(path);
            const std::wstring section = (*present).name;
            m_editor.SetKey(section, inikey::kTimestamp, m_time);
            Describe(section.c_str(), inikey::kDescription);
            return;
        }
        const Document added = {.section = NextSection(sections, inikey::kAdditionalPrefix),
                                .isCopy = isCopy,
                                .description =
                                    m_document.hasDescription ? m_document.description : kNoDescription,
                                .timestamp = m_time,
                                .path = path};
        for (const mxovshare::InformationChange& change : KeysOf(added)) {
            m_editor.SetKey(change.section, change.key, change.value);
        }
    }

    void Describe(const wchar_t* section, const wchar_t* key) {
        if (m_document.hasDescription) {
            m_editor.SetKey(section, key, m_document.description);
        }
    }

    PackageEditor& m_editor;
    const NewDocument& m_document;
    std::wstring m_time;
};

} // namespace

std::wstring AddDocument(PackageEditor& editor, const NewDocument& document) {
    return DocumentAdder(editor, document).Add();
}

} // namespace care
