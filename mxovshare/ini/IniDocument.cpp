#include "ini/IniDocument.h"

#include "ini/IniName.h"
#include "ini/IniValue.h"

#include <algorithm>
#include <limits>

namespace mxovshare {
namespace {

std::u16string_view ReadyName(std::u16string_view name) {
    return TrimBlanks(name.substr(0, name.find(u'\0')));
}

bool IsSectionName(std::u16string_view name) {
    return !name.empty() && !NeedsEscape(name);
}

bool IsKeyName(std::u16string_view name) {
    return IsSectionName(name) && name.front() != u';' && name.front() != u'[' &&
           name.find(u'=') == name.npos;
}

// Inserting would reserve twice the size.
std::string Marked(std::string_view bytes, std::string_view mark) {
    std::string marked;
    marked.reserve(mark.size() + bytes.size());
    return marked.append(mark).append(bytes);
}

// The number that `digits` spell; 0 when they are none or spell more than an int holds.
int NumberOf(std::u16string_view digits) {
    std::int64_t number = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9') {
            return 0;
        }
        number = 10 * number + (digit - u'0');
        if (number > std::numeric_limits<int>::max()) {
            return 0;
        }
    }
    return static_cast<int>(number);
}

} // namespace

IniDocument::IniDocument(const TextPlatform& platform, std::string bytes, const IniLimits& limits)
    : m_platform(platform), m_limits(limits), m_bytes(std::move(bytes)), m_encoding(DetectEncoding(m_bytes)),
      m_hasHighByte(HasHighByte(m_bytes)) {
    if (!m_bytes.starts_with(MarkOf(m_encoding))) {
        m_bytes = Marked(m_bytes, MarkOf(m_encoding));
    }
    m_bytes.resize(m_bytes.size() - m_bytes.size() % UnitSize(m_encoding));
    BuildIndex();
}

std::u16string IniDocument::Value(std::u16string_view section, std::u16string_view key) const {
    const std::uint32_t number = FindKey(ReadyName(section), ReadyName(key));
    return number == IniIndex::kNone ? std::u16string() : ValueOf(m_index->Key(number));
}

bool IniDocument::HasSection(std::u16string_view section) const {
    return FindSection(section) != IniIndex::kNone;
}

bool IniDocument::WouldChange(std::u16string_view section, std::u16string_view key,
                              std::u16string_view value) const {
    section = ReadyName(section);
    key = ReadyName(key);
    const std::u16string stored = StoredForm(value);
    if (!IsSectionName(section) || !IsKeyName(key) ||
        !MayGrow(section.size() + key.size() + stored.size() + 16)) {
        return false;
    }
    const std::uint32_t number = FindKey(section, key);
    if (number == IniIndex::kNone) {
        return m_index->MayAddKey(m_index->FindSection(section) == IniIndex::kNone);
    }
    return !m_index->Key(number).hasValue || ValueOf(m_index->Key(number)) != PlainValue(stored);
}

bool IniDocument::SetValue(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
    if (!WouldChange(section, key, value)) {
        return false;
    }
    section = ReadyName(section);
    key = ReadyName(key);
    const std::u16string stored = StoredForm(value);
    const std::u16string line = std::u16string(key) + u'=' + stored;
    std::string unused;
    if (!EncodeText(std::u16string(section) + line, m_encoding, m_platform, unused)) {
        BecomeUtf16();
    }
    const std::uint32_t sectionNumber = m_index->FindSection(section);
    const std::uint32_t number = FindKey(section, key);
    if (number != IniIndex::kNone) {
        ReplaceValue(number, stored);
    } else if (sectionNumber != IniIndex::kNone) {
        InsertKey(sectionNumber, line);
    } else {
        AppendSection(section, line);
    }
    KeepEncoding();
    return true;
}

std::uint32_t IniDocument::FindKey(std::u16string_view section, std::u16string_view key) const {
    const std::uint32_t number = m_index->FindSection(section);
    return number == IniIndex::kNone ? number : m_index->FindKey(number, key);
}

// Every section of the name goes in one pass: there may be as many as lines.
bool IniDocument::RemoveSection(std::u16string_view section) {
    if (!HasSection(section) || !MayGrow(0)) {
        return false;
    }
    const std::u16string name = FoldName(ReadyName(section), m_platform);
    std::string rest;
    std::size_t kept = 0; // up to here the bytes are dealt with
    for (const IniSection& each : m_index->Sections()) {
        if (m_index->FoldedName(each.name) == name) {
            rest.append(m_bytes, kept, each.begin - kept);
            kept = each.ownEnd;
        }
    }
    rest.append(m_bytes, kept);
    m_bytes = std::move(rest);
    BuildIndex();
    KeepEncoding();
    return true;
}

std::vector<std::u16string> IniDocument::SectionNames(std::u16string_view prefix) const {
    const std::u16string folded = FoldPrefix(prefix, m_platform);
    std::vector<std::u16string> names;
    for (const IniSection& section : m_index->Sections()) {
        if (!section.shadowed && m_index->FoldedName(section.name).starts_with(folded)) {
            names.push_back(TextOf(section.name));
        }
    }
    return names;
}

int IniDocument::LastIndex(std::u16string_view prefix) const {
    int last = 0;
    for (const std::u16string& name : SectionNames(std::u16string(prefix) + u'_')) {
        last = std::max(last, NumberOf(std::u16string_view(name).substr(prefix.size() + 1)));
    }
    return last;
}

std::uint32_t IniDocument::NextSection(std::uint32_t number) const {
    while (number < SectionCount() && m_index->Sections()[number].shadowed) {
        ++number;
    }
    return number;
}

std::uint32_t IniDocument::FindSection(std::u16string_view section) const {
    return m_index->FindSection(ReadyName(section));
}

std::u16string IniDocument::ReadValue(std::uint32_t section, std::u16string_view key) const {
    const std::optional<IniKey> found = m_index->ReadKey(section, ReadyName(key));
    return found ? ValueOf(*found) : std::u16string();
}

void IniDocument::BuildIndex() {
    m_index = std::make_unique<IniIndex>(m_bytes, m_encoding, m_platform, m_limits);
}

void IniDocument::BecomeUtf16() {
    const std::u16string text =
        DecodeText(std::string_view(m_bytes).substr(MarkOf(m_encoding).size()), m_encoding, m_platform);
    m_encoding = IniEncoding::Utf16;
    m_bytes = std::string(MarkOf(m_encoding)) + Encoded(text);
    BuildIndex();
}

void IniDocument::KeepEncoding() {
    if (UnitSize(m_encoding) == 2 || m_encoding == IniEncoding::Utf8Mark) {
        return;
    }
    const bool mayBeUtf16 = m_bytes.size() > 1 && (m_bytes[0] == '\0' || m_bytes[1] == '\0');
    if (!mayBeUtf16 && (m_encoding == IniEncoding::Utf8 || !m_hasHighByte)) {
        return;
    }
    const IniEncoding seen = DetectEncoding(m_bytes);
    if (seen == m_encoding || (seen == IniEncoding::Ansi && !HasHighByte(m_bytes))) {
        return;
    }
    if (seen != IniEncoding::Utf8 ||
        DecodeText(m_bytes, seen, m_platform) != m_platform.DecodeAnsi(m_bytes)) {
        BecomeUtf16();
        return;
    }
    m_encoding = seen;
    BuildIndex();
}

void IniDocument::Splice(std::size_t begin, std::size_t end, std::string_view bytes) {
    m_bytes.replace(begin, end - begin, bytes);
    m_hasHighByte = m_hasHighByte || HasHighByte(bytes);
}

void IniDocument::ReplaceValue(std::uint32_t number, std::u16string_view stored) {
    const IniKey& key = m_index->Key(number);
    const std::string bytes = Encoded(stored);
    Splice(key.value.begin, key.value.end, key.hasValue ? bytes : Encoded(u"=") + bytes);
    m_index->ValueReplaced(number, bytes.size());
}

void IniDocument::InsertKey(std::uint32_t section, std::u16string line) {
    const std::size_t at = m_index->Sections()[section].keysEnd;
    const std::u16string lineEnd = LineEndBefore(at);
    line = lineEnd.empty() ? UsualLineEnd() + line : line + lineEnd;
    const std::string bytes = Encoded(line);
    Splice(at, at, bytes);
    m_index->KeyInserted(section, bytes.size());
}

void IniDocument::AppendSection(std::u16string_view section, const std::u16string& line) {
    const std::size_t oldSize = m_bytes.size();
    const std::u16string lastEnd = LineEndBefore(oldSize);
    const std::u16string lineEnd = lastEnd.empty() ? UsualLineEnd() : lastEnd;
    const bool unfinished = lastEnd.empty() && oldSize > MarkOf(m_encoding).size();
    const std::string lineBreak = unfinished ? Encoded(lineEnd) : std::string();
    const std::u16string text = u'[' + std::u16string(section) + u']' + lineEnd + line + lineEnd;
    Splice(oldSize, oldSize, lineBreak + Encoded(text));
    m_index->Appended(oldSize, lineBreak.size());
}

std::string IniDocument::Encoded(std::u16string_view text) const {
    std::string bytes;
    EncodeText(text, m_encoding, m_platform, bytes);
    return bytes;
}

std::u16string IniDocument::TextOf(IniRange range) const {
    return DecodeText(std::string_view(m_bytes).substr(range.begin, range.end - range.begin), m_encoding,
                      m_platform);
}

std::u16string IniDocument::ValueOf(const IniKey& key) const {
    return PlainValue(TextOf(key.value));
}

std::u16string IniDocument::LineEndBefore(std::size_t offset) const {
    const auto unitBefore = [&](std::size_t units) {
        const std::size_t distance = units * UnitSize(m_encoding);
        const bool inside = offset >= MarkOf(m_encoding).size() + distance;
        return inside ? UnitAt(m_bytes.data() + offset - distance, m_encoding) : u'\0';
    };
    if (unitBefore(1) == u'\r') {
        return u"\r";
    }
    if (unitBefore(1) != u'\n') {
        return {};
    }
    return unitBefore(2) == u'\r' ? u"\r\n" : u"\n";
}

std::u16string IniDocument::UsualLineEnd() const {
    const std::size_t size = UnitSize(m_encoding);
    for (std::size_t at = MarkOf(m_encoding).size(); at < m_bytes.size(); at += size) {
        const char16_t unit = UnitAt(m_bytes.data() + at, m_encoding);
        if (unit != u'\r' && unit != u'\n') {
            continue;
        }
        const bool pair = unit == u'\r' && at + size < m_bytes.size() &&
                          UnitAt(m_bytes.data() + at + size, m_encoding) == u'\n';
        return pair ? u"\r\n" : std::u16string(1, unit);
    }
    return u"\r\n";
}

} // namespace mxovshare
