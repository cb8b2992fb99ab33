#include "ini/IniIndex.h"

#include "ini/IniScanner.h"
#include "ini/IniValue.h"

#include <algorithm>
#include <utility>

namespace mxovshare {
namespace {

std::uint32_t NumberIn(const IniNumbers& numbers, std::u16string_view folded) {
    const auto found = numbers.find(folded);
    return found == numbers.end() ? IniIndex::kNone : found->second;
}

struct FoldedKey {
    std::u16string_view name;
    IniKey* key;
};

void ShiftFrom(std::uint32_t& offset, std::uint32_t from, std::ptrdiff_t by) {
    if (offset >= from) {
        offset += static_cast<std::uint32_t>(by);
    }
}

} // namespace

IniIndex::IniIndex(const std::string& bytes, IniEncoding encoding, const TextPlatform& platform,
                   const IniLimits& limits)
    : m_bytes(bytes), m_encoding(encoding), m_platform(platform), m_limits(limits) {
    ScanSections(MarkOf(encoding).size());
}

bool IniIndex::MayAddKey(bool inNewSection) const {
    const std::size_t sections = inNewSection ? 1 : 0;
    return m_sections.size() + sections <= m_limits.sections && m_lines + sections < m_limits.lines;
}

std::uint32_t IniIndex::FindSection(std::u16string_view name) const {
    return NumberIn(m_sectionNumbers, FoldName(name, m_platform));
}

std::uint32_t IniIndex::FindKey(std::uint32_t section, std::u16string_view name) {
    if (!m_sections[section].keysKnown) {
        ScanKeys(section, m_sections[section].begin, m_sections[section].end);
    }
    return NumberIn(m_sections[section].keys, FoldName(name, m_platform));
}

std::optional<IniKey> IniIndex::ReadKey(std::uint32_t section, std::u16string_view name) const {
    const std::u16string folded = FoldName(name, m_platform);
    std::optional<IniKey> found;
    WithScanner(*this, [&](auto scanner) {
        scanner.Keys(section, m_sections[section].begin, m_sections[section].end, [&](const IniKey& key) {
            if (!found && IsNamed(key.name, folded)) {
                found = key;
            }
        });
    });
    return found;
}

std::vector<IniKey> IniIndex::ReadKeys(std::uint32_t section) const {
    std::vector<IniKey> keys;
    std::size_t length = 0;
    WithScanner(*this, [&](auto scanner) {
        scanner.Keys(section, m_sections[section].begin, m_sections[section].end, [&](const IniKey& key) {
            keys.push_back(key);
            length += key.name.end - key.name.begin;
        });
    });
    std::u16string names; // all in one text, which never grows beyond what is reserved
    names.reserve(length);
    std::vector<FoldedKey> folded;
    folded.reserve(keys.size());
    for (IniKey& key : keys) {
        const std::size_t begin = names.size();
        names += FoldedName(key.name);
        folded.push_back({std::u16string_view(names).substr(begin), &key});
    }
    std::ranges::sort(folded, {}, [](const FoldedKey& key) { return std::pair(key.name, key.key); });
    for (std::size_t i = 1; i < folded.size(); ++i) {
        if (folded[i].name == folded[i - 1].name) {
            folded[i].key->name = {}; // no key has this one
        }
    }
    std::erase_if(keys, [](const IniKey& key) { return key.name.begin == key.name.end; });
    return keys;
}

void IniIndex::ValueReplaced(std::uint32_t number, std::size_t length) {
    const IniKey old = m_keys[number];
    IniRange value = {old.value.begin, old.value.begin};
    if (!old.hasValue) {
        value.begin += static_cast<std::uint32_t>(UnitSize(m_encoding));
    }
    value.end = value.begin + static_cast<std::uint32_t>(length);
    Shift(old.value.end, static_cast<std::ptrdiff_t>(value.end) - old.value.end);
    m_keys[number].value = value;
    m_keys[number].hasValue = true;
}

void IniIndex::KeyInserted(std::uint32_t section, std::size_t length) {
    const std::uint32_t at = m_sections[section].keysEnd;
    ++m_lines;
    Shift(at, static_cast<std::ptrdiff_t>(length));
    if (m_sections[section].keysKnown) {
        ScanKeys(section, at, m_sections[section].keysEnd);
    }
}

void IniIndex::Appended(std::size_t oldSize, std::size_t lineBreak) {
    if (!m_sections.empty()) {
        ShiftFrom(m_sections.back().keysEnd, static_cast<std::uint32_t>(oldSize),
                  static_cast<std::ptrdiff_t>(lineBreak));
    }
    ScanSections(oldSize + lineBreak);
}

template <typename Index, typename Action>
void IniIndex::WithScanner(Index& index, Action action) {
    if (index.m_encoding == IniEncoding::Utf16) {
        action(IniScanner<Utf16Units, Index>(index, false));
    } else if (index.m_encoding == IniEncoding::Utf16BigEndian) {
        action(IniScanner<Utf16BigEndianUnits, Index>(index, false));
    } else {
        action(IniScanner<ByteUnits, Index>(index, index.m_encoding == IniEncoding::Ansi));
    }
}

void IniIndex::ScanSections(std::size_t begin) {
    const auto end = static_cast<std::uint32_t>(m_bytes.size());
    WithScanner(*this, [&](auto scanner) { scanner.Sections(static_cast<std::uint32_t>(begin), end); });
    CloseLastSection(end, end);
}

void IniIndex::ScanKeys(std::uint32_t section, std::uint32_t begin, std::uint32_t end) {
    WithScanner(*this, [&](auto scanner) {
        scanner.Keys(section, begin, end, [this](const IniKey& key) { AddKey(key); });
    });
    m_sections[section].keysKnown = true;
}

void IniIndex::CountLine(IniRange line) {
    m_complete = m_complete && ++m_lines <= m_limits.lines && line.end - line.begin <= m_limits.length;
}

void IniIndex::AddSection(IniRange line, IniRange name) {
    m_complete = m_complete && m_sections.size() < m_limits.sections;
    if (!m_complete) {
        return;
    }
    CloseLastSection(std::min(m_commentRun, line.begin), line.begin);
    m_commentRun = kNone;
    const auto number = static_cast<std::uint32_t>(m_sections.size());
    const bool shadowed =
        name.begin == name.end || !m_sectionNumbers.try_emplace(FoldedName(name), number).second;
    m_sections.push_back({.name = name,
                          .begin = line.begin,
                          .keysEnd = line.end,
                          .ownEnd = line.end,
                          .end = line.end,
                          .shadowed = shadowed});
}

void IniIndex::AddKey(const IniKey& key) {
    const auto number = static_cast<std::uint32_t>(m_keys.size());
    m_keys.push_back(key);
    if (!m_sections[key.section].keys.try_emplace(FoldedName(key.name), number).second) {
        m_keys.pop_back();
    }
}

// Most names are told apart by their first unit, without decoding them.
bool IniIndex::IsNamed(IniRange range, std::u16string_view folded) const {
    const char16_t first = UnitAt(m_bytes.data() + range.begin, m_encoding);
    if (first < 0x80 && !folded.starts_with(FoldPrefix({&first, 1}, m_platform))) {
        return false;
    }
    return FoldedName(range) == folded;
}

void IniIndex::CloseLastSection(std::uint32_t ownEnd, std::uint32_t end) {
    if (m_sections.empty()) {
        return;
    }
    m_sections.back().ownEnd = ownEnd;
    m_sections.back().end = end;
}

void IniIndex::Shift(std::uint32_t from, std::ptrdiff_t by) {
    for (IniSection& section : m_sections) {
        if (section.begin >= from) {
            ShiftFrom(section.name.begin, from, by);
            ShiftFrom(section.name.end, from, by);
        }
        ShiftFrom(section.begin, from, by);
        ShiftFrom(section.keysEnd, from, by);
        ShiftFrom(section.ownEnd, from, by);
        ShiftFrom(section.end, from, by);
    }
    for (IniKey& key : m_keys) {
        if (key.name.begin < from) {
            continue;
        }
        for (std::uint32_t* offset : {&key.name.begin, &key.name.end, &key.value.begin, &key.value.end}) {
            ShiftFrom(*offset, from, by);
        }
    }
    if (m_commentRun != kNone) {
        ShiftFrom(m_commentRun, from, by);
    }
}

std::u16string IniIndex::FoldedName(IniRange range) const {
    const std::string_view bytes = std::string_view(m_bytes).substr(range.begin, range.end - range.begin);
    return FoldName(DecodeText(bytes, m_encoding, m_platform), m_platform);
}

} // namespace mxovshare
