// The one pass over the lines of an INI file. Private to the index.
#pragma once

#include "ini/IniIndex.h"
#include "ini/IniValue.h"

#include <algorithm>
#include <cstring>

namespace mxovshare {

/// Finds headers, keys and comment lines as the platform's profile functions do: CR, LF and CR LF end a line,
/// blanks around names and values do not count, a header ends at the last "]" of its line, ";" begins a
/// comment line, and a header without "]" is an ordinary line.
template <typename Units, typename Index>
class IniScanner {
public:
    /// With `twoByteCharacters` the text may hold characters whose second byte looks like "]".
    IniScanner(Index& index, bool twoByteCharacters)
        : m_index(index), m_bytes(index.m_bytes.data()), m_twoByteCharacters(twoByteCharacters) {}

    /// Adds the sections of whole lines, which follow what was scanned before.
    void Sections(std::uint32_t begin, std::uint32_t end) {
        ForEachLine(begin, end, [&](IniRange line, IniRange text) {
            if (text.begin == text.end) {
                m_index.m_commentRun = IniIndex::kNone;
            } else if (IsComment(text)) {
                m_index.m_commentRun = std::min(m_index.m_commentRun, line.begin);
            } else {
                m_index.CountLine(line);
                if (!AddHeader(line, text)) {
                    PassKey(line);
                }
            }
        });
    }

    /// Passes the keys of whole lines of one section to `take`.
    template <typename Take>
    void Keys(std::uint32_t section, std::uint32_t begin, std::uint32_t end, Take take) const {
        ForEachLine(begin, end, [&](IniRange, IniRange text) {
            if (text.begin == text.end || IsComment(text) || HeaderEnd(text) != text.begin) {
                return;
            }
            const IniKey key = KeyIn(section, text);
            if (key.name.begin < key.name.end) {
                take(key);
            }
        });
    }

private:
    char16_t At(std::uint32_t offset) const { return Units::At(m_bytes + offset); }
    bool IsComment(IniRange text) const { return At(text.begin) == u';'; }

    // Calls `visit` with each line as a whole, and with its text without blanks at either end.
    template <typename Visit>
    void ForEachLine(std::uint32_t begin, std::uint32_t end, Visit visit) const {
        while (begin < end) {
            const std::uint32_t textEnd = LineEnd(begin, end);
            std::uint32_t next = std::min(textEnd + Units::kSize, end);
            if (next < end && At(textEnd) == u'\r' && At(next) == u'\n') {
                next += Units::kSize;
            }
            visit(IniRange{begin, next}, Trimmed({begin, textEnd}));
            begin = next;
        }
    }

    // Where the line end is, or `end`.
    std::uint32_t LineEnd(std::uint32_t at, std::uint32_t end) const {
        if constexpr (Units::kSize == 1) {
            at = SkipPrintable(at, end);
        }
        while (at < end && At(at) != u'\n' && At(at) != u'\r') {
            at += Units::kSize;
        }
        return at;
    }

    // Passes eight bytes at a time as long as none of them is below 0E, as line ends are.
    std::uint32_t SkipPrintable(std::uint32_t at, std::uint32_t end) const {
        constexpr std::uint64_t kOnes = 0x0101010101010101;
        for (std::uint64_t block = 0; end - at >= sizeof(block); at += sizeof(block)) {
            std::memcpy(&block, m_bytes + at, sizeof(block));
            if (((block - kOnes * 0x0E) & ~block & kOnes * 0x80) != 0) {
                break;
            }
        }
        return at;
    }

    IniRange Trimmed(IniRange text) const {
        while (text.begin < text.end && IsIniBlank(At(text.begin))) {
            text.begin += Units::kSize;
        }
        while (text.begin < text.end && IsIniBlank(At(text.end - Units::kSize))) {
            text.end -= Units::kSize;
        }
        return text;
    }

    // A name ends at a NUL, as for every plain reader.
    IniRange NameIn(IniRange text) const {
        std::uint32_t end = text.begin;
        while (end < text.end && At(end) != u'\0') {
            end += Units::kSize;
        }
        return Trimmed({text.begin, end});
    }

    // Where the "]" of a header is; the beginning of the text when it is none.
    std::uint32_t HeaderEnd(IniRange text) const {
        std::uint32_t close = text.begin;
        if (At(text.begin) != u'[') {
            return close;
        }
        for (std::uint32_t at = text.begin; at < text.end; at += Units::kSize) {
            const char16_t unit = At(at);
            if (unit == u']') {
                close = at;
            } else if (m_twoByteCharacters && unit >= 0x80 &&
                       m_index.m_platform.IsLeadByte(static_cast<unsigned char>(unit))) {
                ++at;
            }
        }
        return close;
    }

    bool AddHeader(IniRange line, IniRange text) {
        const std::uint32_t close = HeaderEnd(text);
        if (close == text.begin) {
            return false;
        }
        const IniRange name = NameIn({text.begin + Units::kSize, close});
        m_index.AddSection(line, name);
        return true;
    }

    void PassKey(IniRange line) {
        m_index.m_commentRun = IniIndex::kNone;
        if (!m_index.m_sections.empty()) {
            m_index.m_sections.back().keysEnd = line.end;
        }
    }

    IniKey KeyIn(std::uint32_t section, IniRange text) const {
        std::uint32_t equals = text.begin;
        while (equals < text.end && At(equals) != u'=') {
            equals += Units::kSize;
        }
        IniKey key = {NameIn({text.begin, equals}), {equals, equals}, section, equals < text.end};
        if (key.hasValue) {
            key.value = Trimmed({equals + Units::kSize, text.end});
        }
        return key;
    }

    Index& m_index;
    const char* m_bytes;
    bool m_twoByteCharacters;
};

} // namespace mxovshare
