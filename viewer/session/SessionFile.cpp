#include "session/SessionFile.h"

#include "mxovshare.h"

namespace viewer {

namespace {

constexpr wchar_t kSection[] = L"SESSION";
constexpr wchar_t kPackageFile[] = L"PackageFile";
constexpr wchar_t kUnpacked[] = L"Unpacked";
constexpr wchar_t kStamp[] = L"Stamp";

common::UniqueHandle Hold(const std::wstring& path, DWORD disposition) {
    return common::OwnFile(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                       disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::wstring Line(const wchar_t* key, const std::wstring& value) {
    return std::wstring(key) + L"=" + value + L"\r\n";
}

std::wstring Header(const std::wstring& packageFile) {
    return L"\xFEFF[" + std::wstring(kSection) + L"]\r\n" + Line(kPackageFile, packageFile);
}

} // namespace

SessionFile SessionFile::Create(const std::wstring& folder, const std::wstring& packageFile) {
    SessionFile file(folder + kExtension, Hold(folder + kExtension, CREATE_NEW));
    if (file && !file.Write(Header(packageFile))) {
        const DWORD error = GetLastError();
        file.Remove();
        SetLastError(error);
    }
    return file;
}

SessionFile SessionFile::Open(const std::wstring& path) {
    return {path, Hold(path, OPEN_EXISTING)};
}

SessionFile::Content SessionFile::Read() const {
    const auto value = [this](const wchar_t* key) {
        return mxovshare::INIFile::GetKeyValueFromINI(kSection, key, m_path);
    };
    return {value(kPackageFile), value(kStamp), !value(kUnpacked).empty()};
}

void SessionFile::WriteUnpacked(const std::wstring& packageFile, const std::wstring& stamp) {
    SetFilePointer(m_file.get(), 0, nullptr, FILE_BEGIN);
    if (Write(Header(packageFile) + Line(kUnpacked, L"YES") + Line(kStamp, stamp))) {
        SetEndOfFile(m_file.get());
    }
    FlushFileBuffers(m_file.get());
}

void SessionFile::Remove() {
    m_file.reset();
    DeleteFileW(m_path.c_str());
}

bool SessionFile::Write(const std::wstring& text) {
    const auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    DWORD written = 0;
    return WriteFile(m_file.get(), text.data(), bytes, &written, nullptr) && written == bytes;
}

} // namespace viewer
