#include "mxovchange.h"

#include "Listeners.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

TEST(ReadContent, DescribesTheFilesOfAFolder) {
    constexpr SYSTEMTIME kTime = {2020, 1, 0, 2, 3, 4, 6, 0};
    FILETIME time = {};
    ASSERT_TRUE(SystemTimeToFileTime(&kTime, &time));
    const TempFolder folder;
    const std::wstring information = folder.Write(L"mxinfo.ini", "[s]\nk=v\n");
    const std::wstring document = folder.Write(L"sub\\doc.txt", "content");
    folder.SetTime(L"sub\\doc.txt", kTime);
    std::uint32_t checksum = 0;
    ASSERT_TRUE(ReadChecksum(document, checksum).ok);

    std::vector<PackageEntry> entries;
    Information sections;
    RecordingProgress progress;
    ASSERT_TRUE(ReadContent(folder.Path(), entries, sections, &progress).ok);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].name, L"mxinfo.ini");
    EXPECT_EQ(entries[1].name, L"sub\\doc.txt");
    EXPECT_EQ(entries[1].size, 7u);
    EXPECT_EQ(entries[1].packedSize, 0u);
    EXPECT_EQ(entries[1].crc32, checksum);
    EXPECT_EQ(CompareFileTime(&entries[1].modified, &time), 0);
    EXPECT_EQ(sections.Value(L"s", L"k"), L"v");

    // A file is named before it is read.
    std::vector<std::pair<std::wstring, std::uint64_t>> calls;
    for (const auto& call : progress.calls) {
        calls.emplace_back(call.name, call.done);
        EXPECT_EQ(call.total, 15u);
    }
    EXPECT_EQ(calls, (std::vector<std::pair<std::wstring, std::uint64_t>>{
                         {information, 0}, {information, 8}, {document, 8}, {document, 15}}));
}

} // namespace
