// A document's text, in lines with tinted parts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace viewer {

enum class Tint { Comment, Tool, Number };

struct TintedPart {
    std::size_t begin = 0; ///< in characters
    std::size_t end = 0;   ///< behind the last one
    Tint tint = Tint::Comment;
    bool operator==(const TintedPart&) const = default;
};

/// What a comparison has found out about a line.
enum class LineMark {
    None,
    Removed,
    Added,
    Changed,
    Gap, ///< only another text has a line here
};

struct TextLine {
    std::wstring text; ///< without line end and tabs
    std::vector<TintedPart> tints;
    std::size_t number = 0; ///< from 1; 0 for none
    LineMark mark = LineMark::None;
};

enum class TextKind { Plain, GCode, Markup };

/// The text of a file's bytes: UTF-16 with a mark, UTF-8, else the system's code page.
[[nodiscard]] std::wstring DecodeText(std::string_view bytes);

/// Whether the bytes are no text of any encoding.
[[nodiscard]] bool IsBinary(std::string_view bytes);

/// Splits a text at its line ends and tints it: comments, and in G code tool calls and the numbers of blocks.
[[nodiscard]] std::vector<TextLine> MakeLines(std::wstring_view text, TextKind kind);

} // namespace viewer
