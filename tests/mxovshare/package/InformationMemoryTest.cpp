// How much memory it takes to read information files that were made to be dear.
#include "CountedMemory.h"
#include "ini/IniDocument.h"
#include "ini/IniInformation.h"
#include "ini/IniStore.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <functional>

using namespace counted;
using namespace mxovshare;

namespace {

constexpr long long kMegabyte = 1 << 20;

std::string Name(std::size_t number) {
    std::string name(5, 'A');
    for (std::size_t at = 0; at < name.size(); ++at, number /= 26) {
        name[at] = static_cast<char>('A' + number % 26);
    }
    return name;
}

// So many bytes of lines, each with another name.
std::string Lines(const char* before, const char* after, long long size) {
    std::string text;
    text.reserve(static_cast<std::size_t>(size) + 100);
    for (std::size_t number = 0; static_cast<long long>(text.size()) < size; ++number) {
        text.append(before).append(Name(number)).append(after);
    }
    return text;
}

// Reads what a host reads, and everything that the answers name.
void ReadAll(const std::wstring& file) {
    IniStore store;
    store.Value(L"FILEINFO", L"MaxtlreVersion", file);
    for (const std::wstring& section : store.SectionNames(L"REFERANCE_FILE", file)) {
        store.Value(section, L"FilePath", file);
    }
}

class InformationMemory : public testing::Test {
protected:
    /// `pause`: milliseconds between writing and reading. For a moment after a change a file is read again
    /// and compared, which takes its size once more.
    void ExpectLessThanThreeTimes(const std::string& text, DWORD pause = 0) {
        const std::wstring file = m_folder.Write(L"mxinfo.ini", text);
        const auto size = static_cast<long long>(text.size());
        Sleep(pause);
        EXPECT_LT(PeakOf([&file] { ReadAll(file); }), 3 * size);
    }

    TempFolder m_folder;
};

TEST_F(InformationMemory, ManyShortSections) {
    const std::string sections = Lines("[", "]\n", 22 * kMegabyte);
    ExpectLessThanThreeTimes(sections);
    ExpectLessThanThreeTimes(sections + sections + sections + sections + sections);
}

TEST_F(InformationMemory, ManyShortKeys) {
    ExpectLessThanThreeTimes("[FILEINFO]\n" + Lines("", "=\n", 22 * kMegabyte));
}

TEST_F(InformationMemory, AsManyDocumentsAsAreRead) {
    std::string text;
    for (std::size_t number = 1; number < IniDocument::kMost.sections; ++number) {
        text += "[REFERANCE_FILE_" + std::to_string(number) +
                "]\nIsReferencedFile=NO\nDescription=\nFilePath=" + std::string(400, 'x') + "\n";
    }
    ExpectLessThanThreeTimes(text, 3000);
}

TEST_F(InformationMemory, AsManyKeysAsAreRead) {
    std::string text = "[FILEINFO]\n";
    for (std::size_t number = 2; number < IniDocument::kMost.lines; ++number) {
        text += Name(number) + "=" + std::string(120, 'x') + "\n";
    }
    ExpectLessThanThreeTimes(text);
}

TEST_F(InformationMemory, AsManyShortKeysAsAreRead) {
    std::string text;
    for (std::size_t number = 1; number < IniDocument::kMost.sections; ++number) {
        text += "[REFERANCE_FILE_" + std::to_string(number) + "]\nFilePath=a\nb=\nc=\n";
    }
    const std::wstring file = m_folder.Write(L"mxinfo.ini", text);
    EXPECT_LT(PeakOf([&file] { ReadAll(file); }), 3 * static_cast<long long>(text.size()) + 64 * kMegabyte);
}

TEST_F(InformationMemory, AFileThatIsTooLongIsReportedAndStays) {
    const std::string text = Lines("[", "]\n", kMegabyte);
    const std::wstring file = m_folder.Write(L"mxinfo.ini", text);
    IniStore store;
    const IniOutcome outcome = store.SetValue(L"AAAAA", L"key", L"value", file);
    EXPECT_TRUE(outcome.firstRefused);
    EXPECT_EQ(outcome.error, static_cast<DWORD>(ERROR_FILE_TOO_LARGE));
    EXPECT_EQ(m_folder.Read(L"mxinfo.ini"), text);
}

TEST_F(InformationMemory, AFileThatBecameTooLongLeavesWhatWasReadLast) {
    const std::wstring file = m_folder.Write(L"mxinfo.ini", "[s]\nk=old\n");
    IniStore store;
    EXPECT_EQ(store.Value(L"s", L"k", file), L"old");
    const std::string text = Lines("[", "]\n", kMegabyte);
    m_folder.Write(L"mxinfo.ini", text);
    Sleep(1);
    EXPECT_EQ(store.Value(L"s", L"k", file), L"old");
    store.SetValue(L"s", L"k", L"new", file);
    EXPECT_EQ(store.Value(L"s", L"k", file), L"new");
    EXPECT_EQ(m_folder.Read(L"mxinfo.ini"), text);
}

} // namespace
