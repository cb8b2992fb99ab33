#include "files/WebMark.h"

#include "pack/Unpack.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace mxovshare;

namespace {

constexpr char kMark[] = "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=https://example.com/p.mxov\r\n";

// The test folder's file system lists streams as files with the stream's name.
bool AlwaysStreams(const std::wstring& /*path*/) {
    return true;
}

class WebMarkTest : public testing::Test {
protected:
    void SetUp() override {
        m_work.Write(L"source\\mxinfo.ini", "[FILEINFO]\r\n");
        m_work.Write(L"source\\GCode\\a.nc", "G0\r\n");
        m_work.SetTime(L"source\\GCode\\a.nc", {2024, 5, 3, 15, 6, 30, 0, 0});
        ASSERT_TRUE(CreatePackage(m_work / L"source", Package()).ok);
    }

    [[nodiscard]] std::wstring Package() const { return m_work / L"p.mxov"; }
    void MarkPackage() const { m_work.Write(L"p.mxov:Zone.Identifier", kMark); }
    void Unpack(WebMark::StreamProbe hasStreams) const {
        UnpackInto(
            Package(), m_work / L"out", nullptr, [] {}, hasStreams);
    }
    [[nodiscard]] std::string MarkOf(const std::wstring& name) const {
        return m_work.Read(L"out\\" + name + L":Zone.Identifier");
    }

    TempFolder m_work;
};

} // namespace

TEST_F(WebMarkTest, EveryUnpackedFileGetsTheMarkOfThePackage) {
    MarkPackage();
    Unpack(AlwaysStreams);
    EXPECT_EQ(MarkOf(L"mxinfo.ini"), kMark);
    EXPECT_EQ(MarkOf(L"GCode\\a.nc"), kMark);
    EXPECT_EQ(m_work.Read(L"out\\GCode\\a.nc"), "G0\r\n");
}

TEST_F(WebMarkTest, TheMarkLeavesTheTimeOfTheFile) {
    MarkPackage();
    Unpack(AlwaysStreams);
    std::vector<PackageEntry> entries;
    std::vector<PackageEntry> files;
    ASSERT_TRUE(ListPackage(Package(), entries).ok && ListFolder(m_work / L"out", files).ok);
    for (const PackageEntry& file : files) {
        const auto entry = std::ranges::find(entries, file.name, &PackageEntry::name);
        ASSERT_NE(entry, entries.end()) << "a mark is no file";
        EXPECT_EQ(CompareFileTime(&file.modified, &entry->modified), 0);
    }
    EXPECT_EQ(files.size(), 2u);
}

TEST_F(WebMarkTest, MarksAreNotPacked) {
    MarkPackage();
    Unpack(AlwaysStreams);
    const PackageResult packed = CreatePackage(m_work / L"out", m_work / L"again.mxov");
    ASSERT_TRUE(packed.ok) << packed.message.c_str();
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(m_work / L"again.mxov", entries).ok);
    EXPECT_EQ(entries.size(), 2u);
}

TEST_F(WebMarkTest, WithoutAMarkNothingIsMarked) {
    Unpack(AlwaysStreams);
    EXPECT_EQ(MarkOf(L"mxinfo.ini"), "");
}

TEST_F(WebMarkTest, WithoutStreamsNothingHappens) {
    ASSERT_FALSE(HasStreams(m_work.Path()));
    MarkPackage();
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
    EXPECT_EQ(MarkOf(L"mxinfo.ini"), "");
    EXPECT_EQ(m_work.Read(L"out\\mxinfo.ini"), "[FILEINFO]\r\n");
}

TEST_F(WebMarkTest, AMarkThatCannotBeWrittenIsAFailure) {
    MarkPackage();
    const WebMark mark(Package(), AlwaysStreams);
    EXPECT_ANY_THROW(mark.CopyTo(m_work / L"none\\a.nc"));
    m_work.Write(L"p.mxov:Zone.Identifier", "");
    EXPECT_NO_THROW(WebMark(Package(), AlwaysStreams).CopyTo(m_work / L"none\\a.nc"));
}

TEST_F(WebMarkTest, MarksAreKnownByTheirNames) {
    EXPECT_TRUE(IsWebMark(L"a.nc:Zone.Identifier"));
    EXPECT_TRUE(IsWebMark(L"a.nc:ZONE.identifier"));
    EXPECT_FALSE(IsWebMark(L":Zone.Identifier"));
    EXPECT_FALSE(IsWebMark(L"Zone.Identifier"));
}
