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

/// Reads and writes keys of INI files named by path. Safe to call from any thread. See CachedIniFile for
/// files that are locked.
class IniStore {
public:
    /// Files in memory; those with edits that could not be written yet stay beyond that number.
    static constexpr std::size_t kCapacity = 8;

    /// `patience`: milliseconds to wait for a locked file.
    explicit IniStore(DWORD patience = kLockPatience) : m_patience(patience) {}
    /// Writes kept edits if that is possible at once.
    ~IniStore();
    IniStore(const IniStore&) = delete;
    IniStore& operator=(const IniStore&) = delete;

    std::wstring Value(const std::wstring& section, const std::wstring& key, const std::wstring& file);
    IniOutcome SetValue(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                        const std::wstring& file);
    IniOutcome RemoveSection(const std::wstring& section, const std::wstring& file);

    /// Sets several keys of a section in one write.
    IniOutcome SetValues(const std::wstring& section, const IniValues& values, const std::wstring& file);

    /// Writes kept edits without waiting for a lock. True when none is left.
    bool SaveKept();

    std::vector<std::wstring> SectionNames(const std::wstring& prefix, const std::wstring& file);
    int LastIndex(const std::wstring& prefix, const std::wstring& file);

    /// The store of this process.
    static IniStore& Instance();

private:
    CachedIniFile& Open(const std::wstring& file);
    IniOutcome Apply(std::span<const IniEdit> edits, const std::wstring& file);
    bool SaveEachKept();
    void LookAgainEverywhere();

    DWORD m_patience;
    std::mutex m_mutex;
    SystemText m_text;
    std::vector<std::unique_ptr<CachedIniFile>> m_files; // last used first
    std::wstring
        m_lastPath; // the full path by which the first was called last time; empty for a relative one
    std::u16string m_section; // these two keep their memory from call to call
    std::u16string m_key;
};

} // namespace mxovshare
