#include "ini/IniIndex.h"

#include "ini/IniScanner.h"
#include "ini/IniValue.h"

#include <algorithm>

namespace mxovshare {
namespace {

constexpr std::uint32_t KeyHash(std::uint32_t section, std::uint32_t nameHash) {
    return (nameHash ^ section * 0x9E3779B9) * 0x85EBCA6B;
}

void ShiftFrom(std::uint32_t& offset, std::uint32_t from, std::ptrdiff_t by) {
    if (offset >= from) {
        offset += static_cast<std::uint32_t>(by);
    }
}

} // namespace

IniIndex::IniIndex(const std::string& bytes, IniEncoding encoding, const TextPlatform& platform)
    : m_bytes(bytes), m_encoding(encoding), m_platform(platform) {
    ScanSections(MarkOf(encoding).size());
}

std::uint32_t IniIndex::FindSection(const IniName& name) const {
    return m_sectionTable.Find(
        name.Hash(), [&](std::uint32_t number) { return NameIs(m_sections[number].name, name.Text()); });
}

std::uint32_t IniIndex::FindKey(std::uint32_t section, const IniName& name) {
    if (!m_sections[section].keysKnown) {
        ScanKeys(section, m_sections[section].begin, m_sections[section].end);
    }
    return m_keyTable.Find(KeyHash(section, name.Hash()), [&](std::uint32_t number) {
        return m_keys[number].section == section && NameIs(m_keys[number].name, name.Text());
    });
}

std::vector<IniKey> IniIndex::AllKeys() {
    for (std::uint32_t number = 0; number < m_sections.size(); ++number) {
        if (!m_sections[number].shadowed && !m_sections[number].keysKnown) {
            ScanKeys(number, m_sections[number].begin, m_sections[number].end);
        }
    }
    std::vector<IniKey> keys = m_keys;
    std::ranges::sort(keys, {}, [](const IniKey& key) { return key.name.begin; });
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

template <typename Action>
void IniIndex::WithScanner(Action action) {
    if (m_encoding == IniEncoding::Utf16) {
        action(IniScanner<Utf16Units>(*this, false));
    } else if (m_encoding == IniEncoding::Utf16BigEndian) {
        action(IniScanner<Utf16BigEndianUnits>(*this, false));
    } else {
        action(IniScanner<ByteUnits>(*this, m_encoding == IniEncoding::Ansi));
    }
}

void IniIndex::ScanSections(std::size_t begin) {
    const auto end = static_cast<std::uint32_t>(m_bytes.size());
    WithScanner([&](auto scanner) { scanner.Sections(static_cast<std::uint32_t>(begin), end); });
    CloseLastSection(end, end);
}

void IniIndex::ScanKeys(std::uint32_t section, std::uint32_t begin, std::uint32_t end) {
    WithScanner([&](auto scanner) { scanner.Keys(section, begin, end); });
    m_sections[section].keysKnown = true;
}

void IniIndex::AddSection(IniRange line, IniRange name, std::uint32_t nameHash) {
    CloseLastSection(std::min(m_commentRun, line.begin), line.begin);
    m_commentRun = kNone;
    const auto sameName = [&](std::uint32_t other) { return SameName(m_sections[other].name, name); };
    const bool shadowed = name.begin == name.end || m_sectionTable.Find(nameHash, sameName) != kNone;
    if (!shadowed) {
        m_sectionTable.Insert(nameHash, static_cast<std::uint32_t>(m_sections.size()));
    }
    m_sections.push_back({name, line.begin, line.end, line.end, line.end, shadowed});
}

void IniIndex::AddKey(const IniKey& key, std::uint32_t nameHash) {
    const std::uint32_t hash = KeyHash(key.section, nameHash);
    const auto sameKey = [&](std::uint32_t other) {
        return m_keys[other].section == key.section && SameName(m_keys[other].name, key.name);
    };
    if (m_keyTable.Find(hash, sameKey) != kNone) {
        return;
    }
    m_keyTable.Insert(hash, static_cast<std::uint32_t>(m_keys.size()));
    m_keys.push_back(key);
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

std::string_view IniIndex::BytesOf(IniRange range) const {
    return std::string_view(m_bytes).substr(range.begin, range.end - range.begin);
}

std::u16string IniIndex::TextOf(IniRange range) const {
    return DecodeText(BytesOf(range), m_encoding, m_platform);
}

bool IniIndex::Compare(IniRange range, std::u16string_view name, bool whole) const {
    const std::string_view bytes = BytesOf(range);
    if (UnitSize(m_encoding) == 1 && HasHighByte(bytes)) {
        const std::u16string text = TextOf(range);
        return IsSameName(std::u16string_view(text).substr(0, whole ? text.size() : name.size()), name,
                          m_platform);
    }
    const std::size_t units = bytes.size() / UnitSize(m_encoding);
    if (whole ? units != name.size() : units < name.size()) {
        return false;
    }
    if (m_encoding == IniEncoding::Utf16) {
        return SameUnits<Utf16Units>(bytes.data(), name, m_platform);
    }
    if (m_encoding == IniEncoding::Utf16BigEndian) {
        return SameUnits<Utf16BigEndianUnits>(bytes.data(), name, m_platform);
    }
    return SameUnits<ByteUnits>(bytes.data(), name, m_platform);
}

bool IniIndex::SameName(IniRange one, IniRange other) const {
    return BytesOf(one) == BytesOf(other) || IsSameName(TextOf(one), TextOf(other), m_platform);
}

} // namespace mxovshare
