// Large and hostile files: the time to read and to edit one grows with its size, not faster.
#include "ini/IniDocument.h"

#include "TestPlatform.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>
#include <unordered_map>

namespace mxovshare {
namespace {

const SingleBytePage kPlainPage;

// Two words that lead a hash by FNV-1a from one state to the same other one, which `state` becomes.
std::pair<std::string, std::string> CollidingWords(std::uint32_t& state) {
    std::unordered_map<std::uint32_t, std::string> reached;
    std::minstd_rand random(1);
    for (;;) {
        std::string word;
        std::uint32_t hash = state;
        for (int i = 0; i < 8; ++i) {
            word += static_cast<char>('A' + random() % 26);
            hash = (hash ^ static_cast<unsigned char>(word.back())) * 16777619;
        }
        const auto [known, isNew] = reached.try_emplace(hash, word);
        if (!isNew && known->second != word) {
            state = hash;
            return {known->second, word};
        }
    }
}

// 8192 names of one hash.
std::vector<std::string> CollidingNames() {
    std::vector<std::string> names = {""};
    std::uint32_t state = 2166136261;
    for (int i = 0; i < 13; ++i) {
        const auto [one, other] = CollidingWords(state);
        std::vector<std::string> longer;
        for (const std::string& name : names) {
            longer.push_back(name + one);
            longer.push_back(name + other);
        }
        names = std::move(longer);
    }
    return names;
}

// Of reading names as sections and as keys and looking for the last of each.
std::clock_t TimeOf(const std::vector<std::string>& names) {
    std::string sections;
    std::string keys = "[s]\n";
    for (const std::string& name : names) {
        sections += "[" + name + "]\n";
        keys += name + "=1\n";
    }
    const std::u16string last(names.back().begin(), names.back().end());
    const std::clock_t start = std::clock(); // of processor time
    EXPECT_EQ(IniDocument(kPlainPage, sections).Value(last, u""), u"");
    EXPECT_EQ(IniDocument(kPlainPage, keys).Value(u"s", last), u"1");
    return std::clock() - start;
}

TEST(IniDocumentSize, NamesThatCollideInAHashTableAreNoSlower) {
    const std::vector<std::string> colliding = CollidingNames();
    std::vector<std::string> others;
    for (std::size_t i = 0; i < colliding.size(); ++i) {
        others.push_back(std::to_string(i) + colliding[i].substr(0, colliding[i].size() - 4));
    }
    // Comparing each name with each other takes some hundred times as long.
    EXPECT_LT(TimeOf(colliding), 20 * TimeOf(others) + CLOCKS_PER_SEC / 50);
}

TEST(IniDocumentSize, ChangesUpToHalfOfWhatIsRead) {
    constexpr std::size_t kMost = IniDocument::kMaxBytes / 2;
    // The three texts with 16 characters around them, in the longest encoding.
    constexpr std::size_t kChange = std::size_t{4} * (1 + 1 + 1 + 16);
    const auto of = [](std::size_t size) {
        std::string bytes = "[s]\nk=1\n;";
        bytes.resize(size, 'x');
        return bytes;
    };
    EXPECT_TRUE(IniDocument(kPlainPage, of(kMost - kChange)).SetValue(u"s", u"k", u"v"));
    EXPECT_FALSE(IniDocument(kPlainPage, of(kMost - kChange + 1)).SetValue(u"s", u"k", u"v"));
    EXPECT_TRUE(IniDocument(kPlainPage, of(kMost)).RemoveSection(u"s"));
    EXPECT_FALSE(IniDocument(kPlainPage, of(kMost + 1)).RemoveSection(u"s"));
}

TEST(IniDocumentSize, ManySectionsOfOneNameGoAtOnce) {
    std::string bytes;
    for (int i = 0; i < 200'000; ++i) {
        bytes += "[s]\nk=1\n[t]\n";
    }
    const std::clock_t start = std::clock();
    IniDocument document(kPlainPage, bytes);
    EXPECT_TRUE(document.RemoveSection(u"s"));
    const std::string& rest = document.Bytes();
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 10);
    EXPECT_EQ(rest.size(), 200'000U * 4);
}

TEST(IniDocument, TenThousandSectionsAreEasy) {
    IniDocument document(kPlainPage);
    for (int i = 1; i <= 10'000; ++i) {
        const std::string number = std::to_string(i);
        ASSERT_TRUE(document.SetValue(u"F_" + std::u16string(number.begin(), number.end()), u"Path", u"x"));
    }
    EXPECT_EQ(document.LastIndex(u"F"), 10'000);
    EXPECT_EQ(document.SectionNames(u"f_").size(), 10'000U);
    EXPECT_EQ(document.Value(u"F_5000", u"path"), u"x");
    document.SetValue(u"F_1", u"Path", u"longer than before");
    EXPECT_EQ(document.Value(u"F_10000", u"Path"), u"x");
}

} // namespace
} // namespace mxovshare
