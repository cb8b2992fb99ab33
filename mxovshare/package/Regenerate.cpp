#include "mxovshare.h"

#include "host/LongPath.h"
#include "ini/IniStore.h"
#include "package/FolderPath.h"
#include "package/Notice.h"
#include "package/PackageWork.h"
#include "package/PackFolder.h"
#include "package/ProgressWindow.h"

#include <cwchar>

#include <lmcons.h>

namespace mxovshare {

namespace {

constexpr wchar_t kHistory[] = L"FILE_HISTORY";

bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::wstring FindInformation(const std::wstring& folder) {
    for (const wchar_t* name : {L"mxinfo.ini", L"Private\\mxinfo.ini"}) {
        std::wstring path = JoinPath(folder, name);
        if (IsFile(path))
            return path;
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

// A new history section, taken back again unless it is kept.
class HistoryEntry {
public:
    HistoryEntry(const std::wstring& operation, const std::wstring& information)
        : m_information(information) {
        IniStore& store = IniStore::Instance();
        m_section =
            std::wstring(kHistory) + L"_" + std::to_wstring(store.LastIndex(kHistory, information) + 1);
        const DWORD error = store.SetValues(
            m_section,
            {{L"Operation", operation}, {L"Time", LocalTimeText()}, {L"By", UserName()}, {L"Remarks", L""}},
            information);
        if (error != ERROR_SUCCESS) {
            TakeBack();
            ThrowFileFailure(L"cannot write", information, error);
        }
    }
    ~HistoryEntry() {
        if (!m_kept)
            TakeBack();
    }
    HistoryEntry(const HistoryEntry&) = delete;
    HistoryEntry& operator=(const HistoryEntry&) = delete;

    void Keep() { m_kept = true; }

private:
    void TakeBack() const { INIFile::RemoveSectionFromINI(m_section, m_information); }

    std::wstring m_information;
    std::wstring m_section;
    bool m_kept = false;
};

void Save(const std::wstring& folder, const std::wstring& file, const std::wstring& operation) {
    HistoryEntry entry(operation, FindInformation(folder));
    ProgressWindow progress(L"Saving " + file);
    PackFolder(folder, file, &progress);
    entry.Keep();
}

} // namespace

void Utils::ReGenerateOrvandoFile(std::wstring packageFolder, std::wstring packageFile, std::wstring text) {
    const PackageResult result = RunPackageWork(packageFile, [&] { Save(packageFolder, packageFile, text); });
    if (result.ok)
        return;
    RunPackageWork(packageFile, [&] {
        const std::wstring reason = result.cancelled ? L"You cancelled it" : result.message;
        TellUser(L"The package \"" + packageFile + L"\" was not saved:\n\n" + reason +
                 L".\n\nThe package file is as it was before. Your changes are still in the open package.");
    });
}

} // namespace mxovshare
