#include "EditComparison.h"
#include "TestPlatform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace mxovshare {
namespace {

using namespace std::string_literals;

// Files, names and values drawn from the awkward ones.
class Draw {
public:
    explicit Draw(unsigned seed) : m_generator(seed) {}

    std::size_t Below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(m_generator);
    }

    std::u16string Text(std::u16string_view alphabet, std::size_t longest) {
        std::u16string text;
        for (std::size_t length = Below(longest + 1); length > 0; --length) {
            text += alphabet[Below(alphabet.size())];
        }
        return text;
    }

    std::u16string Name() { return Text(u"aAbB\xE9\xC9_1] ;[=.", 2); }
    std::u16string Value() { return Text(u"ab \t\"'\\\r\n\x1A;=[]\xC3\xA9\x4E2D\x2028\xD83D\xDD27", 8); }

    std::u16string Line() {
        switch (Below(6)) {
        case 0:
            return u"[" + Name() + u"]" + Text(u" ;x]", 2);
        case 1:
            return u";" + Value();
        case 2:
            return Text(u" \t", 2);
        case 3:
            return Name();
        default:
            return Text(u" ", 1) + Name() + Text(u" ", 1) + u"=" + Text(u" ", 1) + Value();
        }
    }

    std::string File(IniEncoding encoding, const TextPlatform& platform) {
        const std::u16string ends[] = {u"\r\n", u"\n", u"\r"};
        std::u16string text;
        for (std::size_t count = Below(14); count > 0; --count) {
            text += Line() + ends[Below(8) == 0 ? Below(3) : 0];
        }
        text += Below(3) == 0 ? Line() : std::u16string();
        std::string bytes(MarkOf(encoding));
        if (!EncodeText(text, encoding, platform, bytes)) {
            bytes.append(text.begin(), text.end());
        }
        return bytes;
    }

private:
    std::mt19937 m_generator;
};

void EditAtRandom(unsigned seed, const TextPlatform& platform) {
    Draw draw(seed);
    const auto encoding = static_cast<IniEncoding>(draw.Below(5));
    const std::string bytes = draw.File(encoding, platform);
    EditComparison comparison(platform, bytes);
    std::optional<std::string> difference = comparison.Check();
    for (int i = 0; i < 12 && !difference; ++i) {
        const std::u16string section = draw.Name();
        difference = draw.Below(5) == 0 ? comparison.RemoveSection(section)
                                        : comparison.SetValue(section, draw.Name(), draw.Value());
    }
    ASSERT_FALSE(difference) << *difference << ", seed " << seed << ", file "
                             << testing::PrintToString(bytes);
}

// Edits files drawn from seeds, six times as many with MXOV_LONG.
void ExpectAgreement(unsigned count, const TextPlatform& platform) {
    const unsigned seeds = std::getenv("MXOV_LONG") ? 6 * count : count;
    for (unsigned seed = 0; seed < seeds && !testing::Test::HasFailure(); ++seed) {
        EditAtRandom(seed, platform);
    }
}

TEST(IniRandomEdit, AgreesWithThePlainRulesOnASingleBytePage) {
    ExpectAgreement(1'000, SingleBytePage());
}

TEST(IniRandomEdit, AgreesWithThePlainRulesOnADoubleBytePage) {
    ExpectAgreement(1'000, DoubleBytePage());
}

TEST(IniRandomEdit, AgreesWithThePlainRulesWhereTheCodePageIsUtf8) {
    ExpectAgreement(500, Utf8Page());
}

} // namespace
} // namespace mxovshare
