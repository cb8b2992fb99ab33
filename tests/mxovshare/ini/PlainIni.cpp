#include "PlainIni.h"

#include "ini/IniValue.h"

#include <algorithm>

namespace mxovshare {
namespace {

std::u16string_view UpToNul(std::u16string_view text) {
    return TrimBlanks(text.substr(0, text.find(u'\0')));
}

std::u16string_view NameOf(const std::u16string& line) {
    return UpToNul(std::u16string_view(line).substr(0, line.find(u'=')));
}

std::u16string_view ValueOf(const std::u16string& line) {
    const std::size_t equals = line.find(u'=');
    return equals == line.npos ? std::u16string_view()
                               : TrimBlanks(std::u16string_view(line).substr(equals + 1));
}

} // namespace

PlainIni::PlainIni(std::u16string_view text, const TextPlatform& platform) : m_platform(platform) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        const std::size_t length =
            text.substr(end).starts_with(u"\r\n") ? 2 : std::min<std::size_t>(1, text.size() - end);
        m_lines.push_back({std::u16string(text.substr(0, end)), std::u16string(text.substr(end, length))});
        text.remove_prefix(end + length);
    }
}

std::u16string PlainIni::Text() const {
    std::u16string text;
    for (const Line& line : m_lines) {
        text += line.text + line.end;
    }
    return text;
}

std::u16string PlainIni::Value(std::u16string_view section, std::u16string_view key) const {
    const std::size_t header = FindHeader(section);
    if (header == m_lines.size()) {
        return {};
    }
    const std::size_t next = NextHeader(header + 1);
    const std::size_t line = FindKey(header + 1, next, key);
    return line == next ? std::u16string() : PlainValue(std::u16string(ValueOf(m_lines[line].text)));
}

std::vector<std::u16string> PlainIni::SectionNames(std::u16string_view prefix) const {
    std::vector<std::u16string> names;
    for (const Line& line : m_lines) {
        std::u16string name;
        const auto isSame = [&](const std::u16string& other) { return Upper(other) == Upper(name); };
        if (IsHeader(line, name) && !name.empty() && std::ranges::none_of(names, isSame)) {
            names.push_back(name);
        }
    }
    std::erase_if(names, [&](const std::u16string& name) { return !Upper(name).starts_with(Upper(prefix)); });
    return names;
}

void PlainIni::SetValue(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
    const std::u16string stored = StoredForm(value);
    const std::u16string text = std::u16string(key) + u'=' + stored;
    const std::size_t header = FindHeader(section);
    if (header == m_lines.size()) {
        InsertLine(m_lines.size(), u'[' + std::u16string(section) + u']');
        m_lines.back().end = m_lines.size() > 1 ? m_lines[m_lines.size() - 2].end : UsualEnd();
        m_lines.push_back({text, m_lines.back().end});
        return;
    }
    const std::size_t next = NextHeader(header + 1);
    const std::size_t found = FindKey(header + 1, next, key);
    if (found == next) {
        std::size_t at = next;
        while (at > header + 1 && (TrimBlanks(m_lines[at - 1].text).empty() || IsComment(m_lines[at - 1]))) {
            --at;
        }
        InsertLine(at, text);
        return;
    }
    std::u16string& line = m_lines[found].text;
    const std::size_t equals = line.find(u'=');
    if (equals == line.npos) {
        const std::size_t end = line.find(TrimBlanks(line)) + TrimBlanks(line).size();
        line.insert(end, u'=' + stored);
    } else if (PlainValue(std::u16string(ValueOf(line))) != PlainValue(stored)) {
        const std::u16string_view old = ValueOf(line);
        const std::size_t begin =
            old.empty() ? equals + 1 : static_cast<std::size_t>(old.data() - line.data());
        line.replace(begin, old.size(), stored);
    }
}

void PlainIni::RemoveSection(std::u16string_view section) {
    for (std::size_t header = FindHeader(section); header < m_lines.size();
         header = FindHeader(section, header)) {
        std::size_t end = NextHeader(header + 1);
        while (end < m_lines.size() && end > header + 1 && IsComment(m_lines[end - 1])) {
            --end;
        }
        m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(header),
                      m_lines.begin() + static_cast<std::ptrdiff_t>(end));
    }
}

std::u16string PlainIni::Upper(std::u16string_view text) const {
    std::u16string upper;
    for (const char16_t unit : text) {
        upper += unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : m_platform.Upper(unit);
    }
    return upper;
}

bool PlainIni::IsHeader(const Line& line, std::u16string& name) const {
    const std::u16string_view text = TrimBlanks(line.text);
    const std::size_t close = text.rfind(u']');
    if (!text.starts_with(u'[') || close == text.npos) {
        return false;
    }
    name = UpToNul(text.substr(1, close - 1));
    return true;
}

bool PlainIni::IsComment(const Line& line) const {
    return TrimBlanks(line.text).starts_with(u';');
}

std::size_t PlainIni::FindHeader(std::u16string_view section, std::size_t from) const {
    for (std::size_t i = from; i < m_lines.size(); ++i) {
        std::u16string name;
        if (IsHeader(m_lines[i], name) && !name.empty() && Upper(name) == Upper(section)) {
            return i;
        }
    }
    return m_lines.size();
}

std::size_t PlainIni::NextHeader(std::size_t from) const {
    std::u16string name;
    while (from < m_lines.size() && !IsHeader(m_lines[from], name)) {
        ++from;
    }
    return from;
}

std::size_t PlainIni::FindKey(std::size_t from, std::size_t to, std::u16string_view key) const {
    while (from < to && (IsComment(m_lines[from]) || Upper(NameOf(m_lines[from].text)) != Upper(key))) {
        ++from;
    }
    return from;
}

void PlainIni::InsertLine(std::size_t at, std::u16string_view text) {
    Line line = {std::u16string(text), {}};
    if (at > 0 && m_lines[at - 1].end.empty()) {
        m_lines[at - 1].end = UsualEnd();
    } else if (at > 0) {
        line.end = m_lines[at - 1].end;
    }
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(at), line);
}

std::u16string PlainIni::UsualEnd() const {
    return m_lines.empty() || m_lines.front().end.empty() ? u"\r\n" : m_lines.front().end;
}

} // namespace mxovshare
