// The one pass over the lines of an INI file. Private to the index.
#pragma once

#include "ini/IniIndex.h"
#include "ini/IniValue.h"

namespace mxovshare {

/// Finds headers, keys and comment lines as the platform's profile functions do: CR, LF and CR LF end a line,
/// blanks around names and values do not count, a header ends at the last "]" of its line, ";" begins a
/// comment line, and a header without "]" is an ordinary line.
template <typename Units>
class IniScanner {
public:
    /// With `twoByteCharacters` the text may hold two-byte characters whose second byte looks like "]".
    IniScanner(IniIndex& index, const std::string& bytes, const IniPlatform& platform, bool twoByteCharacters)
        : m_index(index), m_bytes(bytes.data()), m_platform(platform),
          m_twoByteCharacters(twoByteCharacters) {}

    /// Scans whole lines; those before the first header belong to `section`, or to none.
    void Run(std::size_t begin, std::size_t end, std::uint32_t section) {
        m_section = section;
        m_end = static_cast<std::uint32_t>(end);
        for (auto at = static_cast<std::uint32_t>(begin); at < m_end;)
            at = Line(at);
    }

private:
    char16_t At(std::uint32_t offset) const { return Units::At(m_bytes + offset); }

    // Takes in the line that begins at `begin` and gives the beginning of the next one.
    std::uint32_t Line(std::uint32_t begin) {
        std::uint32_t textEnd = begin;
        while (textEnd < m_end && At(textEnd) != u'\n' && At(textEnd) != u'\r')
            textEnd += Units::kSize;
        std::uint32_t next = textEnd < m_end ? textEnd + Units::kSize : m_end;
        if (next < m_end && At(textEnd) == u'\r' && At(next) == u'\n')
            next += Units::kSize;

        const IniRange text = Trimmed({begin, textEnd});
        if (text.begin == text.end)
            m_index.m_commentRun = IniIndex::kNone;
        else if (At(text.begin) == u';')
            m_index.m_commentRun = std::min(m_index.m_commentRun, begin);
        else if (At(text.begin) != u'[' || !Header({begin, next}, text))
            Key(text, next);
        return next;
    }

    IniRange Trimmed(IniRange text) const {
        while (text.begin < text.end && IsIniBlank(At(text.begin)))
            text.begin += Units::kSize;
        while (text.begin < text.end && IsIniBlank(At(text.end - Units::kSize)))
            text.end -= Units::kSize;
        return text;
    }

    // A name ends at a NUL, as for every plain reader.
    IniRange NameIn(IniRange text) const {
        std::uint32_t end = text.begin;
        while (end < text.end && At(end) != u'\0')
            end += Units::kSize;
        return Trimmed({text.begin, end});
    }

    bool Header(IniRange line, IniRange text) {
        std::uint32_t close = text.begin;
        for (std::uint32_t at = text.begin; at < text.end; at += Units::kSize) {
            if (At(at) == u']')
                close = at;
            else if (m_twoByteCharacters && At(at) >= 0x80 &&
                     m_platform.IsLeadByte(static_cast<unsigned char>(At(at))))
                ++at;
        }
        if (close == text.begin)
            return false;
        m_section = static_cast<std::uint32_t>(m_index.m_sections.size());
        m_index.AddSection(line, NameIn({text.begin + Units::kSize, close}));
        return true;
    }

    void Key(IniRange text, std::uint32_t next) {
        m_index.m_commentRun = IniIndex::kNone;
        if (m_section == IniIndex::kNone)
            return;
        IniSection& section = m_index.m_sections[m_section];
        section.keysEnd = next;
        std::uint32_t equals = text.begin;
        while (equals < text.end && At(equals) != u'=')
            equals += Units::kSize;
        IniKey key = {NameIn({text.begin, equals}), {equals, equals}, m_section, equals < text.end};
        if (key.hasValue)
            key.value = Trimmed({equals + Units::kSize, text.end});
        if (!section.shadowed && key.name.begin < key.name.end)
            m_index.AddKey(key);
    }

    IniIndex& m_index;
    const char* m_bytes;
    const IniPlatform& m_platform;
    bool m_twoByteCharacters;
    std::uint32_t m_section = IniIndex::kNone;
    std::uint32_t m_end = 0;
};

} // namespace mxovshare
