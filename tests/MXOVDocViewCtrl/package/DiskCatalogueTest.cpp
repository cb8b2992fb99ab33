#include "package/CatalogueLoader.h"

#include "package/DiskCatalogueSource.h"
#include "package/PackageInformation.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace docview;

namespace {

constexpr SYSTEMTIME kMorning = {2024, 1, 0, 1, 9, 5, 3, 0};

/// A package folder on the disk whose information file is written from UTF-8 text.
class DiskCatalogue : public testing::Test {
protected:
    void Describe(const std::string& information) { m_package.Write(L"mxinfo.ini", information); }

    std::vector<CatalogueItem> Load() const { return LoadAs(m_package.PathWithSeparator()); }

    static std::vector<CatalogueItem> LoadAs(const std::wstring& folder) {
        const DiskCatalogueSource source(FindInformationFile(folder));
        return CatalogueLoader(source, folder).Load();
    }

    static std::string Utf8(const std::wstring& text) {
        std::string bytes(text.size() * 3, '\0');
        const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                             bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
        bytes.resize(static_cast<std::size_t>(size));
        return bytes;
    }

    TempFolder m_package;
};

/// The names in the order of the alphabet, since the file system's own order is not settled.
std::vector<std::wstring> SortedNames(const std::vector<CatalogueItem>& items) {
    std::vector<std::wstring> names;
    names.reserve(items.size());
    for (const CatalogueItem& item : items) {
        names.push_back(item.record.fileName);
    }
    std::ranges::sort(names);
    return names;
}

TEST_F(DiskCatalogue, WithoutAnInformationFileIsEmptyAndWritesNothing) {
    EXPECT_TRUE(Load().empty());
    EXPECT_EQ(m_package.EntryCount(), 0);
}

TEST_F(DiskCatalogue, ShowsThePartThatExists) {
    const TempFolder elsewhere;
    const std::wstring part = elsewhere.WriteSized(L"bracket.sldprt", 1025);
    Describe("[FILEINFO]\nCADFilePath=" + Utf8(part) +
             "\nCADFileLastModifiedTime=yesterday, late\nCADFileDescription=The bracket\n");
    const std::vector<CatalogueItem> items = Load();
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].record.sectionName, L"FILEINFO");
    EXPECT_EQ(items[0].record.fileName, L"bracket.sldprt");
    EXPECT_EQ(items[0].record.timestamp, L"yesterday, late");
    EXPECT_EQ(items[0].record.filePath, part);
    EXPECT_EQ(items[0].record.description, L"The bracket");
    EXPECT_EQ(items[0].record.isReferenced, 1);
    EXPECT_EQ(items[0].record.isAdditional, 0);
    EXPECT_EQ(items[0].record.category, DocumentCategory::PartAssembly);
    EXPECT_EQ(items[0].sizeText, L"2 KB");
    EXPECT_EQ(items[0].image, kLinkedImage);
}

TEST_F(DiskCatalogue, ShowsAMissingPartWithTheMissingImage) {
    Describe("[FILEINFO]\nCADFilePath=C:\\no such folder\\bracket.sldprt\n");
    const std::vector<CatalogueItem> items = Load();
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].record.fileName, L"bracket.sldprt");
    EXPECT_EQ(items[0].sizeText, L"0 KB");
    EXPECT_EQ(items[0].image, kMissingImage);
}

TEST_F(DiskCatalogue, TakesSetupSheetsByTheirExactExtensions) {
    Describe("[FILEINFO]\nSetupSheets=Setup\\any.html\nSetupSheetsFileDescription=Clamping\n");
    for (const wchar_t* name : {L"a.PDF", L"b.docx", L"c.html", L"d.htm", L"e.xlsx", L"f.xls", L"g.Xml",
                                L"h.doc", L"pdf", L"i.pdf.txt", L"j.txt.pdf", L".xml"}) {
        m_package.Write(std::wstring(L"Setup\\") + name, "1");
    }
    m_package.Write(L"Setup\\folder.html\\inside.html", "");
    m_package.SetTime(L"Setup\\c.html", kMorning);
    const std::vector<CatalogueItem> items = Load();
    EXPECT_EQ(SortedNames(items), (std::vector<std::wstring>{L".xml", L"a.PDF", L"c.html", L"f.xls", L"g.Xml",
                                                             L"h.doc", L"j.txt.pdf"}));
    const auto sheet =
        std::ranges::find(items, L"c.html", [](const CatalogueItem& i) { return i.record.fileName; });
    ASSERT_NE(sheet, items.end());
    EXPECT_EQ(sheet->record.sectionName, L"FILEINFO");
    EXPECT_EQ(sheet->record.timestamp, L"2024-01-01 09:05:03");
    EXPECT_EQ(sheet->record.filePath, m_package.PathWithSeparator() + L"\\Setup\\c.html");
    EXPECT_EQ(sheet->record.description, L"Clamping");
    EXPECT_EQ(sheet->record.isReferenced, 0);
    EXPECT_EQ(sheet->record.isAdditional, 0);
    EXPECT_EQ(sheet->record.category, DocumentCategory::SetupSheets);
    EXPECT_EQ(sheet->sizeText, L"1 KB");
    EXPECT_EQ(sheet->image, kPackedImage);
}

TEST_F(DiskCatalogue, ListsOnlyTheFolderOfTheFirstGCodeEntry) {
    Describe("[FILEINFO]\nGCode=;NC1\\any.nc;NC2\\other.nc\nGCodeFileDescription=Roughing\n");
    m_package.Write(L"NC1\\one.nc", "");
    m_package.Write(L"NC1\\no extension", "12");
    m_package.Write(L"NC1\\notes.txt", "");
    m_package.Write(L"NC1\\folder\\inside.nc", "");
    m_package.Write(L"NC2\\two.nc", "");
    const std::vector<CatalogueItem> items = Load();
    EXPECT_EQ(SortedNames(items), (std::vector<std::wstring>{L"no extension", L"notes.txt", L"one.nc"}));
    for (const CatalogueItem& item : items) {
        EXPECT_EQ(item.record.category, DocumentCategory::GCode);
        EXPECT_EQ(item.record.description, L"Roughing");
        EXPECT_EQ(item.record.filePath, m_package.PathWithSeparator() + L"NC1\\" + item.record.fileName);
        EXPECT_EQ(item.image, kPackedImage);
    }
}

TEST_F(DiskCatalogue, JoinsSetupSheetsWithASeparatorAndGCodeWithout) {
    Describe("[FILEINFO]\nSetupSheets=Setup\\a.html\nGCode=NC\\a.nc\n");
    m_package.Write(L"Setup\\a.html", "");
    m_package.Write(L"NC\\a.nc", "");
    EXPECT_EQ(SortedNames(LoadAs(m_package.Path())), (std::vector<std::wstring>{L"a.html"}));
    EXPECT_EQ(SortedNames(LoadAs(m_package.PathWithSeparator())),
              (std::vector<std::wstring>{L"a.html", L"a.nc"}));
}

TEST_F(DiskCatalogue, ListsThePackageFolderItselfForAGCodeEntryWithoutAFolder) {
    Describe("[FILEINFO]\nGCode=a.nc\n");
    m_package.Write(L"b.nc", "");
    EXPECT_EQ(SortedNames(Load()), (std::vector<std::wstring>{L"b.nc", L"mxinfo.ini"}));
}

TEST_F(DiskCatalogue, HasNoGCodeWhenTheListHasNoEntry) {
    Describe("[FILEINFO]\nGCode=;;;\n");
    EXPECT_TRUE(Load().empty());
}

TEST_F(DiskCatalogue, HasNothingFromFoldersThatAreMissing) {
    Describe("[FILEINFO]\nSetupSheets=gone\\a.html\nGCode=gone\\a.nc\n");
    EXPECT_TRUE(Load().empty());
}

TEST_F(DiskCatalogue, ReadsAdditionalDocumentsInTheOrderOfTheFile) {
    const TempFolder elsewhere;
    const std::wstring linked = elsewhere.WriteSized(L"linked.pdf", 1024);
    m_package.WriteSized(L"ReferanceFiles\\copied.txt", 3000);
    Describe("[REFERANCE_FILE_7]\nIsReferencedFile=YES\nDescription=Seven\nTimestamp=t7\nFilePath=" +
             Utf8(linked) +
             "\n[REFERANCE_FILE_2]\nIsReferencedFile=NO\nDescription=Two\nTimestamp=t2\n"
             "FilePath=ReferanceFiles\\copied.txt\n"
             "[REFERANCE_FILE_3]\nIsReferencedFile=YES\nFilePath=C:\\gone\\lost.txt\n"
             "[REFERANCE_FILE_4]\nIsReferencedFile=NO\nFilePath=ReferanceFiles\\lost.txt\n");
    const std::vector<CatalogueItem> items = Load();
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0].record.sectionName, L"REFERANCE_FILE_7");
    EXPECT_EQ(items[0].record.fileName, L"linked.pdf");
    EXPECT_EQ(items[0].record.timestamp, L"t7");
    EXPECT_EQ(items[0].record.filePath, linked);
    EXPECT_EQ(items[0].record.description, L"Seven");
    EXPECT_EQ(items[0].record.isReferenced, 1);
    EXPECT_EQ(items[0].record.isAdditional, 1);
    EXPECT_EQ(items[0].record.category, DocumentCategory::AdditionalDocument);
    EXPECT_EQ(items[0].sizeText, L"1 KB");
    EXPECT_EQ(items[0].image, kLinkedImage);
    EXPECT_EQ(items[1].record.fileName, L"copied.txt");
    EXPECT_EQ(items[1].record.filePath, L"ReferanceFiles\\copied.txt");
    EXPECT_EQ(items[1].record.isReferenced, 0);
    EXPECT_EQ(items[1].sizeText, L"3 KB");
    EXPECT_EQ(items[1].image, kPackedImage);
    EXPECT_EQ(items[2].sizeText, L"0 KB");
    EXPECT_EQ(items[2].image, kMissingImage);
    EXPECT_EQ(items[3].sizeText, L"0 KB");
    EXPECT_EQ(items[3].image, kPackedImage);
}

TEST_F(DiskCatalogue, LoadsAdditionalDocumentsOfOldPackagesToo) {
    Describe("[FILEINFO]\nMaxtlreVersion=Maxtlre 2019\n[REFERANCE_FILE_1]\nFilePath=C:\\a.txt\n");
    EXPECT_EQ(Load().size(), 1U);
}

TEST_F(DiskCatalogue, KeepsTheOrderOfTheCategories) {
    Describe("[REFERANCE_FILE_1]\nFilePath=C:\\add.txt\n"
             "[FILEINFO]\nGCode=NC\\a.nc\nSetupSheets=Setup\\a.html\nCADFilePath=C:\\part.sldprt\n");
    m_package.Write(L"Setup\\sheet.html", "");
    m_package.Write(L"NC\\code.nc", "");
    const std::vector<CatalogueItem> items = Load();
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0].record.fileName, L"part.sldprt");
    EXPECT_EQ(items[1].record.fileName, L"sheet.html");
    EXPECT_EQ(items[2].record.fileName, L"code.nc");
    EXPECT_EQ(items[3].record.fileName, L"add.txt");
}

TEST_F(DiskCatalogue, ReadsDamagedInformationFilesWithoutChangingThem) {
    const std::string part = "[FILEINFO]\r\nCADFilePath=C:\\part.sldprt";
    std::string utf16 = "\xff\xfe";
    for (const char c : part) {
        utf16 += {c, '\0'};
    }
    std::string binary(100000, '\0');
    for (std::size_t i = 0; i < binary.size(); ++i) {
        binary[i] = static_cast<char>((i * 2654435761U) >> 13);
    }
    const std::vector<std::pair<std::string, std::size_t>> cases = {
        {"", 0},                                                                // empty
        {part, 1},                                                              // no last line end
        {utf16, 1},                                                             // UTF-16
        {binary, 0},                                                            // no text at all
        {part + "\n[FILEINFO]\nCADFilePath=C:\\other.sldprt\n", 1},             // the same section twice
        {"[X]\n" + std::string(8000000, 'x') + "\n" + part, 1},                 // a huge line
        {"[FILEINFO\nCADFilePath=C:\\part.sldprt\n=\n[]\n[REFERANCE_FILE_1", 0} // broken brackets
    };
    for (const auto& [bytes, count] : cases) {
        Describe(bytes);
        const std::vector<CatalogueItem> items = Load();
        EXPECT_EQ(items.size(), count) << bytes.substr(0, 40);
        if (count == 1 && items.size() == 1) {
            EXPECT_EQ(items[0].record.fileName, L"part.sldprt");
        }
        EXPECT_TRUE(m_package.Read(L"mxinfo.ini") == bytes);
        EXPECT_EQ(m_package.EntryCount(), 1);
    }
}

} // namespace
