#include "ini/CachedIniFile.h"

#include "files/AtomicFile.h"

#include <windows.h>

#include <algorithm>

namespace mxovshare {
namespace {

constexpr std::uint64_t kBurstGap = 100;        // microseconds between two calls of one burst
constexpr std::uint64_t kLongestTrust = 10'000; // microseconds without looking at the file
constexpr std::uint64_t kCoarsestClock =
    2'100'000; // microseconds; FAT counts write times in steps of two seconds
constexpr std::size_t kCheapToRead = 64 << 10;
constexpr std::uint64_t kCheapGap = 10'000; // microseconds between two readings that only compare
constexpr std::uint64_t kDearGap = 100'000;

std::uint64_t TicksPerSecond() {
    LARGE_INTEGER frequency = {};
    QueryPerformanceFrequency(&frequency);
    return static_cast<std::uint64_t>(frequency.QuadPart);
}

// Microseconds since some moment.
std::uint64_t Now() {
    static const std::uint64_t perSecond = TicksPerSecond();
    LARGE_INTEGER count = {};
    QueryPerformanceCounter(&count);
    const auto ticks = static_cast<std::uint64_t>(count.QuadPart);
    return ticks / perSecond * 1'000'000 + ticks % perSecond * 1'000'000 / perSecond;
}

bool IsOlderThan(std::int64_t fileTime, std::int64_t microseconds) {
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    const std::int64_t time = static_cast<std::int64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime;
    return time - fileTime > 10 * microseconds;
}

bool Perform(IniDocument& document, const IniEdit& edit) {
    return edit.key.empty() ? document.RemoveSection(edit.section)
                            : document.SetValue(edit.section, edit.key, edit.value);
}

} // namespace

CachedIniFile::CachedIniFile(std::wstring path, const TextPlatform& platform)
    : m_path(std::move(path)), m_platform(platform) {}

const IniDocument& CachedIniFile::Document() {
    const std::uint64_t now = Now();
    const bool burst = IsBurst(now);
    if (!burst) {
        Look(now);
    }
    m_lastUse = burst ? now : Now();
    return *m_document;
}

bool CachedIniFile::Apply(std::span<const IniEdit> edits) {
    Look(Now());
    try {
        for (const IniEdit& edit : edits) {
            m_unsaved.push_back(edit);
            if (!Perform(*m_document, edit)) {
                m_unsaved.pop_back();
            } else {
                ForgetOverwritten();
            }
        }
        const bool saved = HasUnsaved() && m_readable && Save();
        m_lastUse = Now();
        return saved;
    } catch (...) {
        m_document.reset();
        throw;
    }
}

// Typing into a field whose file is locked sets one key again and again.
void CachedIniFile::ForgetOverwritten() {
    const std::size_t count = m_unsaved.size();
    if (count < 2 || m_unsaved[count - 1].key.empty() ||
        m_unsaved[count - 2].key != m_unsaved[count - 1].key ||
        m_unsaved[count - 2].section != m_unsaved[count - 1].section) {
        return;
    }
    m_unsaved.erase(m_unsaved.end() - 2);
}

bool CachedIniFile::IsBurst(std::uint64_t now) const {
    return m_document && m_readable && now - m_lastUse < kBurstGap && now - m_lastLook < kLongestTrust;
}

// Whether a change may have left the stamp as it was, and it is time to compare the bytes.
bool CachedIniFile::MayHideChanges(std::uint64_t now) const {
    const bool cheap = m_document->Bytes().size() <= kCheapToRead;
    return !m_settled && now - m_lastLoad >= (cheap ? kCheapGap : kDearGap);
}

void CachedIniFile::Look(std::uint64_t now) {
    m_lastLook = now;
    if (!m_document || !m_readable || StampOf(m_path) != m_stamp || MayHideChanges(now)) {
        Load(now);
    }
}

void CachedIniFile::Load(std::uint64_t now) {
    std::string bytes;
    FileStamp stamp;
    const FileReading reading = ReadWholeFile(m_path, IniDocument::kMaxBytes, bytes, stamp);
    m_lastLoad = now;
    if (reading != FileReading::Done) {
        bytes.clear();
        stamp = {};
    }
    if (reading == FileReading::Missing && m_stamp.exists) {
        m_unsaved.clear();
    }
    m_readable = reading != FileReading::Failed;
    if (!m_readable) {
        m_saveError = ERROR_OPEN_FAILED;
    }
    Settle(stamp, now);
    if (m_document && !HasUnsaved() && bytes == m_document->Bytes()) {
        return;
    }
    m_document.reset();
    auto document = std::make_unique<IniDocument>(m_platform, std::move(bytes));
    for (const IniEdit& edit : m_unsaved) {
        Perform(*document, edit);
    }
    m_document = std::move(document);
}

void CachedIniFile::Settle(const FileStamp& stamp, std::uint64_t now) {
    if (stamp != m_stamp) {
        m_stampSeen = now;
    }
    m_stamp = stamp;
    const std::int64_t latest = std::max(stamp.written, stamp.changed);
    m_settled = !stamp.exists || now - m_stampSeen > kCoarsestClock || IsOlderThan(latest, kCoarsestClock);
}

bool CachedIniFile::Save() {
    AtomicFile file(m_path);
    const std::string& bytes = m_document->Bytes();
    if (!file.Write(bytes.data(), bytes.size()) || !file.Commit()) {
        m_saveError = file.Error();
        return false;
    }
    m_unsaved.clear();
    m_lastLoad = Now();
    Settle(StampOf(m_path), m_lastLoad);
    return true;
}

} // namespace mxovshare
