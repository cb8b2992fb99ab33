// A folder for one test, with files of known content and time; removed with everything in it at the end.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// Full path without a separator at the end.
    [[nodiscard]] const std::wstring& Path() const { return m_path; }

    /// Full path with the separator that hosts pass.
    [[nodiscard]] std::wstring PathWithSeparator() const { return m_path + L"\\"; }

    /// Full path of something inside.
    [[nodiscard]] std::wstring operator/(const std::wstring& name) const { return m_path + L"\\" + name; }

    /// Writes a file, making folders on the way; returns its full path. `name` is separated by "\".
    std::wstring Write(const std::wstring& name, std::string_view bytes) const;

    /// The same with `size` bytes.
    std::wstring WriteSized(const std::wstring& name, unsigned long long size) const;

    /// Sets a file's last-write time, in UTC.
    void SetTime(const std::wstring& name, const SYSTEMTIME& utc) const;

    /// The bytes of a file; empty when there is none.
    [[nodiscard]] std::string Read(const std::wstring& name) const;

    /// How many files and folders lie directly inside.
    [[nodiscard]] int EntryCount() const;

private:
    std::wstring m_path;
};
