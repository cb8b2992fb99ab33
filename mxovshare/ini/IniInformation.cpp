#include "ini/IniInformation.h"

#include "ini/IniDocument.h"
#include "text/SystemText.h"

namespace mxovshare {

namespace {

class SectionReader final : public IniReader {
public:
    explicit SectionReader(std::vector<InformationSection>& sections) : m_sections(sections) {}

    void OnSection(const std::u16string& name, std::size_t keys) override {
        m_sections.push_back({ToWide(name), {}});
        m_sections.back().values.reserve(keys);
    }
    void OnKey(const std::u16string& name, const std::u16string& value) override {
        m_sections.back().values.emplace_back(ToWide(name), ToWide(value));
    }

private:
    std::vector<InformationSection>& m_sections;
};

} // namespace

bool ParseInformation(std::string bytes, std::vector<InformationSection>& sections) {
    sections.clear();
    const SystemText text;
    const IniDocument document(text, std::move(bytes), kMostInformation);
    if (!document.IsComplete()) {
        return false;
    }
    SectionReader reader(sections);
    document.Read(reader);
    return true;
}

} // namespace mxovshare
