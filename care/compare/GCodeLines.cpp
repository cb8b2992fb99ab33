#include "care/compare/GCodeLines.h"

namespace care {

namespace {

bool IsBlank(char unit) {
    return unit == ' ' || unit == '\t' || unit == '\v' || unit == '\f';
}

bool IsDigit(char unit) {
    return unit >= '0' && unit <= '9';
}

// A "/" in front of the number marks a block that the machine may skip.
void RemoveNumber(std::string& line) {
    const std::size_t start = !line.empty() && line.front() == '/' ? 1 : 0;
    std::size_t end = start + 1;
    if (start < line.size() && (line[start] == 'N' || line[start] == 'n')) {
        while (end < line.size() && IsDigit(line[end])) {
            ++end;
        }
        if (end > start + 1) {
            line.erase(start, end - start);
        }
    }
}

} // namespace

std::string WithoutNoise(std::string_view line) {
    std::string kept;
    bool isComment = false;
    for (const char unit : line) {
        if (!isComment && unit == ';') {
            break;
        }
        if (!isComment && unit == '(') {
            isComment = true;
        } else if (isComment) {
            isComment = unit != ')';
        } else if (!IsBlank(unit)) {
            kept += unit;
        }
    }
    RemoveNumber(kept);
    return kept;
}

std::vector<ComparedLine> LinesOf(std::string_view text, bool isPlain) {
    std::vector<ComparedLine> lines;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
        text.remove_prefix(line.size());
        if (!text.empty()) {
            text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
        }
        std::string key = isPlain ? std::string(line) : WithoutNoise(line);
        if (isPlain || !key.empty()) {
            lines.push_back({.key = std::move(key), .number = number, .text = line});
        }
    }
    return lines;
}

} // namespace care
