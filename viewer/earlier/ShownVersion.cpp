#include "earlier/ShownVersion.h"

#include "common/Handles.h"
#include "common/Paths.h"
#include "package/Paths.h"
#include "texts/Texts.h"

#include <iterator>

namespace viewer {

namespace {

// Sortable, and without characters that file names cannot have.
std::wstring NameOfTime(const FILETIME& time) {
    SYSTEMTIME utc = {};
    SYSTEMTIME local = {};
    FileTimeToSystemTime(&time, &utc);
    SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
    wchar_t text[32] = L"";
    wsprintfW(text, L"%04u-%02u-%02u %02u.%02u.%02u", local.wYear, local.wMonth, local.wDay, local.wHour,
              local.wMinute, local.wSecond);
    return text;
}

} // namespace

std::wstring ShownName(const Version& version) {
    return Text(IDS_VERSION_NAME, {FileStem(version.package), NameOfTime(version.saved)});
}

mxovshare::PackageResult WriteShownVersion(const VersionStore& store, const Version& version,
                                           const std::wstring& folder, const std::wstring& file,
                                           WorkProgress& progress) {
    mxovshare::PackageResult result = store.Restore(version.package, version.files, folder, &progress);
    if (result.ok) {
        result = mxovshare::CreatePackage(folder, file, &progress);
    }
    if (result.ok && !version.files.empty()) {
        result = mxovshare::CopyWebMark(folder + L"\\" + version.files.front().name, file);
    }
    RemoveFolder(folder);
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    return result;
}

DWORD StartViewer(const std::wstring& package) {
    const std::wstring program = common::ModulePath(nullptr);
    std::wstring line = L"\"" + program + L"\" --language=" + mxovshare::OVApplication::mxLanguageName +
                        L" \"" + package + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process)) {
        return GetLastError();
    }
    const common::UniqueHandle thread(process.hThread);
    const common::UniqueHandle handle(process.hProcess);
    return ERROR_SUCCESS;
}

} // namespace viewer
