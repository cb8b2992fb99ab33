// Applies edits to the model and to the plain rules, and reports where they differ.
#pragma once

#include "ini/IniDocument.h"
#include "PlainIni.h"

#include <optional>
#include <string>
#include <vector>

namespace mxovshare {

/// A section's name, and its keys and values in order.
struct IniSectionText {
    std::u16string name;
    std::vector<std::pair<std::u16string, std::u16string>> values;
};

/// Everything that can be read, in order of appearance.
std::vector<IniSectionText> ContentsOf(const IniDocument& document);

/// A model and the plain rules on the same file. Every call checks that both agree and that the model's index
/// is that of its bytes; it returns a description of the first difference.
class EditComparison {
public:
    EditComparison(const TextPlatform& platform, const std::string& bytes);

    std::optional<std::string> SetValue(const std::u16string& section, const std::u16string& key,
                                        const std::u16string& value);
    std::optional<std::string> RemoveSection(const std::u16string& section);
    std::optional<std::string> Check() const;

    const IniDocument& Document() const { return m_document; }

private:
    std::u16string Text() const;

    const TextPlatform& m_platform;
    IniDocument m_document;
    PlainIni m_plain;
};

} // namespace mxovshare
