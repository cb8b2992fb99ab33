#include "care/compare/Alignment.h"

#include "care/compare/GCodeLines.h"

namespace care {

namespace {

enum class LineState { Ignored, Equal, Different };

// The lines of one text in order.
class AlignedSide {
public:
    AlignedSide(std::string_view text, const std::vector<ComparedLine>& compared,
                const std::vector<LineDifference>& differences, bool isRemoved)
        : m_states(LinesOf(text, true).size(), LineState::Ignored) {
        for (const ComparedLine& line : compared) {
            m_states[line.number - 1] = LineState::Equal;
        }
        for (const LineDifference& difference : differences) {
            if (difference.isRemoved == isRemoved) {
                m_states[difference.number - 1] = LineState::Different;
            }
        }
    }

    [[nodiscard]] bool IsAtEnd() const { return m_next == m_states.size(); }
    [[nodiscard]] bool IsAt(LineState state) const { return !IsAtEnd() && m_states[m_next] == state; }

    // The number of the next line, which is taken; 0 when it has another state.
    std::size_t Take(LineState state) { return IsAt(state) ? ++m_next : 0; }

private:
    std::vector<LineState> m_states;
    std::size_t m_next = 0;
};

RowKind KindOf(const AlignedRow& row) {
    return row.right == 0 ? RowKind::Removed : row.left == 0 ? RowKind::Added : RowKind::Changed;
}

AlignedRow NextRow(AlignedSide& left, AlignedSide& right) {
    for (const LineState state : {LineState::Ignored, LineState::Different}) {
        if (left.IsAt(state) || right.IsAt(state)) {
            AlignedRow row = {.left = left.Take(state), .right = right.Take(state)};
            row.kind = state == LineState::Different ? KindOf(row) : RowKind::Same;
            return row;
        }
    }
    return {.left = left.Take(LineState::Equal), .right = right.Take(LineState::Equal)};
}

} // namespace

std::vector<AlignedRow> AlignTexts(std::string_view left, std::string_view right, bool isPlain) {
    const std::vector<ComparedLine> leftLines = LinesOf(left, isPlain);
    const std::vector<ComparedLine> rightLines = LinesOf(right, isPlain);
    const std::vector<LineDifference> differences = CompareLines(leftLines, rightLines);
    AlignedSide leftSide(left, leftLines, differences, true);
    AlignedSide rightSide(right, rightLines, differences, false);
    std::vector<AlignedRow> rows;
    while (!leftSide.IsAtEnd() || !rightSide.IsAtEnd()) {
        rows.push_back(NextRow(leftSide, rightSide));
    }
    return rows;
}

} // namespace care
