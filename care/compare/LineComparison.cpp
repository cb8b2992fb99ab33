#include "care/compare/LineComparison.h"

#include <algorithm>

namespace care {

namespace {

using Lines = std::vector<ComparedLine>;

// The shortest script of removals and insertions, by the greedy algorithm of Myers: the furthest place that
// is reached with each number of differences, on each diagonal.
class ShortestEdit {
public:
    ShortestEdit(const Lines& left, std::size_t leftBegin, std::size_t leftEnd, const Lines& right,
                 std::size_t rightBegin, std::size_t rightEnd)
        : m_left(left), m_right(right), m_leftBegin(leftBegin), m_rightBegin(rightBegin),
          m_leftSize(static_cast<long>(leftEnd - leftBegin)),
          m_rightSize(static_cast<long>(rightEnd - rightBegin)) {}

    /// False when there are more differences than `most`.
    bool Find(long most) {
        std::vector<long> reached = {0};
        for (long differences = 0; differences <= most; ++differences) {
            reached = differences == 0 ? std::vector<long>{Follow(0, 0)} : Advance(reached, differences);
            m_steps.push_back(reached);
            const long goal = m_leftSize - m_rightSize;
            const bool isOnDiagonal = std::abs(goal) <= differences && (goal + differences) % 2 == 0;
            if (isOnDiagonal && At(reached, differences, goal) >= m_leftSize) {
                return true;
            }
        }
        return false;
    }

    /// Which lines of both texts are in no other; from the end to the beginning.
    void Trace(std::vector<bool>& removed, std::vector<bool>& inserted) const {
        long diagonal = m_leftSize - m_rightSize;
        for (long differences = static_cast<long>(m_steps.size()) - 1; differences > 0; --differences) {
            const std::vector<long>& before = m_steps[static_cast<std::size_t>(differences) - 1];
            const bool isInsertion = IsInsertion(before, differences, diagonal);
            diagonal += isInsertion ? 1 : -1;
            const long x = At(before, differences - 1, diagonal);
            if (isInsertion) {
                inserted[m_rightBegin + static_cast<std::size_t>(x - diagonal)] = true;
            } else {
                removed[m_leftBegin + static_cast<std::size_t>(x)] = true;
            }
        }
    }

private:
    // Diagonals of one step are every second one from -differences to differences.
    static long At(const std::vector<long>& reached, long differences, long diagonal) {
        return reached[static_cast<std::size_t>((diagonal + differences) / 2)];
    }

    // Whether the way to a diagonal comes from the one above, by inserting a line.
    static bool IsInsertion(const std::vector<long>& before, long differences, long diagonal) {
        if (diagonal == -differences) {
            return true;
        }
        return diagonal != differences &&
               At(before, differences - 1, diagonal - 1) < At(before, differences - 1, diagonal + 1);
    }

    std::vector<long> Advance(const std::vector<long>& before, long differences) const {
        std::vector<long> reached;
        for (long diagonal = -differences; diagonal <= differences; diagonal += 2) {
            const long x = IsInsertion(before, differences, diagonal)
                               ? At(before, differences - 1, diagonal + 1)
                               : At(before, differences - 1, diagonal - 1) + 1;
            reached.push_back(Follow(x, x - diagonal));
        }
        return reached;
    }

    // The place on the same diagonal behind all equal lines.
    long Follow(long x, long y) const {
        while (x >= 0 && y >= 0 && x < m_leftSize && y < m_rightSize &&
               m_left[m_leftBegin + static_cast<std::size_t>(x)].key ==
                   m_right[m_rightBegin + static_cast<std::size_t>(y)].key) {
            ++x;
            ++y;
        }
        return x;
    }

    const Lines& m_left;
    const Lines& m_right;
    std::size_t m_leftBegin;
    std::size_t m_rightBegin;
    long m_leftSize;
    long m_rightSize;
    std::vector<std::vector<long>> m_steps;
};

LineDifference Difference(const ComparedLine& line, bool isRemoved) {
    return {.isRemoved = isRemoved, .number = line.number, .text = std::string(line.text)};
}

} // namespace

std::vector<LineDifference> CompareLines(const Lines& left, const Lines& right, std::size_t most) {
    std::size_t begin = 0;
    std::size_t leftEnd = left.size();
    std::size_t rightEnd = right.size();
    while (begin < leftEnd && begin < rightEnd && left[begin].key == right[begin].key) {
        ++begin;
    }
    while (leftEnd > begin && rightEnd > begin && left[leftEnd - 1].key == right[rightEnd - 1].key) {
        --leftEnd;
        --rightEnd;
    }
    std::vector<bool> removed(left.size(), false);
    std::vector<bool> inserted(right.size(), false);
    ShortestEdit edit(left, begin, leftEnd, right, begin, rightEnd);
    if (edit.Find(static_cast<long>(most))) {
        edit.Trace(removed, inserted);
    } else {
        std::fill(removed.begin() + static_cast<std::ptrdiff_t>(begin),
                  removed.begin() + static_cast<std::ptrdiff_t>(leftEnd), true);
        std::fill(inserted.begin() + static_cast<std::ptrdiff_t>(begin),
                  inserted.begin() + static_cast<std::ptrdiff_t>(rightEnd), true);
    }
    std::vector<LineDifference> differences;
    for (std::size_t x = begin, y = begin; x < leftEnd || y < rightEnd;) {
        if (x < leftEnd && removed[x]) {
            differences.push_back(Difference(left[x++], true));
        } else if (y < rightEnd && inserted[y]) {
            differences.push_back(Difference(right[y++], false));
        } else {
            ++x;
            ++y;
        }
    }
    return differences;
}

} // namespace care
