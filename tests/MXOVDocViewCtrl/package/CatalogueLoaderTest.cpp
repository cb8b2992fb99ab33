#include "package/CatalogueLoader.h"

#include "FakeCatalogueSource.h"

#include <gtest/gtest.h>

using namespace docview;

namespace {

std::vector<std::wstring> NamesOf(const std::vector<CatalogueItem>& items) {
    std::vector<std::wstring> names;
    names.reserve(items.size());
    for (const CatalogueItem& item : items) {
        names.push_back(item.record.fileName);
    }
    return names;
}

TEST(CatalogueLoader, LeavesOutFilesThatVanishedSinceTheFolderWasListed) {
    FakeCatalogueSource source;
    source.sections = {{L"FILEINFO", {{L"GCode", L"NC\\a.nc"}}}};
    source.folders[L"C:\\P\\NC"] = {L"gone.nc", L"there.nc"};
    source.files[L"C:\\P\\NC\\there.nc"] = {.exists = true, .size = 1};
    const std::wstring folder = L"C:\\P\\";
    EXPECT_EQ(NamesOf(CatalogueLoader(source, folder).Load()), (std::vector<std::wstring>{L"there.nc"}));
}

TEST(CatalogueLoader, KeepsTheOrderInWhichAFolderIsListed) {
    FakeCatalogueSource source;
    source.sections = {{L"FILEINFO", {{L"GCode", L"NC\\a"}, {L"SetupSheets", L"S\\a"}}}};
    source.folders[L"C:\\P\\NC"] = {L"b.nc", L"c.nc", L"a.nc"};
    source.folders[L"C:\\P\\\\S"] = {L"b.html", L"c.html", L"a.html"};
    for (const auto& [folder, names] : source.folders) {
        for (const std::wstring& name : names) {
            source.files[std::wstring(folder).append(L"\\").append(name)] = {.exists = true};
        }
    }
    const std::wstring folder = L"C:\\P\\";
    EXPECT_EQ(NamesOf(CatalogueLoader(source, folder).Load()),
              (std::vector<std::wstring>{L"b.html", L"c.html", L"a.html", L"b.nc", L"c.nc", L"a.nc"}));
}

TEST(CatalogueLoader, AsksOnceForEveryDocumentThatExists) {
    FakeCatalogueSource source;
    source.sections = {
        {L"FILEINFO", {{L"CADFilePath", L"C:\\part"}, {L"GCode", L"NC\\a"}, {L"SetupSheets", L"S\\a"}}},
        {L"REFERANCE_FILE_1", {{L"FilePath", L"C:\\linked"}}}};
    source.folders[L"C:\\P\\NC"] = {L"a.nc"};
    source.folders[L"C:\\P\\\\S"] = {L"a.html", L"left out.txt"};
    for (const wchar_t* path : {L"C:\\part", L"C:\\P\\NC\\a.nc", L"C:\\P\\\\S\\a.html", L"C:\\linked"}) {
        source.files[path] = {.exists = true};
    }
    const std::wstring folder = L"C:\\P\\";
    EXPECT_EQ(CatalogueLoader(source, folder).Load().size(), 4U);
    EXPECT_EQ(source.statusQueries, (std::vector<std::wstring>{L"C:\\part", L"C:\\P\\\\S\\a.html",
                                                               L"C:\\P\\NC\\a.nc", L"C:\\linked"}));
    EXPECT_TRUE(source.sizeQueries.empty());
}

TEST(CatalogueLoader, AsksAComputerThatDoesNotAnswerOnce) {
    FakeCatalogueSource source;
    const std::wstring folder = L"C:\\P\\";
    const std::wstring paths[] = {L"\\\\silent\\share\\1.pdf",
                                  L"\\\\silent\\other\\2.pdf",
                                  L"\\\\other\\share\\3.pdf",
                                  L"N:\\4.pdf",
                                  L"N:\\5.pdf",
                                  L"C:\\6.pdf"};
    for (const std::wstring& path : paths) {
        source.sections.push_back({L"REFERANCE_FILE_" + path, {{L"FilePath", path}}});
    }
    source.files[paths[0]] = source.files[paths[3]] = {.noAnswer = true};
    source.files[paths[2]] = source.files[paths[5]] = {.exists = true};
    const std::vector<CatalogueItem> items = CatalogueLoader(source, folder).Load();
    EXPECT_EQ(source.statusQueries, (std::vector<std::wstring>{paths[0], paths[2], paths[3], paths[5]}));
    ASSERT_EQ(items.size(), 6U);
    for (const std::size_t missing : {0, 1, 3, 4}) {
        EXPECT_EQ(items[missing].image, kMissingImage) << missing;
    }
    EXPECT_EQ(items[2].image, kLinkedImage);
    EXPECT_EQ(items[5].image, kLinkedImage);
    CatalogueLoader again(source, folder);
    again.Load();
    again.Load();
    EXPECT_EQ(source.statusQueries.size(), 12U) << "each load asks anew";
}

} // namespace
