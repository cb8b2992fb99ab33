#include "versions/Version.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/Utf8.h"
#include "mxovinformation.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace viewer {

namespace {

constexpr wchar_t kVersion[] = L"VERSION";
constexpr wchar_t kFiles[] = L"FILES";
constexpr wchar_t kPackage[] = L"Package";
constexpr wchar_t kSaved[] = L"Saved";
constexpr wchar_t kBy[] = L"By";
constexpr wchar_t kOperation[] = L"Operation";
constexpr wchar_t kRemarks[] = L"Remarks";
constexpr wchar_t kCount[] = L"Count";
constexpr wchar_t kNewExtension[] = L".new";
constexpr wchar_t kFieldEnd = L'|'; // in no file name
constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";
constexpr std::size_t kIdLength = 16;
constexpr std::uint64_t kLongestList = std::uint64_t{64} << 20; // bytes

std::wstring Hexadecimal(std::uint64_t number, std::size_t digits) {
    std::wstring text(digits, L'0');
    for (std::size_t i = digits; i-- > 0; number >>= 4) {
        text[i] = L"0123456789ABCDEF"[number & 0xF];
    }
    return text;
}

// One line: control characters become blanks.
std::wstring KeyLine(const wchar_t* key, std::wstring value) {
    std::ranges::replace_if(
        value, [](wchar_t unit) { return unit < L' '; }, L' ');
    return std::wstring(key) + L"=\"" + value + L"\"\r\n"; // readers remove the quotes, and no others
}

std::wstring FileLine(const KeptFile& file, std::size_t number) {
    return std::to_wstring(number) + L'=' + file.contents + kFieldEnd + Hexadecimal(file.crc32, 8) +
           kFieldEnd + std::to_wstring(file.size) + kFieldEnd + file.name + L"\r\n";
}

std::string BytesOf(const Version& version) {
    std::wstring text = std::wstring(L"[") + kVersion + L"]\r\n" + KeyLine(kPackage, version.package) +
                        KeyLine(kSaved, VersionId(version.saved)) + KeyLine(kBy, version.by) +
                        KeyLine(kOperation, version.operation) + KeyLine(kRemarks, version.remarks) +
                        KeyLine(kCount, std::to_wstring(version.files.size())) + L"[" + kFiles + L"]\r\n";
    std::size_t number = 0;
    for (const KeptFile& file : version.files) {
        text += FileLine(file, ++number);
    }
    return kUtf8Mark + common::ToUtf8(text);
}

bool WriteAll(HANDLE file, const std::string& bytes) {
    DWORD written = 0;
    return WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size() && FlushFileBuffers(file);
}

DWORD WriteNew(const std::wstring& path, const std::string& bytes) {
    const common::UniqueHandle file = common::OwnFile(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file && WriteAll(file.get(), bytes)) {
        return ERROR_SUCCESS;
    }
    const DWORD error = GetLastError();
    return error == ERROR_SUCCESS ? ERROR_DISK_FULL : error;
}

std::optional<std::string> ReadList(const std::wstring& path) {
    const common::UniqueHandle file =
        common::OwnFile(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size = {};
    if (!file || !GetFileSizeEx(file.get(), &size) ||
        static_cast<std::uint64_t>(size.QuadPart) > kLongestList) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD count = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) ||
        count != bytes.size()) {
        return std::nullopt;
    }
    return bytes;
}

// The text up to the next mark, which is removed with it.
std::wstring TakeField(std::wstring& text) {
    const std::size_t end = std::min(text.find(kFieldEnd), text.size());
    std::wstring field = text.substr(0, end);
    text.erase(0, end + 1);
    return field;
}

bool ParseFile(std::wstring text, KeptFile& file) {
    file.contents = TakeField(text);
    file.crc32 = static_cast<std::uint32_t>(std::wcstoul(TakeField(text).c_str(), nullptr, 16));
    file.size = std::wcstoull(TakeField(text).c_str(), nullptr, 10);
    file.name = std::move(text);
    return IsVersionId(file.contents) && !file.name.empty();
}

bool ParseFiles(const mxovshare::Information& list, std::vector<KeptFile>& files) {
    const std::optional<mxovshare::InformationSection> section = list.Find(kFiles);
    for (const auto& [key, value] : section ? section->values : decltype(section->values)()) {
        if (!ParseFile(value, files.emplace_back())) {
            return false;
        }
    }
    return list.Value(kVersion, kCount) == std::to_wstring(files.size());
}

} // namespace

std::wstring VersionId(const FILETIME& time) {
    return Hexadecimal(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime, kIdLength);
}

FILETIME TimeOfId(const std::wstring& id) {
    const std::uint64_t time = std::wcstoull(id.c_str(), nullptr, 16);
    return {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
}

bool IsVersionId(const std::wstring& text) {
    return text.size() == kIdLength && text.find_first_not_of(L"0123456789ABCDEF") == std::wstring::npos;
}

DWORD WriteVersion(const std::wstring& folder, const Version& version) {
    const std::wstring path = common::LongPath(folder + L"\\" + version.id + kListExtension);
    const std::wstring written = path + kNewExtension;
    if (const DWORD error = WriteNew(written, BytesOf(version))) {
        DeleteFileW(written.c_str());
        return error;
    }
    return MoveFileExW(written.c_str(), path.c_str(), MOVEFILE_WRITE_THROUGH) ? ERROR_SUCCESS
                                                                              : GetLastError();
}

bool ReadVersion(const std::wstring& folder, const std::wstring& id, Version& version) {
    std::optional<std::string> bytes = ReadList(common::LongPath(folder + L"\\" + id + kListExtension));
    mxovshare::Information list;
    if (!bytes || !list.Parse(std::move(*bytes))) {
        return false;
    }
    version = {};
    version.id = id;
    version.package = list.Value(kVersion, kPackage);
    version.saved = TimeOfId(list.Value(kVersion, kSaved));
    version.by = list.Value(kVersion, kBy);
    version.operation = list.Value(kVersion, kOperation);
    version.remarks = list.Value(kVersion, kRemarks);
    return ParseFiles(list, version.files);
}

} // namespace viewer
