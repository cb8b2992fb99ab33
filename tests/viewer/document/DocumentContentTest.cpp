#include "document/DocumentContent.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

using Kind = DocumentContent::Kind;

// A picture of two by one pixels, red and green.
std::string SmallBitmap() {
    BITMAPFILEHEADER file = {0x4D42, 54 + 8, 0, 0, 54};
    BITMAPINFOHEADER info = {sizeof info, 2, 1, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
    return bytes.append("\x00\x00\xFF\x00\xFF\x00\x00\x00", 8);
}

class DocumentContentTest : public testing::Test {
protected:
    DocumentContentTest() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
    ~DocumentContentTest() override { CoUninitialize(); }

    [[nodiscard]] DocumentContent Read(const std::wstring& name, const std::string& bytes,
                                       bool isProgram = false) const {
        DocumentDetails details;
        details.name = name;
        details.path = m_folder.Write(name, bytes);
        details.exists = true;
        details.isProgram = isProgram;
        details.size = bytes.size();
        return ReadContent(details);
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(DocumentContentTest, TextsAreKnownByTheirExtension) {
    for (const wchar_t* name : {L"a.nc", L"a.TAP", L"a.xml", L"a.txt", L"a.csv"}) {
        const DocumentContent content = Read(name, "one\ntwo\n");
        EXPECT_EQ(content.kind, Kind::Text);
        EXPECT_EQ(content.lines.size(), 2U);
        EXPECT_FALSE(content.isCut);
    }
    EXPECT_EQ(Read(L"a.pdf", "one").kind, Kind::Other);
    EXPECT_EQ(Read(L"empty.txt", "").kind, Kind::Text);
}

TEST_F(DocumentContentTest, ProgramsAreTextsWhateverTheirExtension) {
    const DocumentContent content = Read(L"O1234", "N10 T1\n", true);
    EXPECT_EQ(content.kind, Kind::Text);
    EXPECT_EQ(content.lines.at(0).tints.size(), 2U);
    EXPECT_EQ(Read(L"program.bin", std::string("N10\0\1", 5), true).kind, Kind::Other) << "it is binary";
}

TEST_F(DocumentContentTest, OnlyTheFirstMegabyteIsRead) {
    const std::string line = "N10 G1 X0.000\n"; // which does not divide a megabyte
    std::string bytes;
    while (bytes.size() < 3'000'000) {
        bytes += line;
    }
    const DocumentContent content = Read(L"long.nc", bytes);
    EXPECT_TRUE(content.isCut);
    EXPECT_EQ(content.lines.size(), 1'048'576 / line.size());
    EXPECT_EQ(content.lines.back().text, L"N10 G1 X0.000") << "no half line at the end";
}

TEST_F(DocumentContentTest, TheFileIsClosedAtOnce) {
    for (const wchar_t* name : {L"a.nc", L"a.bmp", L"a.pdf"}) {
        const DocumentContent content = Read(name, SmallBitmap());
        EXPECT_TRUE(DeleteFileW((m_folder / name).c_str())) << GetLastError();
    }
}

TEST_F(DocumentContentTest, PicturesAreDecoded) {
    const DocumentContent content = Read(L"a.bmp", SmallBitmap());
    ASSERT_EQ(content.kind, Kind::Picture);
    DIBSECTION picture = {};
    ASSERT_TRUE(GetObjectW(content.picture.get(), sizeof picture, &picture));
    EXPECT_EQ(picture.dsBm.bmWidth, 2);
    EXPECT_EQ(picture.dsBm.bmHeight, 1);
    const auto* pixels = static_cast<const DWORD*>(picture.dsBm.bmBits);
    EXPECT_EQ(pixels[0] & 0xFFFFFF, 0xFF0000U);
    EXPECT_EQ(pixels[1] & 0xFFFFFF, 0x00FF00U);
}

TEST_F(DocumentContentTest, DamagedPicturesAreFilesOfAnotherKind) {
    EXPECT_EQ(Read(L"a.png", "no picture").kind, Kind::Other);
    EXPECT_EQ(Read(L"a.bmp", SmallBitmap().substr(0, 40)).kind, Kind::Other);
    EXPECT_EQ(Read(L"a.jpg", "").kind, Kind::Other);
}

TEST_F(DocumentContentTest, FilesWithAPreviewHandlerAreReadForItUnlessTheyComeFromOutside) {
    constexpr wchar_t kKey[] = L".mxovcontenttest\\shellex\\{8895b1c6-b41f-4c1c-a560-0d564250836f}";
    constexpr wchar_t kNumber[] = L"{5A1F39C4-61F2-4A0E-930D-2E6F117BD05C}";
    ASSERT_EQ(RegSetKeyValueW(HKEY_CLASSES_ROOT, kKey, nullptr, REG_SZ, kNumber, sizeof kNumber),
              ERROR_SUCCESS);
    const DocumentContent content = Read(L"a.mxovcontenttest", "bytes");
    m_folder.Write(L"b.mxovcontenttest", "bytes");
    m_folder.Write(L"b.mxovcontenttest:Zone.Identifier", "[ZoneTransfer]\r\nZoneId=3\r\n");
    const DocumentContent marked = Read(L"b.mxovcontenttest", "bytes");
    RegDeleteTreeW(HKEY_CLASSES_ROOT, L".mxovcontenttest");
    EXPECT_EQ(content.kind, Kind::Previewed);
    EXPECT_EQ(content.preview.bytes, "bytes");
    EXPECT_EQ(content.preview.path, content.details.path);
    EXPECT_EQ(content.preview.handler.Data1, 0x5a1f39c4U);
    EXPECT_FALSE(content.isFromOutside);
    EXPECT_EQ(marked.kind, Kind::Other);
    EXPECT_TRUE(marked.isFromOutside);
    EXPECT_EQ(marked.preview.bytes, "");
}

TEST_F(DocumentContentTest, WhatIsNotThereIsMissing) {
    DocumentDetails details;
    details.path = m_folder / L"gone.txt";
    EXPECT_EQ(ReadContent(details).kind, Kind::Missing);
}
