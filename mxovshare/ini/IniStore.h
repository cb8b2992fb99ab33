// INI files by path: the few that were used last are kept in memory.
#pragma once

#include "ini/CachedIniFile.h"
#include "text/SystemText.h"

#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace mxovshare {

/// Keys and their values.
using IniValues = std::vector<std::pair<std::wstring, std::wstring>>;

/// Reads and writes keys of INI files named by path. Safe to call from any thread. Failures of the file
/// system are not told: what cannot be read is empty, what cannot be written is kept and goes out with the
/// next change of that file.
class IniStore {
public:
    /// Files kept in memory; those with changes that could not be written yet are kept beyond that number.
    static constexpr std::size_t kCapacity = 8;

    std::wstring Value(const std::wstring& section, const std::wstring& key, const std::wstring& file);
    void SetValue(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                  const std::wstring& file);
    void RemoveSection(const std::wstring& section, const std::wstring& file);

    /// Sets several keys of a section in one write. Gives the system's code for why the file on the disk does
    /// not hold all changes made so far; ERROR_SUCCESS when it does.
    DWORD SetValues(const std::wstring& section, const IniValues& values, const std::wstring& file);

    std::vector<std::wstring> SectionNames(const std::wstring& prefix, const std::wstring& file);
    int LastIndex(const std::wstring& prefix, const std::wstring& file);

    /// The store of this process.
    static IniStore& Instance();

private:
    CachedIniFile& Open(const std::wstring& file);
    DWORD Apply(std::span<const IniEdit> edits, const std::wstring& file);

    std::mutex m_mutex;
    SystemText m_text;
    std::vector<std::unique_ptr<CachedIniFile>> m_files; // last used first
    std::wstring
        m_lastPath; // the full path by which the first was called last time; empty for a relative one
    std::u16string m_section; // these two keep their memory from call to call
    std::u16string m_key;
};

} // namespace mxovshare
