#include "ini/IniIndex.h"

#include "ini/IniScanner.h"
#include "ini/IniValue.h"

#include <algorithm>

namespace mxovshare {
namespace {

constexpr std::uint32_t kHashStart = 2166136261;

constexpr std::uint32_t HashStep(std::uint32_t hash, char16_t unit) {
    return (hash ^ unit) * 16777619;
}

constexpr char16_t UpperAscii(char16_t unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

char16_t Upper(char16_t unit, const IniPlatform& platform) {
    return unit < 0x80 ? UpperAscii(unit) : platform.Upper(unit);
}

std::uint32_t HashOfUpper(std::u16string_view upper) {
    std::uint32_t hash = kHashStart;
    for (const char16_t unit : upper)
        hash = HashStep(hash, unit);
    return hash;
}

constexpr std::uint32_t KeyHash(std::uint32_t section, std::uint32_t nameHash) {
    return (nameHash ^ section * 0x9E3779B9) * 0x85EBCA6B;
}

void ShiftFrom(std::uint32_t& offset, std::uint32_t from, std::ptrdiff_t by) {
    if (offset >= from)
        offset += static_cast<std::uint32_t>(by);
}

} // namespace

std::u16string UpperText(std::u16string_view text, const IniPlatform& platform) {
    std::u16string upper(text);
    std::ranges::transform(upper, upper.begin(), [&](char16_t unit) { return Upper(unit, platform); });
    return upper;
}

IniName::IniName(std::u16string_view name, const IniPlatform& platform)
    : m_upper(UpperText(TrimBlanks(name), platform)), m_hash(HashOfUpper(m_upper)) {}

void IniHashTable::Place(Slot slot) {
    std::size_t at = slot.hash & Mask();
    while (m_slots[at].number != kNone)
        at = (at + 1) & Mask();
    m_slots[at] = slot;
}

void IniHashTable::Insert(std::uint32_t hash, std::uint32_t number) {
    if (2 * ++m_used > m_slots.size()) {
        std::vector<Slot> old(std::max<std::size_t>(16, 2 * m_slots.size()));
        old.swap(m_slots);
        for (const Slot& slot : old) {
            if (slot.number != kNone)
                Place(slot);
        }
    }
    Place({hash, number});
}

IniIndex::IniIndex(const std::string& bytes, IniEncoding encoding, const IniPlatform& platform)
    : m_bytes(bytes), m_encoding(encoding), m_platform(platform) {
    Scan(MarkOf(encoding).size(), bytes.size(), kNone);
    CloseLastSection(static_cast<std::uint32_t>(bytes.size()), static_cast<std::uint32_t>(bytes.size()));
}

std::uint32_t IniIndex::FindSection(const IniName& name) const {
    return m_sectionTable.Find(
        name.Hash(), [&](std::uint32_t number) { return NameIs(m_sections[number].name, name.Upper()); });
}

std::uint32_t IniIndex::FindKey(std::uint32_t section, const IniName& name) const {
    return m_keyTable.Find(KeyHash(section, name.Hash()), [&](std::uint32_t number) {
        return m_keys[number].section == section && NameIs(m_keys[number].name, name.Upper());
    });
}

bool IniIndex::NameIs(IniRange range, std::u16string_view upper) const {
    if (!IsDirect(range))
        return UpperOf(range) == upper;
    return LengthOf(range) == upper.size() && DirectlyBegins(range, upper);
}

bool IniIndex::NameBegins(IniRange range, std::u16string_view upper) const {
    if (!IsDirect(range))
        return UpperOf(range).starts_with(upper);
    return LengthOf(range) >= upper.size() && DirectlyBegins(range, upper);
}

void IniIndex::ValueReplaced(std::uint32_t number, std::size_t length) {
    const IniKey old = m_keys[number];
    IniRange value = {old.value.begin, old.value.begin};
    if (!old.hasValue)
        value.begin += static_cast<std::uint32_t>(UnitSize(m_encoding));
    value.end = value.begin + static_cast<std::uint32_t>(length);
    Shift(old.value.end, static_cast<std::ptrdiff_t>(value.end) - old.value.end);
    m_keys[number].value = value;
    m_keys[number].hasValue = true;
}

void IniIndex::KeyInserted(std::uint32_t section, std::size_t length) {
    const std::uint32_t at = m_sections[section].keysEnd;
    Shift(at, static_cast<std::ptrdiff_t>(length));
    const std::uint32_t commentRun = m_commentRun;
    Scan(at, at + length, section);
    m_commentRun = commentRun;
}

void IniIndex::Appended(std::size_t oldSize, std::size_t lineBreak) {
    const auto last = static_cast<std::uint32_t>(m_sections.size() - 1);
    if (!m_sections.empty())
        ShiftFrom(m_sections.back().keysEnd, static_cast<std::uint32_t>(oldSize),
                  static_cast<std::ptrdiff_t>(lineBreak));
    Scan(oldSize + lineBreak, m_bytes.size(), m_sections.empty() ? kNone : last);
    CloseLastSection(static_cast<std::uint32_t>(m_bytes.size()), static_cast<std::uint32_t>(m_bytes.size()));
}

void IniIndex::Scan(std::size_t begin, std::size_t end, std::uint32_t section) {
    if (m_encoding == IniEncoding::Utf16)
        IniScanner<Utf16Units>(*this, m_bytes, m_platform, false).Run(begin, end, section);
    else if (m_encoding == IniEncoding::Utf16BigEndian)
        IniScanner<Utf16BigEndianUnits>(*this, m_bytes, m_platform, false).Run(begin, end, section);
    else
        IniScanner<ByteUnits>(*this, m_bytes, m_platform, m_encoding == IniEncoding::Ansi)
            .Run(begin, end, section);
}

void IniIndex::AddSection(IniRange line, IniRange name) {
    CloseLastSection(std::min(m_commentRun, line.begin), line.begin);
    m_commentRun = kNone;
    const auto number = static_cast<std::uint32_t>(m_sections.size());
    const std::uint32_t hash = HashOf(name);
    const auto sameName = [&](std::uint32_t other) { return SameName(m_sections[other].name, name); };
    const bool shadowed = name.begin == name.end || m_sectionTable.Find(hash, sameName) != kNone;
    m_sections.push_back({name, line.begin, line.end, line.end, line.end, shadowed});
    if (!shadowed)
        m_sectionTable.Insert(hash, number);
}

void IniIndex::AddKey(const IniKey& key) {
    const std::uint32_t hash = KeyHash(key.section, HashOf(key.name));
    const auto sameKey = [&](std::uint32_t other) {
        return m_keys[other].section == key.section && SameName(m_keys[other].name, key.name);
    };
    if (m_keyTable.Find(hash, sameKey) != kNone)
        return;
    m_keyTable.Insert(hash, static_cast<std::uint32_t>(m_keys.size()));
    m_keys.push_back(key);
}

void IniIndex::CloseLastSection(std::uint32_t ownEnd, std::uint32_t end) {
    if (m_sections.empty())
        return;
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
        if (key.name.begin < from)
            continue;
        for (std::uint32_t* offset : {&key.name.begin, &key.name.end, &key.value.begin, &key.value.end})
            ShiftFrom(*offset, from, by);
    }
    if (m_commentRun != kNone)
        ShiftFrom(m_commentRun, from, by);
}

std::string_view IniIndex::BytesOf(IniRange range) const {
    return std::string_view(m_bytes).substr(range.begin, range.end - range.begin);
}

bool IniIndex::IsDirect(IniRange range) const {
    return UnitSize(m_encoding) == 2 || !HasHighByte(BytesOf(range));
}

std::size_t IniIndex::LengthOf(IniRange range) const {
    return (range.end - range.begin) / UnitSize(m_encoding);
}

char16_t IniIndex::DirectUpper(IniRange range, std::size_t at) const {
    return Upper(UnitAt(m_bytes.data() + range.begin + at * UnitSize(m_encoding), m_encoding), m_platform);
}

bool IniIndex::DirectlyBegins(IniRange range, std::u16string_view upper) const {
    for (std::size_t at = 0; at < upper.size(); ++at) {
        if (DirectUpper(range, at) != upper[at])
            return false;
    }
    return true;
}

std::u16string IniIndex::UpperOf(IniRange range) const {
    return UpperText(DecodeText(BytesOf(range), m_encoding, m_platform), m_platform);
}

std::uint32_t IniIndex::HashOf(IniRange range) const {
    if (!IsDirect(range))
        return HashOfUpper(UpperOf(range));
    std::uint32_t hash = kHashStart;
    for (std::size_t at = 0; at < LengthOf(range); ++at)
        hash = HashStep(hash, DirectUpper(range, at));
    return hash;
}

bool IniIndex::SameName(IniRange one, IniRange other) const {
    return BytesOf(one) == BytesOf(other) || UpperOf(one) == UpperOf(other);
}

} // namespace mxovshare
