// The information file of a package in memory, for hosts and tools.
#pragma once

#include "mxovshare.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace mxovshare {

class IniDocument;

/// One section of an information file with its keys in order, as a plain reader sees them.
struct InformationSection {
    std::wstring name;
    std::vector<std::pair<std::wstring, std::wstring>> values;
};

/// The content of an information file, kept as its bytes: as text it takes several times the memory. Sections
/// are decoded one after the other, while the content does not change. Throws only std::bad_alloc.
class MXOVSHARE_API Information {
public:
    /// Decodes a section each time that it is asked for it.
    class MXOVSHARE_API Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = InformationSection;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = InformationSection;

        Iterator() = default;
        Iterator(const IniDocument& document, std::uint32_t number);
        InformationSection operator*() const;
        Iterator& operator++();
        Iterator operator++(int);
        bool operator==(const Iterator& other) const = default;

    private:
        const IniDocument* m_document = nullptr;
        std::uint32_t m_number = 0;
    };

    Information();
    Information(const Information& other);
    Information(Information&& other) noexcept;
    Information& operator=(const Information& other);
    Information& operator=(Information&& other) noexcept;
    ~Information();

    /// Reads the bytes of an information file. False, and no sections, for more than is read.
    [[nodiscard]] bool Parse(std::string bytes);

    /// Sections in order of appearance, each once, as a plain reader sees them.
    Iterator begin() const;
    Iterator end() const;
    bool empty() const { return begin() == end(); }

    /// The section of this name, without regard to case; none without one.
    std::optional<InformationSection> Find(std::wstring_view name) const;
    /// The value of a key; empty without one. Names compare without regard to case.
    std::wstring Value(std::wstring_view section, std::wstring_view key) const;
    /// Names of the sections that begin with `prefix`, in order of appearance.
    std::vector<std::wstring> SectionNames(std::wstring_view prefix) const;

    /// Sets a key, in a new section if there is none of this name. What no file can hold changes nothing.
    void SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value);
    /// Removes a section with its keys.
    void RemoveSection(std::wstring_view section);

private:
    struct Content;
    std::unique_ptr<Content> m_content;
};

} // namespace mxovshare
