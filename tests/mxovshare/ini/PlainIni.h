// The rules of INI files written down a second time, slowly and simply, to compare the model with.
#pragma once

#include "ini/IniEncoding.h"

#include <string>
#include <string_view>
#include <vector>

namespace mxovshare {

/// A file as a list of lines of text, searched from the start each time.
class PlainIni {
public:
    PlainIni(std::u16string_view text, const TextPlatform& platform);

    std::u16string Text() const;
    std::u16string Value(std::u16string_view section, std::u16string_view key) const;
    std::vector<std::u16string> SectionNames(std::u16string_view prefix) const;

    /// These take names that are in order.
    void SetValue(std::u16string_view section, std::u16string_view key, std::u16string_view value);
    void RemoveSection(std::u16string_view section);

private:
    struct Line {
        std::u16string text;
        std::u16string end;
    };

    std::u16string Upper(std::u16string_view text) const;
    bool IsHeader(const Line& line, std::u16string& name) const;
    bool IsComment(const Line& line) const;
    // Number of the header's line; as many as there are lines when there is none.
    std::size_t FindHeader(std::u16string_view section, std::size_t from = 0) const;
    std::size_t NextHeader(std::size_t from) const;
    // Number of the key's line between two lines; `to` when there is none.
    std::size_t FindKey(std::size_t from, std::size_t to, std::u16string_view key) const;
    void InsertLine(std::size_t at, std::u16string_view text);
    std::u16string UsualEnd() const;

    const TextPlatform& m_platform;
    std::vector<Line> m_lines;
};

} // namespace mxovshare
