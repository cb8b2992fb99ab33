#include "ini/IniStore.h"

#include "common/LongPath.h"

#include <algorithm>

namespace mxovshare {
namespace {

// Whether a path means the same whatever the current folder is.
bool IsFull(const std::wstring& path) {
    return path.starts_with(L"\\\\") || (path.size() > 2 && path[1] == L':' && path[2] == L'\\');
}

bool IsSameIniPath(const std::wstring& one, const std::wstring& other) {
    return one == other || CompareStringOrdinal(one.c_str(), static_cast<int>(one.size()), other.c_str(),
                                                static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
}

} // namespace

IniStore::~IniStore() {
    // At the end of a process a thread that held the lock may be gone, and with it the order of what it
    // guards.
    const std::unique_lock lock(m_mutex, std::try_to_lock);
    try {
        if (lock) {
            SaveEachKept();
        }
    } catch (...) { // std::bad_alloc: the edits are lost
    }
}

IniStore& IniStore::Instance() {
    static IniStore store;
    return store;
}

std::wstring IniStore::Value(const std::wstring& section, const std::wstring& key, const std::wstring& file) {
    const std::lock_guard lock(m_mutex);
    CopyUtf16(section, m_section);
    CopyUtf16(key, m_key);
    return ToWide(Open(file).Document().Value(m_section, m_key));
}

IniOutcome IniStore::SetValue(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                              const std::wstring& file) {
    return SetValues(section, {{key, value}}, file);
}

IniOutcome IniStore::SetValues(const std::wstring& section, const IniValues& values,
                               const std::wstring& file) {
    std::vector<IniEdit> edits;
    for (const auto& [key, value] : values) {
        if (!key.empty()) {
            edits.push_back({ToUtf16(section), ToUtf16(key), ToUtf16(value)});
        }
    }
    return Apply(edits, file);
}

IniOutcome IniStore::RemoveSection(const std::wstring& section, const std::wstring& file) {
    const IniEdit edit = {ToUtf16(section), {}, {}};
    return Apply({&edit, 1}, file);
}

bool IniStore::SaveKept() {
    const std::lock_guard lock(m_mutex);
    return SaveEachKept();
}

std::vector<std::wstring> IniStore::SectionNames(const std::wstring& prefix, const std::wstring& file) {
    const std::lock_guard lock(m_mutex);
    std::vector<std::wstring> names;
    for (const std::u16string& name : Open(file).SectionNames(ToUtf16(prefix))) {
        names.push_back(ToWide(name));
    }
    return names;
}

int IniStore::LastIndex(const std::wstring& prefix, const std::wstring& file) {
    const std::lock_guard lock(m_mutex);
    return Open(file).LastIndex(ToUtf16(prefix));
}

CachedIniFile& IniStore::Open(const std::wstring& file) {
    if (!m_files.empty() && !m_lastPath.empty() && file == m_lastPath) {
        return *m_files.front();
    }
    m_lastPath = IsFull(file) ? file : std::wstring();
    const std::wstring path = common::LongPath(file);
    const auto known = std::ranges::find_if(
        m_files, [&](const auto& cached) { return IsSameIniPath(cached->Path(), path); });
    if (known != m_files.end()) {
        std::rotate(m_files.begin(), known, known + 1);
        return *m_files.front();
    }
    if (m_files.size() >= kCapacity) {
        const auto spare = std::find_if(m_files.rbegin(), m_files.rend(),
                                        [](const auto& cached) { return !cached->HasKept(); });
        if (spare != m_files.rend()) {
            m_files.erase(std::next(spare).base());
        }
    }
    m_files.insert(m_files.begin(), std::make_unique<CachedIniFile>(path, m_text, m_patience));
    return *m_files.front();
}

IniOutcome IniStore::Apply(std::span<const IniEdit> edits, const std::wstring& file) {
    const std::lock_guard lock(m_mutex);
    CachedIniFile& cached = Open(file);
    const IniOutcome outcome = cached.Apply(edits);
    LookAgainEverywhere();
    return outcome;
}

bool IniStore::SaveEachKept() {
    bool saved = true;
    for (const auto& cached : m_files) {
        if (cached->HasKept()) {
            cached->SaveKept();
            saved = saved && !cached->HasKept();
        }
    }
    LookAgainEverywhere();
    return saved;
}

// A file that was written may be known under another path too.
void IniStore::LookAgainEverywhere() {
    for (const auto& cached : m_files) {
        cached->LookAgain();
    }
}

} // namespace mxovshare
