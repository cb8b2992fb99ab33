// Where sections, keys and values lie in the bytes of an INI file. Sections are found in one pass over the
// file, the keys of a section when the first of them is asked for.
#pragma once

#include "ini/IniEncoding.h"
#include "ini/IniName.h"

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mxovshare {

template <typename Units, typename Index>
class IniScanner;

/// How much an index may hold. Each section and each key takes far more memory than its line.
struct IniLimits {
    std::size_t sections = std::numeric_limits<std::size_t>::max();
    std::size_t lines = std::numeric_limits<std::size_t>::max();  ///< that hold text and are no comments
    std::size_t length = std::numeric_limits<std::size_t>::max(); ///< of one of them, in bytes
};

/// A stretch of a file, in bytes from its start.
struct IniRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

/// Numbers by folded name. An ordered map, because names from elsewhere could be chosen to collide in a hash
/// table.
using IniNumbers = std::map<std::u16string, std::uint32_t, std::less<>>;

/// One section. Its lines run from `begin` to `end`, where the next header or the end of the file is.
struct IniSection {
    IniRange name;
    std::uint32_t begin = 0;   ///< of the header's line
    std::uint32_t keysEnd = 0; ///< behind the line of the last key, or of the header when there is none
    /// Like `end`, but without the comment lines that stand directly above the next header.
    std::uint32_t ownEnd = 0;
    std::uint32_t end = 0;
    bool shadowed = false;  ///< never read: the name is empty, or an earlier section has it
    bool keysKnown = false; ///< its keys are in the index
    IniNumbers keys = {};   ///< numbers of its keys
};

/// One key of a section that is not shadowed; the first of its name there.
struct IniKey {
    IniRange name;
    IniRange value; ///< without blanks at either end
    std::uint32_t section = 0;
    bool hasValue = false; ///< false for a line without "="; `value` is then empty and lies behind the name
};

/// The index. It refers to the bytes it was built from; a caller that changes them must update it.
class IniIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    IniIndex(const std::string& bytes, IniEncoding encoding, const TextPlatform& platform,
             const IniLimits& limits = {});

    /// False when the bytes hold more than the limits allow; the index is then without use.
    bool IsComplete() const { return m_complete; }
    /// Whether the limits allow one key more, in a new section of its own or in an old one.
    bool MayAddKey(bool inNewSection) const;

    /// Numbers of a section and of a key by name; kNone without one.
    std::uint32_t FindSection(std::u16string_view name) const;
    std::uint32_t FindKey(std::uint32_t section, std::u16string_view name);

    /// All sections in order of appearance.
    const std::vector<IniSection>& Sections() const { return m_sections; }
    const IniKey& Key(std::uint32_t number) const { return m_keys[number]; }

    // What follows reads the lines of a section and adds nothing to the index, whose keys take far more
    // memory than their lines.
    /// The key of this name; none without one.
    std::optional<IniKey> ReadKey(std::uint32_t section, std::u16string_view name) const;
    /// The keys in order of appearance, each once.
    std::vector<IniKey> ReadKeys(std::uint32_t section) const;

    /// The name in `range` in its folded form.
    std::u16string FoldedName(IniRange range) const;

    /// The value of key `number` was replaced and is `length` bytes long now. For a key without one, "=" and
    /// the value were inserted behind its name.
    void ValueReplaced(std::uint32_t number, std::size_t length);
    /// `length` bytes with the line of a new key of `section` were inserted at its `keysEnd`.
    void KeyInserted(std::uint32_t section, std::size_t length);
    /// Lines were added at the end of the file, which was `oldSize` bytes long. The first `lineBreak` of
    /// their bytes end the line that was the last one.
    void Appended(std::size_t oldSize, std::size_t lineBreak);

private:
    template <typename Units, typename Index>
    friend class IniScanner;

    template <typename Index, typename Action>
    static void WithScanner(Index& index, Action action);
    void ScanSections(std::size_t begin);
    void ScanKeys(std::uint32_t section, std::uint32_t begin, std::uint32_t end);
    void CountLine(IniRange line);
    void AddSection(IniRange line, IniRange name);
    void AddKey(const IniKey& key);
    bool IsNamed(IniRange range, std::u16string_view folded) const;
    void CloseLastSection(std::uint32_t ownEnd, std::uint32_t end);
    void Shift(std::uint32_t from, std::ptrdiff_t by);

    const std::string& m_bytes;
    IniEncoding m_encoding;
    const TextPlatform& m_platform;
    IniLimits m_limits;
    std::size_t m_lines = 0; // that the limit is about
    bool m_complete = true;
    std::vector<IniSection> m_sections;
    std::vector<IniKey> m_keys;
    IniNumbers m_sectionNumbers;
    std::uint32_t m_commentRun = kNone; // where the comment lines begin that end the part scanned so far
};

} // namespace mxovshare
