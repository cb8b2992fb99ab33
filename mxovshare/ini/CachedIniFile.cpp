#include "ini/CachedIniFile.h"

#include "files/AtomicFile.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace mxovshare {
namespace {

constexpr std::uint64_t kBurstGap = 100;        // microseconds between two calls of one burst
constexpr std::uint64_t kLongestTrust = 10'000; // microseconds without looking at the file
constexpr std::uint64_t kCoarsestClock =
    2'100'000; // microseconds; FAT counts write times in steps of two seconds
constexpr std::size_t kCheapToRead = 64 << 10;
constexpr std::uint64_t kCheapGap = 10'000; // microseconds between two readings that only compare
constexpr std::uint64_t kDearGap = 100'000;
constexpr DWORD kBriefPatience = 30; // milliseconds to wait for a lock that was waited for in vain

std::uint64_t TicksPerSecond() {
    LARGE_INTEGER frequency = {};
    QueryPerformanceFrequency(&frequency);
    return static_cast<std::uint64_t>(frequency.QuadPart);
}

// Microseconds since some moment.
std::uint64_t Microseconds() {
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

bool WouldChange(const IniDocument& document, const IniEdit& edit) {
    return edit.key.empty() ? document.HasSection(edit.section)
                            : document.WouldChange(edit.section, edit.key, edit.value);
}

} // namespace

CachedIniFile::CachedIniFile(std::wstring path, const TextPlatform& platform, DWORD patience)
    : m_path(std::move(path)), m_platform(platform), m_patience(patience), m_unread(platform) {}

const IniDocument& CachedIniFile::Document() {
    const std::uint64_t now = Microseconds();
    const bool burst = IsBurst(now);
    if (!burst) {
        Look(now, m_patience);
    }
    m_lastUse = burst ? now : Microseconds();
    m_answeredUnread = !m_document;
    m_refusalReported = m_refusalReported && m_answeredUnread;
    return m_document ? *m_document : m_unread;
}

std::vector<std::u16string> CachedIniFile::SectionNames(std::u16string_view prefix) {
    m_numberPrefix.clear();
    return Document().SectionNames(prefix);
}

int CachedIniFile::LastIndex(std::u16string_view prefix) {
    const IniDocument& document = Document();
    m_numberPrefix = prefix;
    m_nextSection = FreeSection(document, prefix);
    m_takenSection.clear();
    return document.LastIndex(prefix);
}

// The section of the first number behind those of the document and of kept edits.
std::u16string CachedIniFile::FreeSection(const IniDocument& document, std::u16string_view prefix) const {
    for (std::int64_t number = document.LastIndex(prefix) + std::int64_t{1};; ++number) {
        const std::string digits = std::to_string(number);
        std::u16string name = std::u16string(prefix) + u'_' + std::u16string(digits.begin(), digits.end());
        if (std::ranges::none_of(m_kept, [&](const IniEdit& edit) { return edit.section == name; })) {
            return name;
        }
    }
}

// An edit of the section of the next number, moved to the number that it got.
IniEdit CachedIniFile::Numbered(IniEdit edit) {
    if (m_numberPrefix.empty() || edit.key.empty() || edit.section != m_nextSection) {
        return edit;
    }
    edit.createsSection = m_takenSection.empty();
    if (m_takenSection.empty()) {
        m_takenSection = FreeSection(*m_document, m_numberPrefix);
    }
    edit.section = m_takenSection;
    return edit;
}

// Moves kept edits of a section that somebody else created first.
void CachedIniFile::MoveKept(const IniDocument& document, std::u16string section) {
    const std::u16string free =
        FreeSection(document, std::u16string_view(section).substr(0, section.rfind(u'_')));
    for (IniEdit& edit : m_kept) {
        if (edit.section == section) {
            edit.section = free;
        }
    }
    if (m_takenSection == section) {
        m_takenSection = free;
    }
}

IniOutcome CachedIniFile::Apply(std::span<const IniEdit> edits) {
    Look(Microseconds(), m_patience);
    if (!m_document || (m_answeredUnread && !edits.empty())) {
        return Refuse(edits);
    }
    m_refusalReported = false;
    Keep(edits);
    const DWORD patience = m_saveError == ERROR_SUCCESS ? m_patience : std::min(m_patience, kBriefPatience);
    const DWORD error = Save(patience);
    m_lastUse = Microseconds();
    return {.error = error};
}

void CachedIniFile::SaveKept() {
    Look(Microseconds(), 0);
    Save(0);
}

IniOutcome CachedIniFile::Refuse(std::span<const IniEdit> edits) {
    const bool first = !edits.empty() && !std::exchange(m_refusalReported, true);
    return {.error = m_readError, .refused = true, .firstRefused = first};
}

// Adds the edits to those that are not in the file, from the first that changes anything. What the file holds
// is not known while it cannot be read.
void CachedIniFile::Keep(std::span<const IniEdit> edits) {
    bool changes = !m_current;
    for (const IniEdit& asked : edits) {
        const IniEdit edit = Numbered(asked);
        changes = changes || WouldChange(*m_document, edit);
        if (changes) {
            m_kept.push_back(edit);
            DropOverwritten();
        }
    }
}

// Typing into a field whose file is locked sets one key again and again.
void CachedIniFile::DropOverwritten() {
    const std::size_t count = m_kept.size();
    if (count < 2 || m_kept[count - 1].key.empty() || m_kept[count - 2].key != m_kept[count - 1].key ||
        m_kept[count - 2].section != m_kept[count - 1].section) {
        return;
    }
    m_kept[count - 1].createsSection |= m_kept[count - 2].createsSection;
    m_kept.erase(m_kept.end() - 2);
    m_performed = std::min(m_performed, m_kept.size() - 1);
}

void CachedIniFile::DropKept() {
    m_kept.clear();
    m_performed = 0;
}

void CachedIniFile::PerformKept(IniDocument& document) {
    for (; m_performed < m_kept.size(); ++m_performed) {
        const IniEdit& edit = m_kept[m_performed];
        if (edit.createsSection && document.HasSection(edit.section)) {
            MoveKept(document, edit.section);
        }
        m_changed = Perform(document, edit) || m_changed;
    }
}

bool CachedIniFile::IsBurst(std::uint64_t now) const {
    return m_document && now - m_lastUse < kBurstGap && now - m_lastLook < kLongestTrust;
}

// Whether a change may have left the stamp as it was, and it is time to compare the bytes.
bool CachedIniFile::MayHideChanges(std::uint64_t now) const {
    const bool cheap = m_document->Bytes().size() <= kCheapToRead;
    return !m_stampReliable && now - m_lastLoad >= (cheap ? kCheapGap : kDearGap);
}

void CachedIniFile::Look(std::uint64_t now, DWORD patience) {
    m_lastLook = now;
    if (!m_document || !m_current || StampOf(m_path) != m_stamp || MayHideChanges(now)) {
        Load(now, patience);
    }
}

void CachedIniFile::Load(std::uint64_t now, DWORD patience) {
    std::string bytes;
    FileStamp stamp;
    DWORD error = ReadWholeFile(m_path, IniDocument::kMaxBytes, bytes, stamp, m_waitedInVain ? 0 : patience);
    const bool missing = error == ERROR_FILE_NOT_FOUND;
    if (missing) {
        error = ERROR_SUCCESS;
        bytes.clear();
        stamp = {};
    }
    const bool known = m_document && !m_changed && bytes == m_document->Bytes();
    std::unique_ptr<IniDocument> document;
    if (error == ERROR_SUCCESS && !known) {
        document = std::make_unique<IniDocument>(m_platform, std::move(bytes), IniDocument::kMost);
        error = document->IsComplete() ? ERROR_SUCCESS : ERROR_FILE_TOO_LARGE;
    }
    m_lastLoad = now;
    m_current = error == ERROR_SUCCESS;
    m_waitedInVain = !m_current;
    if (!m_current) {
        m_readError = error;
        return;
    }
    if (missing && m_stamp.exists) {
        DropKept();
    }
    RememberStamp(stamp, now);
    if (known) {
        return;
    }
    m_document.reset();
    m_performed = 0;
    m_changed = false;
    PerformKept(*document);
    m_document = std::move(document);
}

void CachedIniFile::RememberStamp(const FileStamp& stamp, std::uint64_t now) {
    if (stamp != m_stamp) {
        m_stampSeen = now;
    }
    m_stamp = stamp;
    const std::int64_t latest = std::max(stamp.written, stamp.changed);
    m_stampReliable =
        !stamp.exists || now - m_stampSeen > kCoarsestClock || IsOlderThan(latest, kCoarsestClock);
}

// Writes the kept edits; ERROR_SUCCESS without one.
DWORD CachedIniFile::Save(DWORD patience) {
    if (m_kept.empty() || !m_document) {
        return ERROR_SUCCESS;
    }
    try {
        m_saveError = m_current ? Replace(patience) : m_readError;
        if (m_document) {
            PerformKept(*m_document);
        }
    } catch (...) {
        m_document.reset();
        throw;
    }
    return m_saveError;
}

DWORD CachedIniFile::Replace(DWORD patience) {
    AtomicFile file(m_path, patience);
    if (file.Error() != ERROR_SUCCESS) {
        return file.Error();
    }
    // Nobody else replaces the file now: the edits go into what it holds at this moment.
    if (!m_stampReliable || StampOf(m_path) != m_stamp) {
        Load(Microseconds(), patience);
    }
    if (!m_current) {
        return m_readError;
    }
    PerformKept(*m_document);
    const std::string& bytes = m_document->Bytes();
    if (m_changed && (!file.Write(bytes.data(), bytes.size()) || !file.Commit())) {
        return file.Error();
    }
    DropKept();
    m_changed = false;
    m_lastLoad = Microseconds();
    RememberStamp(StampOf(m_path), m_lastLoad);
    return ERROR_SUCCESS;
}

} // namespace mxovshare
