#include "ini/IniInformation.h"

#include "ini/IniDocument.h"
#include "text/SystemText.h"

namespace mxovshare {

std::vector<InformationSection> ParseInformation(std::string bytes) {
    std::vector<InformationSection> sections;
    if (bytes.size() > IniDocument::kMaxBytes) {
        return sections;
    }
    const SystemText text;
    for (const IniSectionText& section : IniDocument(text, std::move(bytes)).Contents()) {
        sections.push_back({ToWide(section.name), {}});
        for (const auto& [key, value] : section.values) {
            sections.back().values.emplace_back(ToWide(key), ToWide(value));
        }
    }
    return sections;
}

} // namespace mxovshare
