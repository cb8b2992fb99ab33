#include "IniReaders.h"

#include "common/Handles.h"
#include "mxovshare.h"

#define SI_IMPLEMENTATION // Debian's header leaves the definitions out without it
#include <SimpleIni.h>

#include <cwchar>
#include <string_view>
#include <unordered_map>

namespace readers {

namespace {

constexpr const wchar_t* kKeys[] = {L"FilePath", L"Timestamp", L"Description", L"IsReferencedFile"};
constexpr const char* kNarrowKeys[] = {"FilePath", "Timestamp", "Description", "IsReferencedFile"};

std::string ReadBytes(const std::wstring& file) {
    const common::UniqueHandle handle = common::OwnFile(
        CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    std::string bytes(GetFileSize(handle.get(), nullptr), '\0');
    DWORD read = 0;
    ReadFile(handle.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    return bytes;
}

std::wstring Section(int number) {
    return L"REFERANCE_FILE_" + std::to_wstring(number);
}

} // namespace

size_t ScanBytes(const std::wstring& file) {
    const std::string bytes = ReadBytes(file);
    size_t lines = 0;
    for (size_t end = bytes.find('\n'); end != bytes.npos; end = bytes.find('\n', end + 1)) {
        ++lines;
    }
    return lines;
}

size_t PlainIndex(const std::wstring& file, int count) {
    const std::string bytes = ReadBytes(file);
    std::unordered_map<std::string, std::string_view> values;
    std::string_view rest = bytes;
    std::string section;
    while (!rest.empty()) {
        const size_t end = std::min(rest.find("\r\n"), rest.size());
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 2, rest.size()));
        if (line.starts_with('[')) {
            section = std::string(line.substr(1, line.size() - 2)) + '\n';
        } else if (const size_t equals = line.find('='); equals != line.npos) {
            values.emplace(section + std::string(line.substr(0, equals)), line.substr(equals + 1));
        }
    }
    size_t found = 0;
    for (int i = 1; i <= count; ++i) {
        const std::string name = "REFERANCE_FILE_" + std::to_string(i) + '\n';
        for (const char* key : kNarrowKeys) {
            found += values.at(name + key).size();
        }
    }
    return found;
}

size_t SimpleIni(const std::wstring& file, int count) {
    CSimpleIniW ini(true);
    ini.LoadFile(file.c_str());
    size_t found = 0;
    for (int i = 1; i <= count; ++i) {
        const std::wstring section = Section(i);
        for (const wchar_t* key : kKeys) {
            found += std::wcslen(ini.GetValue(section.c_str(), key, L""));
        }
    }
    return found;
}

size_t ProfileFunctions(const std::wstring& file, int count) {
    size_t found = 0;
    wchar_t value[1024];
    for (int i = 1; i <= count; ++i) {
        const std::wstring section = Section(i);
        for (const wchar_t* key : kKeys) {
            found +=
                GetPrivateProfileStringW(section.c_str(), key, L"", value, ARRAYSIZE(value), file.c_str());
        }
    }
    return found;
}

size_t SharedLibrary(const std::wstring& file, int count) {
    size_t found = mxovshare::INIFile::GetSectionNamesFromINI(L"REFERANCE_FILE", file).size() -
                   static_cast<size_t>(count);
    for (int i = 1; i <= count; ++i) {
        const std::wstring section = Section(i);
        for (const wchar_t* key : kKeys) {
            found += mxovshare::INIFile::GetKeyValueFromINI(section, key, file).size();
        }
    }
    return found;
}

size_t SharedLibraryIndex(const std::wstring& file) {
    return mxovshare::INIFile::GetKeyValueFromINI(L"FILEINFO", L"MaxtlreVersion", file).size();
}

} // namespace readers
