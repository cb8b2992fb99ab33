#include "PackageSession.h"

#include "Paths.h"

#include <filesystem>

namespace {

constexpr wchar_t kSessionExtension[] = L".session";
constexpr int kMostSessions = 10000;

// The folder of all sessions, without a separator at the end.
std::wstring SessionsFolder() {
    wchar_t temporary[MAX_PATH + 1] = L"";
    GetTempPathW(ARRAYSIZE(temporary), temporary);
    return std::wstring(temporary) + L"MXOVViewer";
}

// Others may read a held session file, but nobody else can open it for writing.
UniqueHandle CreateSessionFile(const std::wstring& path) {
    return OwnFile(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                               CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool WriteSessionFile(HANDLE file, const std::wstring& packageFile) {
    const std::wstring text = L"\xFEFF[SESSION]\r\nPackageFile=" + packageFile + L"\r\n";
    const auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    DWORD written = 0;
    return WriteFile(file, text.data(), bytes, &written, nullptr) && written == bytes;
}

} // namespace

std::unique_ptr<PackageSession> PackageSession::Create(const std::wstring& packageFile, std::wstring& error) {
    const std::wstring sessions = SessionsFolder();
    CreateDirectoryW(sessions.c_str(), nullptr);
    for (int number = 1; number <= kMostSessions; ++number) {
        const std::wstring folder =
            sessions + L"\\" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(number);
        if (GetFileAttributesW(folder.c_str()) != INVALID_FILE_ATTRIBUTES)
            continue;
        const std::wstring sessionPath = folder + kSessionExtension;
        UniqueHandle sessionFile = CreateSessionFile(sessionPath);
        if (!sessionFile && GetLastError() == ERROR_FILE_EXISTS)
            continue;
        if (!sessionFile || !WriteSessionFile(sessionFile.get(), packageFile)) {
            error = L"The temporary folder " + sessions + L" cannot be used: " + ErrorText(GetLastError());
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
            if (entry.is_directory(ignored) && !FileExists(path + kSessionExtension))
                RemoveFolder(path);
        }
    } catch (...) {
        // What cannot be listed now is tried again at the next start.
        return;
    }
}

PackageSession::PackageSession(std::wstring packageFile, std::wstring folder, UniqueHandle sessionFile)
    : m_packageFile(std::move(packageFile)), m_folder(std::move(folder)),
      m_sessionFile(std::move(sessionFile)) {}

PackageSession::~PackageSession() {
    // First the file: without it, whatever cannot be removed now is known to be finished with.
    m_sessionFile.reset();
    DeleteFileW((m_folder + kSessionExtension).c_str());
    RemoveFolder(m_folder);
    RemoveDirectoryW(m_folder.substr(0, m_folder.find_last_of(L'\\')).c_str());
}
