#include "package/NewInformation.h"

#include "common/InformationFile.h"
#include "common/NumberedSection.h"
#include "files/FileFailure.h"
#include "files/FileStamp.h"
#include "files/FileSystem.h"
#include "files/FolderPath.h"
#include "ini/IniDocument.h"
#include "package/HistoryEntry.h"
#include "text/SystemText.h"

#include <new>

namespace mxovshare {

namespace {

bool IsFile(const std::wstring& path) {
    const PathStatus status = StatusOfPath(path);
    return status.exists && !status.isFolder;
}

std::wstring FindInformation(const std::wstring& folder) {
    for (const wchar_t* name : {common::kInformationFile, common::kPrivateInformationFile}) {
        std::wstring path = JoinPath(folder, name);
        if (IsFile(path)) {
            return path;
        }
    }
    throw FileFailure(L"there is no mxinfo.ini in the folder \"" + folder + L"\"");
}

} // namespace

NewInformation::NewInformation(const std::wstring& folder, const std::wstring& operation,
                               const std::wstring& remarks)
    : m_path(FindInformation(folder)), m_values(NewHistoryEntry(operation, remarks)) {
    // Failed writes of earlier changes are retried first.
    DWORD error = IniStore::Instance().SetValues({}, {}, m_path).error;
    if (error == ERROR_SUCCESS) {
        m_file.emplace(m_path); // keeps other writers away from here on
        error = m_file->Error();
    }
    if (error == ERROR_SUCCESS) {
        const std::string bytes = Extended();
        if (m_file->Write(bytes.data(), bytes.size())) {
            m_size = bytes.size();
            GetSystemTimeAsFileTime(&m_modified);
            SetFileTime(m_file->Handle(), nullptr, nullptr, &m_modified);
        }
        error = m_file->Error();
    }
    if (error != ERROR_SUCCESS) {
        ThrowFileFailure(L"cannot write", m_path, error);
    }
}

Substitute NewInformation::ForPackage() const {
    return {
        .path = m_path, .content = AtomicFile::TemporaryPath(m_path), .size = m_size, .modified = m_modified};
}

void NewInformation::Commit() noexcept {
    try {
        if (!m_file->Commit()) { // other writers are not kept away any more, and may take the entry's number
            WriteEntry();
        }
    } catch (const std::bad_alloc&) {
        // The package is saved, and holds the entry.
    }
}

void NewInformation::WriteEntry() {
    IniStore& store = IniStore::Instance();
    const std::wstring section =
        common::NextSection(kHistoryPrefix, store.LastIndex(kHistoryPrefix, m_path),
                            [&] { return store.SectionNames(kHistoryPrefix, m_path); });
    store.SetValues(section, m_values, m_path);
}

std::string NewInformation::Extended() {
    const SystemText text;
    std::string bytes;
    FileStamp stamp;
    const DWORD error = ReadWholeFile(m_path, IniDocument::kMaxBytes, bytes, stamp);
    if (error != ERROR_SUCCESS) {
        ThrowFileFailure(L"cannot read", m_path, error);
    }
    IniDocument document(text, std::move(bytes), IniDocument::kMost);
    if (!document.IsComplete()) {
        ThrowFileFailure(L"cannot read", m_path, ERROR_FILE_TOO_LARGE);
    }
    AddHistoryEntry(document, m_values);
    return document.Bytes();
}

} // namespace mxovshare
