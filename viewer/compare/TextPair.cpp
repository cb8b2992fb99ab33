#include "compare/TextPair.h"

#include "common/Utf8.h"

#include <care/compare/Alignment.h>

namespace viewer {

namespace {

using care::RowKind;

// The lines of one side, each of which becomes a row.
class ColumnMaker {
public:
    ColumnMaker(const std::wstring& text, TextKind kind) : m_lines(MakeLines(text, kind)) {}

    TextLine Row(std::size_t number, LineMark mark) {
        if (number == 0) {
            return {.text = {}, .tints = {}, .number = 0, .mark = LineMark::Gap};
        }
        TextLine row = std::move(m_lines.at(number - 1));
        row.mark = mark;
        return row;
    }

private:
    std::vector<TextLine> m_lines;
};

LineMark MarkOf(RowKind kind) {
    switch (kind) {
    case RowKind::Removed:
        return LineMark::Removed;
    case RowKind::Added:
        return LineMark::Added;
    case RowKind::Changed:
        return LineMark::Changed;
    default:
        return LineMark::None;
    }
}

void AddRow(std::vector<RowRange>& differences, std::size_t row) {
    if (differences.empty() || differences.back().end != row) {
        differences.push_back({row, row});
    }
    ++differences.back().end;
}

} // namespace

TextColumns ArrangeTexts(const TextPair& texts, bool isPlain) {
    ColumnMaker before(texts.before, texts.kind);
    ColumnMaker after(texts.after, texts.kind);
    TextColumns columns;
    for (const care::AlignedRow& row :
         care::AlignTexts(common::ToUtf8(texts.before), common::ToUtf8(texts.after),
                          isPlain || texts.kind != TextKind::GCode)) {
        if (row.kind != RowKind::Same) {
            AddRow(columns.differences, columns.before.size());
        }
        columns.before.push_back(before.Row(row.left, MarkOf(row.kind)));
        columns.after.push_back(after.Row(row.right, MarkOf(row.kind)));
    }
    return columns;
}

} // namespace viewer
