#include "package/AddedDocument.h"

#include "common/Paths.h"
#include "common/SystemError.h"
#include "mxovshare.h"
#include "package/CopyName.h"
#include "package/ItemText.h"
#include "package/PackageInformation.h"
#include "package/Paths.h"
#include "texts/Texts.h"

#include <algorithm>

#include <windows.h>

namespace viewer {

namespace {

using mxovshare::INIFile;
namespace inikey = docview::inikey;

// A new folder of this process among the temporary files; empty when none can be created.
std::wstring MakeTemporaryFolder() {
    wchar_t base[MAX_PATH + 1] = L"";
    wchar_t path[MAX_PATH] = L"";
    if (!GetTempPathW(ARRAYSIZE(base), base) || !GetTempFileNameW(base, L"mxv", 0, path)) {
        return {};
    }
    DeleteFileW(path);
    return CreateDirectoryW(path, nullptr) ? path : std::wstring();
}

// Whether a file exists and has the last write of this text. A copy has that of what it was made from.
bool HasTime(const std::wstring& file, const std::wstring& time) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    return GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data) &&
           FormatFileTime(data.ftLastWriteTime) == time;
}

} // namespace

AddedDocumentRepair::AddedDocumentRepair(std::wstring folder)
    : m_folder(std::move(folder)), m_information(docview::FindInformationFile(m_folder)),
      m_before(Sections()) {
    CreateDirectoryW((m_folder + docview::kCopiesFolder).c_str(), nullptr);
    KeepCopies();
}

AddedDocumentRepair::~AddedDocumentRepair() {
    if (!m_kept.empty()) {
        RemoveFolder(m_kept);
    }
    RemoveDirectoryW((m_folder + docview::kCopiesFolder).c_str()); // when it is empty
}

std::optional<AddedDocument> AddedDocumentRepair::Find() const {
    const std::vector<std::wstring> now = Sections();
    const auto added = std::ranges::find_if(now, [this](const std::wstring& section) {
        return std::ranges::find(m_before, section) == m_before.end();
    });
    if (added == now.end()) {
        return std::nullopt;
    }
    const std::wstring path = Value(*added, inikey::kFilePath);
    AddedDocument document = {*added, FileName(path), AddedDocument::State::Sound};
    if (Value(*added, inikey::kIsReferenced) != L"NO") {
        return document;
    }
    if (!HasTime(m_folder + path, Value(*added, inikey::kTimestamp))) {
        document.state = AddedDocument::State::NotCopied;
    } else if (!SharersOf(*added).empty()) {
        document.state = AddedDocument::State::Shared;
    }
    return document;
}

std::wstring AddedDocumentRepair::KeepBoth(const AddedDocument& document) const {
    const std::wstring copies = m_folder + docview::kCopiesFolder;
    const std::wstring name = FreeCopyName(copies, document.name);
    if (!MoveFileW((copies + document.name).c_str(), (copies + name).c_str())) {
        return Text(IDS_KEEP_FAILED, {document.name, common::SystemErrorText(GetLastError())});
    }
    INIFile::AddRecordToINI(document.section, inikey::kFilePath, docview::kCopiesFolder + name,
                            m_information);
    return Restore(document.name);
}

void AddedDocumentRepair::Replace(const AddedDocument& document) const {
    for (const std::wstring& section : SharersOf(document.section)) {
        INIFile::AddRecordToINI(section, inikey::kTimestamp, Value(document.section, inikey::kTimestamp),
                                m_information);
    }
    INIFile::RemoveSectionFromINI(document.section, m_information);
}

std::wstring AddedDocumentRepair::Undo(const AddedDocument& document) const {
    INIFile::RemoveSectionFromINI(document.section, m_information);
    return document.state == AddedDocument::State::Shared ? Restore(document.name) : std::wstring();
}

std::wstring AddedDocumentRepair::Value(const std::wstring& section, const wchar_t* key) const {
    return INIFile::GetKeyValueFromINI(section, key, m_information);
}

std::vector<std::wstring> AddedDocumentRepair::Sections() const {
    return INIFile::GetSectionNamesFromINI(inikey::kAdditionalPrefix, m_information);
}

// The other documents whose copy is the file of this one.
std::vector<std::wstring> AddedDocumentRepair::SharersOf(const std::wstring& section) const {
    std::vector<std::wstring> sharers = m_before;
    const std::wstring path = Value(section, inikey::kFilePath);
    std::erase_if(sharers, [&](const std::wstring& other) {
        return Value(other, inikey::kIsReferenced) != L"NO" ||
               !common::IsSamePath(Value(other, inikey::kFilePath), path);
    });
    return sharers;
}

std::wstring AddedDocumentRepair::Restore(const std::wstring& name) const {
    const std::wstring target = m_folder + docview::kCopiesFolder + name;
    if (m_kept.empty() || !CopyFileW((m_kept + L"\\" + name).c_str(), target.c_str(), FALSE)) {
        return Text(IDS_RESTORE_FAILED, {name, common::SystemErrorText(GetLastError())});
    }
    return {};
}

void AddedDocumentRepair::KeepCopies() {
    const std::wstring copies = m_folder + docview::kCopiesFolder;
    for (const FolderEntry& entry : EntriesOf(copies)) {
        if (m_kept.empty()) {
            m_kept = MakeTemporaryFolder();
        }
        if (!m_kept.empty() && !entry.isFolder) {
            CopyFileW((copies + entry.name).c_str(), (m_kept + L"\\" + entry.name).c_str(), TRUE);
        }
    }
}

} // namespace viewer
