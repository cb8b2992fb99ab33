// Where sections, keys and values lie in the bytes of an INI file, found in one pass and looked up by name.
#pragma once

#include "ini/IniEncoding.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mxovshare {

template <typename Units>
class IniScanner;

/// A stretch of a file, in bytes from its start.
struct IniRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

/// One section. Its lines run from `begin` to `end`, where the next header or the end of the file is.
struct IniSection {
    IniRange name;
    std::uint32_t begin = 0;   ///< of the header's line
    std::uint32_t keysEnd = 0; ///< behind the line of the last key, or of the header when there is none
    std::uint32_t ownEnd =
        0; ///< like `end`, but without the comment lines that stand directly above the next header
    std::uint32_t end = 0;
    bool shadowed = false; ///< never read: the name is empty, or an earlier section has it
};

/// One key of a section that is not shadowed; the first of its name there.
struct IniKey {
    IniRange name;
    IniRange value; ///< without blanks at either end
    std::uint32_t section = 0;
    bool hasValue = false; ///< false for a line without "="; `value` is then empty and lies behind the name
};

/// `text` in upper case, unit by unit.
std::u16string UpperText(std::u16string_view text, const IniPlatform& platform);

/// A name made ready for look-ups: without blanks at either end and in upper case.
class IniName {
public:
    IniName(std::u16string_view name, const IniPlatform& platform);
    const std::u16string& Upper() const { return m_upper; }
    std::uint32_t Hash() const { return m_hash; }

private:
    std::u16string m_upper;
    std::uint32_t m_hash;
};

/// Open-addressing table from hashes to numbers; equality is the caller's question.
class IniHashTable {
public:
    void Insert(std::uint32_t hash, std::uint32_t number);

    /// The first number inserted under `hash` that `matches` accepts; kNone when there is none.
    template <typename Matches>
    std::uint32_t Find(std::uint32_t hash, Matches matches) const {
        for (std::size_t at = hash & Mask(); !m_slots.empty() && m_slots[at].number != kNone;
             at = (at + 1) & Mask()) {
            if (m_slots[at].hash == hash && matches(m_slots[at].number))
                return m_slots[at].number;
        }
        return kNone;
    }

    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = kNone;
    };

    std::size_t Mask() const { return m_slots.size() - 1; }
    void Place(Slot slot);

    std::vector<Slot> m_slots; // its size is zero or a power of two
    std::size_t m_used = 0;
};

/// The index. It refers to the bytes it was built from; whoever changes them tells it.
class IniIndex {
public:
    static constexpr std::uint32_t kNone = IniHashTable::kNone;

    IniIndex(const std::string& bytes, IniEncoding encoding, const IniPlatform& platform);

    std::uint32_t FindSection(const IniName& name) const;
    std::uint32_t FindKey(std::uint32_t section, const IniName& name) const;

    /// All sections in order of appearance.
    const std::vector<IniSection>& Sections() const { return m_sections; }
    /// All keys in the order in which they were added.
    const std::vector<IniKey>& Keys() const { return m_keys; }

    /// Whether the name in `range`, in upper case, is `upper`.
    bool NameIs(IniRange range, std::u16string_view upper) const;
    /// Whether the name in `range`, in upper case, begins with `upper`.
    bool NameBegins(IniRange range, std::u16string_view upper) const;

    /// The value of key `number` was replaced and is `length` bytes long now. For a key without one, "=" and
    /// the value were inserted behind its name.
    void ValueReplaced(std::uint32_t number, std::size_t length);
    /// `length` bytes with the line of a new key of `section` were inserted at its `keysEnd`.
    void KeyInserted(std::uint32_t section, std::size_t length);
    /// Lines were added at the end of the file, which was `oldSize` bytes long. The first `lineBreak` of
    /// their bytes end the line that was the last one.
    void Appended(std::size_t oldSize, std::size_t lineBreak);

private:
    template <typename Units>
    friend class IniScanner;

    void Scan(std::size_t begin, std::size_t end, std::uint32_t section);
    void AddSection(IniRange line, IniRange name);
    void AddKey(const IniKey& key);
    void CloseLastSection(std::uint32_t ownEnd, std::uint32_t end);
    void Shift(std::uint32_t from, std::ptrdiff_t by);
    std::string_view BytesOf(IniRange range) const;
    // Whether the units of a name can be read one by one, without decoding: all but bytes outside ASCII.
    bool IsDirect(IniRange range) const;
    std::size_t LengthOf(IniRange range) const;
    char16_t DirectUpper(IniRange range, std::size_t at) const;
    bool DirectlyBegins(IniRange range, std::u16string_view upper) const;
    std::u16string UpperOf(IniRange range) const;
    std::uint32_t HashOf(IniRange range) const;
    bool SameName(IniRange one, IniRange other) const;

    const std::string& m_bytes;
    IniEncoding m_encoding;
    const IniPlatform& m_platform;
    std::vector<IniSection> m_sections;
    std::vector<IniKey> m_keys;
    IniHashTable m_sectionTable;
    IniHashTable m_keyTable;
    std::uint32_t m_commentRun = kNone; // where the comment lines begin that end the part scanned so far
};

} // namespace mxovshare
