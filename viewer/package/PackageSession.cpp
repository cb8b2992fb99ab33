#include "package/PackageSession.h"

#include "common/SystemError.h"
#include "package/Paths.h"

#include <filesystem>

namespace viewer {

namespace {

constexpr wchar_t kSessionExtension[] = L".session";
constexpr wchar_t kSection[] = L"SESSION";
constexpr wchar_t kPackageFile[] = L"PackageFile";
constexpr wchar_t kUnpacked[] = L"Unpacked";
constexpr wchar_t kStamp[] = L"Stamp";
constexpr int kMostSessions = 10000;

// The folder of all sessions, without a separator at the end.
std::wstring SessionsFolder() {
    wchar_t temporary[MAX_PATH + 1] = L"";
    GetTempPathW(ARRAYSIZE(temporary), temporary);
    return std::wstring(temporary) + L"MXOVViewer";
}

// Other programs can read a held session file but not open it for writing.
common::UniqueHandle HoldSessionFile(const std::wstring& path, DWORD disposition) {
    return common::OwnFile(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                       disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::wstring Line(const wchar_t* key, const std::wstring& value) {
    return std::wstring(key) + L"=" + value + L"\r\n";
}

// Writes from where the file stands.
bool WriteText(HANDLE file, const std::wstring& text) {
    const auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    DWORD written = 0;
    return WriteFile(file, text.data(), bytes, &written, nullptr) && written == bytes;
}

bool WriteSessionFile(HANDLE file, const std::wstring& packageFile) {
    return WriteText(file, L"\xFEFF[" + std::wstring(kSection) + L"]\r\n" + Line(kPackageFile, packageFile));
}

// Listed to the end, because a folder that is being listed cannot be removed.
std::vector<std::wstring> SessionFiles() {
    std::vector<std::wstring> paths;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(SessionsFolder(), ignored)) {
        if (entry.path().extension() == kSessionExtension) {
            paths.push_back(entry.path().wstring());
        }
    }
    return paths;
}

} // namespace

std::unique_ptr<PackageSession> PackageSession::Create(const std::wstring& packageFile, std::wstring& error) {
    const std::wstring sessions = SessionsFolder();
    CreateDirectoryW(sessions.c_str(), nullptr);
    for (int number = 1; number <= kMostSessions; ++number) {
        const std::wstring folder =
            sessions + L"\\" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(number);
        if (GetFileAttributesW(folder.c_str()) != INVALID_FILE_ATTRIBUTES) {
            continue;
        }
        const std::wstring sessionPath = folder + kSessionExtension;
        common::UniqueHandle sessionFile = HoldSessionFile(sessionPath, CREATE_NEW);
        if (!sessionFile && GetLastError() == ERROR_FILE_EXISTS) {
            continue;
        }
        if (!sessionFile || !WriteSessionFile(sessionFile.get(), packageFile)) {
            error = L"The temporary folder " + sessions + L" cannot be used: " +
                    common::SystemErrorText(GetLastError()) + L".";
            if (sessionFile) {
                sessionFile.reset();
                DeleteFileW(sessionPath.c_str());
            }
            return nullptr;
        }
        return std::unique_ptr<PackageSession>(
            new PackageSession(packageFile, folder, std::move(sessionFile)));
    }
    error = L"The temporary folder " + sessions + L" is full of abandoned packages.";
    return nullptr;
}

void PackageSession::RemoveLeftovers() noexcept {
    try {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(SessionsFolder(), ignored)) {
            const std::wstring path = entry.path().wstring();
            if (entry.is_directory(ignored) && !FileExists(path + kSessionExtension)) {
                RemoveFolder(path);
            }
        }
    } catch (...) {
        // The next start retries.
        return;
    }
}

std::vector<std::unique_ptr<PackageSession>> PackageSession::TakeOver() noexcept {
    std::vector<std::unique_ptr<PackageSession>> sessions;
    try {
        for (const std::wstring& path : SessionFiles()) {
            common::UniqueHandle file = HoldSessionFile(path, OPEN_EXISTING);
            if (!file) {
                continue; // of a running viewer
            }
            const auto value = [&path](const wchar_t* key) {
                return mxovshare::INIFile::GetKeyValueFromINI(kSection, key, path);
            };
            std::unique_ptr<PackageSession> session(
                new PackageSession(value(kPackageFile), path.substr(0, path.rfind(L'.')), std::move(file)));
            session->m_stamp = value(kStamp);
            if (!value(kUnpacked).empty() && FolderExists(session->Folder())) {
                sessions.push_back(std::move(session));
            }
        }
    } catch (...) {
        // The next start retries.
        for (const auto& session : sessions) {
            session->Keep();
        }
        sessions.clear();
    }
    return sessions;
}

PackageSession::PackageSession(std::wstring packageFile, std::wstring folder,
                               common::UniqueHandle sessionFile)
    : m_packageFile(std::move(packageFile)), m_folder(std::move(folder)),
      m_sessionFile(std::move(sessionFile)) {}

void PackageSession::Record(const std::wstring& stamp) {
    if (stamp == m_stamp && !stamp.empty()) {
        return;
    }
    m_stamp = stamp;
    mxovshare::ListPackage(m_packageFile, m_entries);
    SetFilePointer(m_sessionFile.get(), 0, nullptr, FILE_BEGIN);
    if (WriteSessionFile(m_sessionFile.get(), m_packageFile) &&
        WriteText(m_sessionFile.get(), Line(kUnpacked, L"YES") + Line(kStamp, stamp))) {
        SetEndOfFile(m_sessionFile.get());
    }
    FlushFileBuffers(m_sessionFile.get());
}

bool PackageSession::RecordSave() {
    const std::wstring stamp = mxovshare::StampOfFolder(m_folder);
    const bool isNew = stamp != m_stamp;
    Record(stamp);
    return isNew;
}

void PackageSession::Resume() {
    mxovshare::ResumeFolder(m_folder, m_packageFile, m_stamp);
    mxovshare::ListPackage(m_packageFile, m_entries);
}

PackageSession::~PackageSession() {
    if (m_keep) {
        return;
    }
    // The session file goes first: what cannot be removed now then counts as no longer needed.
    m_sessionFile.reset();
    DeleteFileW((m_folder + kSessionExtension).c_str());
    RemoveFolder(m_folder);
    RemoveDirectoryW(m_folder.substr(0, m_folder.find_last_of(L'\\')).c_str());
}

} // namespace viewer
