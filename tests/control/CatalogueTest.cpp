// What the control shows for a package folder, seen through COM and the windows alone.
#include "ControlClient.h"
#include "PackageBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

namespace {

class CatalogueTest : public testing::Test {
protected:
    [[nodiscard]] std::vector<std::vector<ShownRow>> AllRows() const {
        return {client.Rows(kPartList), client.Rows(kGCodeList), client.Rows(kSetupList),
                client.Rows(kAdditionalList)};
    }

    HRESULT Load(const std::wstring& folder) {
        return client.Call(L"LoadFile", {folder, folder + L"none.mxov"});
    }

    /// Presses "&Save" as a user does after a change; the name of the file that was saved then.
    std::wstring SavedFile() {
        SendMessageW(client.Dialog(), WM_COMMAND, kUpdateButton, 0);
        SendMessageW(client.Dialog(), WM_COMMAND, kSaveButton, 0);
        std::wstring saved;
        for (const wchar_t* name : {L"first.mxov", L"second.mxov"}) {
            saved += std::filesystem::remove(package.Folder() / name) ? name : L"";
        }
        return saved;
    }

    ComApartment apartment;
    PackageBuilder package;
    ControlClient client;
};

// Enumeration order is the file system's own.
std::vector<ShownRow> Sorted(std::vector<ShownRow> rows) {
    std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    return rows;
}

const std::vector<std::vector<ShownRow>> kNothing(4);

} // namespace

TEST_F(CatalogueTest, ShowsEveryDocumentInItsSection) {
    ASSERT_EQ(S_OK, Load(package.Path()));
    EXPECT_EQ(PartRows(), client.Rows(kPartList));
    EXPECT_EQ(GCodeRows(), Sorted(client.Rows(kGCodeList)));
    EXPECT_EQ(SetupRows(), Sorted(client.Rows(kSetupList)));
    EXPECT_EQ(AdditionalRows(), client.Rows(kAdditionalList));
}

TEST_F(CatalogueTest, ReloadsFromEmptyLists) {
    Load(package.Path());
    const auto first = AllRows();
    Load(package.Path());
    EXPECT_EQ(first, AllRows());
}

TEST_F(CatalogueTest, ReloadShowsWhatTheFileSaysNow) {
    Load(package.Path());
    package.WriteInformation("[FILEINFO]\nCADFilePath=Q:\\gone\\part.sldprt\nCADFileLastModifiedTime=then\n");
    Load(package.Path());
    const std::vector<ShownRow> part = {{L"part.sldprt", L"0 KB", L"then", kMissing}};
    EXPECT_EQ(part, client.Rows(kPartList));
    EXPECT_TRUE(client.Rows(kGCodeList).empty());
    EXPECT_TRUE(client.Rows(kSetupList).empty());
    EXPECT_TRUE(client.Rows(kAdditionalList).empty());
}

TEST_F(CatalogueTest, FolderThatDoesNotExistChangesNothing) {
    Load(package.Path());
    const auto before = AllRows();
    EXPECT_EQ(S_OK, Load(package.Path() + L"nowhere\\"));
    EXPECT_EQ(S_OK, Load(L""));
    EXPECT_EQ(before, AllRows());
}

TEST_F(CatalogueTest, InputParameterLoadsAndIsKeptAsItWasSet) {
    EXPECT_EQ(S_OK, client.Put(L"InputParameter", package.Path()));
    EXPECT_EQ(package.Path(), client.Get(L"InputParameter"));
    EXPECT_EQ(PartRows(), client.Rows(kPartList));

    const auto before = AllRows();
    for (const wchar_t* value : {L"", L"Q:\\nowhere\\"}) {
        EXPECT_EQ(S_OK, client.Put(L"InputParameter", value));
        EXPECT_EQ(value, client.Get(L"InputParameter"));
        EXPECT_EQ(before, AllRows());
    }
}

TEST_F(CatalogueTest, AFolderThatDoesNotExistLeavesThePackageFile) {
    client.Call(L"LoadFile", {package.Path(), package.Folder() / L"first.mxov"});
    client.Call(L"LoadFile", {package.Path() + L"nowhere\\", package.Folder() / L"second.mxov"});
    EXPECT_EQ(L"first.mxov", SavedFile());
    client.Call(L"LoadFile", {package.Path(), package.Folder() / L"second.mxov"});
    EXPECT_EQ(L"second.mxov", SavedFile());
}

TEST_F(CatalogueTest, InputParameterLeavesThePackageFile) {
    client.Call(L"LoadFile", {package.Path(), package.Folder() / L"first.mxov"});
    EXPECT_EQ(S_OK, client.Put(L"InputParameter", package.Path()));
    EXPECT_EQ(L"first.mxov", SavedFile());
}

TEST_F(CatalogueTest, InputParameterFindsThePrivateInformationFileAsLoadFileDoes) {
    const auto& folder = package.Folder();
    DeleteFileW((folder / L"pkg\\mxinfo.ini").c_str());
    folder.Write(L"pkg\\Private\\mxinfo.ini", "[FILEINFO]\r\nCADFilePath=Q:\\a\\inside.sldprt\r\n");
    folder.Write(L"pkgPrivate\\mxinfo.ini", "[FILEINFO]\r\nCADFilePath=Q:\\a\\beside.sldprt\r\n");
    client.Put(L"InputParameter", folder / L"pkg\\");
    EXPECT_EQ(L"inside.sldprt", client.Rows(kPartList).at(0).name);
    client.Put(L"InputParameter", folder / L"pkg");
    EXPECT_EQ(L"beside.sldprt", client.Rows(kPartList).at(0).name);
}

TEST_F(CatalogueTest, PrivateFolderHoldsTheInformationFileWhenTheRootDoesNot) {
    const auto& folder = package.Folder();
    folder.Write(L"pkg\\Private\\mxinfo.ini", "[FILEINFO]\r\nCADFilePath=Q:\\a\\private.sldprt\r\n");
    Load(package.Path());
    EXPECT_EQ(L"bracket.sldprt", client.Rows(kPartList).at(0).name);

    DeleteFileW((folder / L"pkg\\mxinfo.ini").c_str());
    Load(package.Path());
    EXPECT_EQ(L"private.sldprt", client.Rows(kPartList).at(0).name);
}

TEST_F(CatalogueTest, FolderWithoutSeparatorRunsTogetherWithThePrivateFolder) {
    const auto& folder = package.Folder();
    DeleteFileW((folder / L"pkg\\mxinfo.ini").c_str());
    folder.Write(L"pkg\\Private\\mxinfo.ini", "[FILEINFO]\r\nCADFilePath=Q:\\a\\inside.sldprt\r\n");
    folder.Write(L"pkgPrivate\\mxinfo.ini", "[FILEINFO]\r\nCADFilePath=Q:\\a\\beside.sldprt\r\n");
    client.Call(L"LoadFile", {folder / L"pkg", L""});
    EXPECT_EQ(L"beside.sldprt", client.Rows(kPartList).at(0).name);
}

TEST_F(CatalogueTest, FilePathWithoutBackslashLosesItsLastCharacterInTheName) {
    package.WriteInformation("[REFERANCE_FILE_1]\nIsReferencedFile=YES\nFilePath=plan.txt\n");
    Load(package.Path());
    EXPECT_EQ(L"plan.tx", client.Rows(kAdditionalList).at(0).name);
}

TEST_F(CatalogueTest, ClearAllDataEmptiesEveryList) {
    Load(package.Path());
    EXPECT_EQ(S_OK, client.Call(L"ClearAllData"));
    EXPECT_EQ(kNothing, AllRows());
}

TEST_F(CatalogueTest, OnlyARecentPackageShowsTheAdditionalSection) {
    const std::map<std::string, bool> shownFor = {{"2020", false},    {"2021", true},  {"2021.5", true},
                                                  {"2020.99", false}, {"2024x", true}, {"x2024", false}};
    for (const auto& [version, shown] : shownFor) {
        package.WriteInformation(package.Information(version));
        Load(package.Path());
        for (const int id : {kAdditionalBox, kAdditionalList, kAddButton, kDeleteButton}) {
            EXPECT_EQ(shown, IsWindowVisible(client.Item(id)) != FALSE) << version << ": " << id;
        }
        EXPECT_EQ(AdditionalRows(), client.Rows(kAdditionalList)) << "loaded whatever the version";
    }
    package.WriteInformation("[FILEINFO]\nMaxtlreVersion=2024\n");
    Load(package.Path());
    EXPECT_FALSE(IsWindowVisible(client.Item(kAdditionalBox))) << "one word names no release";
}

TEST_F(CatalogueTest, DamagedInformationFilesAreReadAsFarAsTheyGoAndNeverWritten) {
    const std::string utf16 = [] {
        std::string bytes = "\xff\xfe";
        for (const char c : std::string("[FILEINFO]\r\nCADFilePath=Q:\\a\\wide.sldprt\r\n")) {
            bytes += std::string{c, '\0'};
        }
        return bytes;
    }();
    std::string huge = "[FILEINFO]\r\nCADFilePath=Q:\\a\\huge.sldprt\r\n";
    while (huge.size() < 8'000'000) {
        huge += "Filler" + std::to_string(huge.size()) + "=some value that nobody reads\r\n";
    }
    std::string binary;
    for (int i = 0; i < 100'000; ++i) {
        binary += static_cast<char>(i * 7919 >> 3);
    }

    const struct {
        const char* what;
        std::string bytes;
        std::wstring part;
    } cases[] = {
        {"empty", "", L""},
        {"binary", binary, L""},
        {"zeros", std::string(4096, '\0'), L""},
        {"UTF-16", utf16, L"wide.sldprt"},
        {"half a UTF-16 character", utf16 + "\x41", L"wide.sldprt"},
        {"huge", huge, L"huge.sldprt"},
        {"no last line end", "[FILEINFO]\r\nCADFilePath=Q:\\a\\open.sldprt", L"open.sldprt"},
        {"no closing bracket", "[FILEINFO\r\nCADFilePath=Q:\\a\\x.sldprt\r\n", {}},
        {"a section twice",
         "[FILEINFO]\r\nCADFilePath=Q:\\a\\one.sldprt\r\n[FILEINFO]\r\nCADFilePath=Q:\\a\\two.sldprt\r\n",
         L"one.sldprt"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        package.Folder().Write(L"pkg\\mxinfo.ini", test.bytes);
        EXPECT_EQ(S_OK, Load(package.Path()));
        if (std::string(test.what) != "no closing bracket") {
            const auto rows = client.Rows(kPartList);
            EXPECT_EQ(test.part, rows.empty() ? L"" : rows[0].name);
        }
        EXPECT_EQ(test.bytes, package.Folder().Read(L"pkg\\mxinfo.ini"));
    }
    DeleteFileW((package.Folder() / L"pkg\\mxinfo.ini").c_str());
    EXPECT_EQ(S_OK, Load(package.Path()));
    EXPECT_EQ(kNothing, AllRows());
    EXPECT_FALSE(std::filesystem::exists(package.Folder() / L"pkg\\mxinfo.ini"));
    EXPECT_FALSE(std::filesystem::exists(package.Folder() / L"pkg\\Private"));
}

TEST_F(CatalogueTest, MembersThatOnlyAnswerDoNothingElse) {
    Load(package.Path());
    const auto before = AllRows();
    EXPECT_EQ(S_OK, client.Call(L"AboutBox"));
    EXPECT_EQ(S_OK, client.Call(L"Close")) << "nothing was changed, so nothing is asked";
    EXPECT_EQ(S_OK, client.Call(L"Close"));
    EXPECT_EQ(before, AllRows());
}
