#include "mxovshare.h"

#include "common/InformationFile.h"
#include "common/NumberedSection.h"
#include "files/AtomicFile.h"
#include "files/FileFailure.h"
#include "files/FolderPath.h"
#include "files/LongPath.h"
#include "host/MessageBoxes.h"
#include "ini/IniDocument.h"
#include "ini/IniStore.h"
#include "pack/PackFolder.h"
#include "package/PackageErrors.h"
#include "package/ProgressWindow.h"
#include "package/UnpackedFolders.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <optional>
#include <vector>

#include <lmcons.h>

namespace mxovshare {

namespace {

constexpr wchar_t kHistory[] = L"FILE_HISTORY";

bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::wstring FindInformation(const std::wstring& folder) {
    for (const wchar_t* name : {common::kInformationFile, common::kPrivateInformationFile}) {
        std::wstring path = JoinPath(folder, name);
        if (IsFile(path)) {
            return path;
        }
    }
    throw FileFailure{L"there is no mxinfo.ini in the folder \"" + folder + L"\""};
}

std::wstring LocalTimeText() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"%d-%02d-%02d %02d:%02d:%02d", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return text;
}

std::wstring UserName() {
    wchar_t name[UNLEN + 1];
    DWORD size = static_cast<DWORD>(std::size(name));
    return GetUserNameW(name, &size) ? std::wstring(name) : std::wstring();
}

IniValues HistoryEntry(const std::wstring& operation) {
    return {{L"Operation", operation}, {L"Time", LocalTimeText()}, {L"By", UserName()}, {L"Remarks", L""}};
}

// The information file with a new history entry, as a file beside it that takes its place when the package
// has been saved: a save that does not come to its end leaves no entry.
class NewInformation {
public:
    NewInformation(const std::wstring& path, const std::wstring& operation)
        : m_path(path), m_values(HistoryEntry(operation)) {
        // What could not be written so far goes first.
        DWORD error = IniStore::Instance().SetValues({}, {}, path).error;
        if (error == ERROR_SUCCESS) {
            m_file.emplace(path); // from here on nobody else changes the information file
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
            ThrowFileFailure(L"cannot write", path, error);
        }
    }

    Substitute ForPackage() const {
        return {.path = m_path,
                .content = AtomicFile::TemporaryPath(m_path),
                .size = m_size,
                .modified = m_modified};
    }

    // Should the file have got locked meanwhile, the entry is kept and goes out with the next change.
    void Commit() {
        if (!m_file->Commit()) {
            IniStore::Instance().SetValues(m_section, m_values, m_path);
        }
    }

private:
    std::string Extended() {
        const SystemText text;
        std::string bytes;
        FileStamp stamp;
        const DWORD error = ReadWholeFile(m_path, IniDocument::kMaxBytes, bytes, stamp);
        if (error != ERROR_SUCCESS) {
            ThrowFileFailure(L"cannot read", m_path, error);
        }
        IniDocument document(text, std::move(bytes));
        const std::u16string prefix = ToUtf16(kHistory);
        m_section = common::NextSection(kHistory, document.LastIndex(prefix), [&] {
            std::vector<std::wstring> names;
            std::ranges::transform(document.SectionNames(prefix), std::back_inserter(names), ToWide);
            return names;
        });
        for (const auto& [key, value] : m_values) {
            document.SetValue(ToUtf16(m_section), ToUtf16(key), ToUtf16(value));
        }
        return document.Bytes();
    }

    std::wstring m_path;
    IniValues m_values;
    std::wstring m_section;
    std::optional<AtomicFile> m_file;
    std::uint64_t m_size = 0;
    FILETIME m_modified = {};
};

void Save(const std::wstring& folder, const std::wstring& file, const std::wstring& operation) {
    NewInformation information(FindInformation(folder), operation);
    const Substitute substitute = information.ForPackage();
    ProgressWindow progress(L"Saving " + file);
    PackFolder(folder, file, &progress, &substitute);
    information.Commit();
}

} // namespace

void Utils::ReGenerateOrvandoFile(std::wstring packageFolder, std::wstring packageFile, std::wstring text) {
    const PackageResult result = RunForResult(packageFile, [&] {
        ConfirmReplacement(packageFolder, packageFile);
        Save(packageFolder, packageFile, text);
    });
    RunForResult(packageFile, [&] {
        if (result.ok) {
            return;
        }
        const std::wstring reason = result.cancelled ? L"You cancelled it" : result.message;
        ShowError(L"The package \"" + packageFile + L"\" was not saved:\n\n" + reason +
                  L".\n\nThe package file is as it was before. Your changes are still in the open package.");
    });
    // Hosts look at it at any time: not before the user has read the message.
    RunForResult(packageFile, [&] { RecordSave(packageFolder, packageFile, result.ok); });
}

} // namespace mxovshare
