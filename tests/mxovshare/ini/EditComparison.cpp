#include "EditComparison.h"

#include "ini/IniValue.h"

namespace mxovshare {
namespace {

std::u16string UpToNul(const std::u16string& text) {
    return text.substr(0, text.find(u'\0'));
}

} // namespace

std::vector<IniSectionText> ContentsOf(const IniDocument& document) {
    std::vector<IniSectionText> contents;
    for (std::uint32_t number = document.NextSection(0); number < document.SectionCount();
         number = document.NextSection(number + 1)) {
        contents.push_back({document.SectionName(number), {}});
        for (const IniKey& key : document.ReadKeys(number)) {
            contents.back().values.emplace_back(document.NameOf(key), document.ValueOf(key));
        }
    }
    return contents;
}

EditComparison::EditComparison(const TextPlatform& platform, const std::string& bytes)
    : m_platform(platform), m_document(platform, bytes), m_plain(Text(), platform) {}

std::u16string EditComparison::Text() const {
    const IniEncoding encoding = m_document.Encoding();
    return DecodeText(std::string_view(m_document.Bytes()).substr(MarkOf(encoding).size()), encoding,
                      m_platform);
}

std::optional<std::string> EditComparison::SetValue(const std::u16string& section, const std::u16string& key,
                                                    const std::u16string& value) {
    const std::string before = m_document.Bytes();
    const bool changed = m_document.SetValue(section, key, value);
    if (changed != (before != m_document.Bytes())) {
        return "a change was not reported as it was";
    }
    const std::u16string sectionName(TrimBlanks(UpToNul(section)));
    const std::u16string keyName(TrimBlanks(UpToNul(key)));
    const bool refused = sectionName.empty() || keyName.empty() || NeedsEscape(sectionName) ||
                         NeedsEscape(keyName) || keyName.find(u'=') != keyName.npos || keyName[0] == u';' ||
                         keyName[0] == u'[';
    if (refused) {
        return changed ? std::optional<std::string>("a bad name was written") : Check();
    }
    m_plain.SetValue(sectionName, keyName, value);
    if (m_document.Value(section, key) != UpToNul(value)) {
        return "the value does not come back";
    }
    return Check();
}

std::optional<std::string> EditComparison::RemoveSection(const std::u16string& section) {
    const std::u16string name(TrimBlanks(UpToNul(section)));
    m_document.RemoveSection(section);
    if (!name.empty()) {
        m_plain.RemoveSection(name);
    }
    return Check();
}

std::optional<std::string> EditComparison::Check() const {
    if (Text() != m_plain.Text()) {
        return "the texts differ";
    }
    const IniDocument fresh(m_platform, m_document.Bytes());
    const std::vector<IniSectionText> contents = ContentsOf(m_document);
    const std::vector<IniSectionText> freshContents = ContentsOf(fresh);
    const std::vector<std::u16string> names = m_plain.SectionNames({});
    if (contents.size() != names.size() || freshContents.size() != names.size()) {
        return "the numbers of sections differ";
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (contents[i].name != names[i] || freshContents[i].name != names[i]) {
            return "the section names differ";
        }
        if (contents[i].values != freshContents[i].values) {
            return "the index is not that of the bytes";
        }
        for (const auto& [key, value] : contents[i].values) {
            if (m_document.Value(names[i], key) != value || m_plain.Value(names[i], key) != value) {
                return "the values differ";
            }
        }
    }
    return std::nullopt;
}

} // namespace mxovshare
