// Any bytes as a file, then edits taken from the same input; the model must agree with the plain rules.
#include "EditComparison.h"
#include "TestPlatform.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace mxovshare;

// Takes pieces off the end of the input, so that its start is the file as it stands.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

    std::size_t Number(std::size_t bound) {
        if (m_rest.empty()) {
            return 0;
        }
        const auto byte = static_cast<unsigned char>(m_rest.back());
        m_rest.remove_suffix(1);
        return byte % bound;
    }

    std::u16string Text(std::size_t longest) {
        std::u16string text;
        for (std::size_t length = Number(longest + 1); length > 0; --length) {
            const auto low = static_cast<char16_t>(Number(256));
            text += low == 0xFF ? static_cast<char16_t>(Number(256) << 8 | Number(256)) : low;
        }
        return text;
    }

    std::string Rest() const { return std::string(m_rest); }

private:
    std::string_view m_rest;
};

struct Edit {
    bool remove;
    std::u16string section;
    std::u16string key;
    std::u16string value;
};

void Demand(const std::optional<std::string>& difference) {
    if (!difference) {
        return;
    }
    std::fprintf(stderr, "%s\n", difference->c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const SingleBytePage single;
    static const DoubleBytePage two;
    static const Utf8Page utf8;
    static const TextPlatform* const kPlatforms[] = {&single, &two, &utf8};

    Input input(data, size);
    const TextPlatform& platform = *kPlatforms[input.Number(3)];
    std::vector<Edit> edits;
    for (std::size_t count = input.Number(5); count > 0; --count) {
        edits.push_back({input.Number(4) == 0, input.Text(3), input.Text(3), input.Text(6)});
    }

    EditComparison comparison(platform, input.Rest());
    Demand(comparison.Check());
    for (const Edit& edit : edits) {
        Demand(edit.remove ? comparison.RemoveSection(edit.section)
                           : comparison.SetValue(edit.section, edit.key, edit.value));
    }
    return 0;
}
