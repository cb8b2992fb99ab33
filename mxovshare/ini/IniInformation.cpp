#include "ini/IniInformation.h"

#include "text/SystemText.h"

namespace mxovshare {

namespace {

InformationSection SectionOf(const IniDocument& document, std::uint32_t number) {
    const std::vector<IniKey> keys = document.ReadKeys(number);
    InformationSection section = {ToWide(document.SectionName(number)), {}};
    section.values.reserve(keys.size());
    for (const IniKey& key : keys) {
        section.values.emplace_back(ToWide(document.NameOf(key)), ToWide(document.ValueOf(key)));
    }
    return section;
}

} // namespace

Information::Iterator::Iterator(const IniDocument& document, std::uint32_t number)
    : m_document(&document), m_number(document.NextSection(number)) {}

InformationSection Information::Iterator::operator*() const {
    return SectionOf(*m_document, m_number);
}

Information::Iterator& Information::Iterator::operator++() {
    m_number = m_document->NextSection(m_number + 1);
    return *this;
}

Information::Iterator Information::Iterator::operator++(int) {
    Iterator before = *this;
    ++*this;
    return before;
}

struct Information::Content {
    explicit Content(std::string bytes = {}) : document(text, std::move(bytes), kMostInformation) {}

    SystemText text;
    IniDocument document;
};

Information::Information() : m_content(std::make_unique<Content>()) {}
Information::Information(const Information& other)
    : m_content(std::make_unique<Content>(other.m_content->document.Bytes())) {}
Information::Information(Information&& other) noexcept = default;
Information& Information::operator=(Information&& other) noexcept = default;
Information::~Information() = default;

Information& Information::operator=(const Information& other) {
    m_content = std::make_unique<Content>(other.m_content->document.Bytes());
    return *this;
}

bool Information::Parse(std::string bytes) {
    m_content = std::make_unique<Content>(std::move(bytes));
    if (m_content->document.IsComplete()) {
        return true;
    }
    m_content = std::make_unique<Content>();
    return false;
}

Information::Iterator Information::begin() const {
    return {m_content->document, 0};
}

Information::Iterator Information::end() const {
    return {m_content->document, m_content->document.SectionCount()};
}

std::optional<InformationSection> Information::Find(std::wstring_view name) const {
    const std::uint32_t number = m_content->document.FindSection(ToUtf16(name));
    if (number == IniIndex::kNone) {
        return {};
    }
    return SectionOf(m_content->document, number);
}

std::wstring Information::Value(std::wstring_view section, std::wstring_view key) const {
    const std::uint32_t number = m_content->document.FindSection(ToUtf16(section));
    return number == IniIndex::kNone ? std::wstring()
                                     : ToWide(m_content->document.ReadValue(number, ToUtf16(key)));
}

std::vector<std::wstring> Information::SectionNames(std::wstring_view prefix) const {
    std::vector<std::wstring> names;
    for (const std::u16string& name : m_content->document.SectionNames(ToUtf16(prefix))) {
        names.push_back(ToWide(name));
    }
    return names;
}

void Information::SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value) {
    m_content->document.SetValue(ToUtf16(section), ToUtf16(key), ToUtf16(value));
}

void Information::RemoveSection(std::wstring_view section) {
    m_content->document.RemoveSection(ToUtf16(section));
}

} // namespace mxovshare
