// An INI file in memory: its bytes, changed only where a value changes, and an index of what lies where.
#pragma once

#include "ini/IniEncoding.h"
#include "ini/IniIndex.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mxovshare {

/// Names compare without regard to case and without blanks at either end. Of sections or keys of one name the
/// first counts, as with the platform's profile functions; lines before the first header belong to no
/// section.
///
/// Names that cannot stand in a file (empty, with control characters or half surrogate pairs, a key with "="
/// or beginning with ";" or "[") are absent when read and ignored when written. A NUL ends a name or value.
class IniDocument {
public:
    /// Larger files are not read. Half of it is the limit for changes, since text that moves to UTF-16
    /// doubles: a change that would end above it is refused.
    static constexpr std::size_t kMaxBytes = 128 << 20;

    /// Files of more sections or lines are not read.
    static constexpr IniLimits kMost = {.sections = 110'000, .lines = 550'000};

    /// A document of these bytes. UTF-16 without a mark gets one, half a unit at its end is dropped. A change
    /// that would exceed `limits` is refused. `platform` outlives the document.
    explicit IniDocument(const TextPlatform& platform, std::string bytes = {}, const IniLimits& limits = {});
    IniDocument(IniDocument&&) = delete;

    /// False when the bytes hold more than the limits allow; the document is then without use.
    bool IsComplete() const { return m_index->IsComplete(); }

    const std::string& Bytes() const { return m_bytes; }
    IniEncoding Encoding() const { return m_encoding; }

    /// The value of a key; empty when there is none.
    std::u16string Value(std::u16string_view section, std::u16string_view key) const;

    bool HasSection(std::u16string_view section) const;

    /// Whether SetValue with the same arguments would change the bytes.
    bool WouldChange(std::u16string_view section, std::u16string_view key, std::u16string_view value) const;

    /// Sets a key. A new key comes behind the last one of its section, a new section at the end of the file,
    /// with the line ends found there. Text that the ANSI code page cannot hold turns the file into UTF-16
    /// with mark. Gives whether the bytes changed: setting what is there already does not.
    bool SetValue(std::u16string_view section, std::u16string_view key, std::u16string_view value);

    /// Removes every section of this name with its lines; comment lines directly above the next header stay.
    /// Gives whether there was one.
    bool RemoveSection(std::u16string_view section);

    /// Names as they are spelled, in order of appearance and each once, of the sections that begin with
    /// `prefix`.
    std::vector<std::u16string> SectionNames(std::u16string_view prefix) const;

    /// The highest decimal number n up to 2147483647 among the sections named `prefix`, "_", n; 0 without
    /// one.
    int LastIndex(std::u16string_view prefix) const;

    // Reading section by section, by numbers that hold until the next change. Nothing is added to the index.
    /// The first section from `number` on that is read; SectionCount() behind the last.
    std::uint32_t NextSection(std::uint32_t number) const;
    std::uint32_t SectionCount() const { return static_cast<std::uint32_t>(m_index->Sections().size()); }
    /// The number of the section of this name; IniIndex::kNone without one.
    std::uint32_t FindSection(std::u16string_view section) const;
    std::u16string SectionName(std::uint32_t section) const {
        return TextOf(m_index->Sections()[section].name);
    }
    std::u16string ReadValue(std::uint32_t section, std::u16string_view key) const;
    /// The keys of a section in order of appearance, each once.
    std::vector<IniKey> ReadKeys(std::uint32_t section) const { return m_index->ReadKeys(section); }
    std::u16string NameOf(const IniKey& key) const { return TextOf(key.name); }
    std::u16string ValueOf(const IniKey& key) const;

private:
    void BuildIndex();
    void BecomeUtf16();
    // The encoding that the bytes show after a change must still be the one they were written in.
    void KeepEncoding();
    std::uint32_t FindKey(std::u16string_view section, std::u16string_view key) const;
    bool MayGrow(std::size_t units) const { return m_bytes.size() + 4 * units <= kMaxBytes / 2; }
    void Splice(std::size_t begin, std::size_t end, std::string_view bytes);
    void ReplaceValue(std::uint32_t number, std::u16string_view stored);
    void InsertKey(std::uint32_t section, std::u16string line);
    void AppendSection(std::u16string_view section, const std::u16string& line);

    std::string Encoded(std::u16string_view text) const;
    std::u16string TextOf(IniRange range) const;
    // The line end that stops right before `offset`; empty when the line there has none.
    std::u16string LineEndBefore(std::size_t offset) const;
    // The line end for a line behind one that has none: the first in the file, else CR LF.
    std::u16string UsualLineEnd() const;

    const TextPlatform& m_platform;
    IniLimits m_limits;
    std::string m_bytes;
    IniEncoding m_encoding;
    bool m_hasHighByte;
    std::unique_ptr<IniIndex> m_index;
};

} // namespace mxovshare
