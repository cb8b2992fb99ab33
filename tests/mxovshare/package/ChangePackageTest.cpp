#include "mxovchange.h"

#include "files/DiskFile.h"
#include "Listeners.h"
#include "SectionList.h"
#include "TempFolder.h"
#include "zip/ZipDirectory.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

class ChangePackageTest : public testing::Test {
protected:
    void SetUp() override {
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\nGCode=NC\\1.nc\r\n");
        m_folder.Write(L"NC\\1.nc", std::string(300'000, 'g'));
        m_folder.Write(L"doc.txt", "a document");
        CreateDirectoryW((m_folder / L"ReferanceFiles").c_str(), nullptr);
        ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    }

    std::wstring Package() const { return m_work / L"p.mxov"; }

    PackageResult TryRead(const std::wstring& name, std::uint64_t limit, std::string& bytes) const {
        return ReadContentFiles(Package(), {name}, limit,
                                [&bytes](const std::wstring&, std::string content) { bytes = content; });
    }

    std::string Read(const std::wstring& name) const {
        std::string bytes;
        EXPECT_TRUE(TryRead(name, 1 << 20, bytes).ok);
        return bytes;
    }

    std::vector<std::wstring> Names() const {
        std::vector<PackageEntry> entries;
        EXPECT_TRUE(ListPackage(Package(), entries).ok);
        std::vector<std::wstring> names;
        names.reserve(entries.size());
        for (const PackageEntry& entry : entries) {
            names.push_back(entry.isFolder ? entry.name + L"\\" : entry.name);
        }
        return names;
    }

    // Expects a change to fail for a reason and to leave the package and nothing else.
    void ExpectRefused(const PackageChanges& changes, const std::wstring& reason) {
        const std::string before = m_work.Read(L"p.mxov");
        const PackageResult result = ChangePackage(Package(), Package(), changes);
        EXPECT_FALSE(result.ok);
        EXPECT_NE(result.message.find(reason), std::wstring::npos) << result.message;
        EXPECT_TRUE(m_work.Read(L"p.mxov") == before);
        EXPECT_EQ(m_work.EntryCount(), 1);
    }

    TempFolder m_folder;
    TempFolder m_work;
};

TEST_F(ChangePackageTest, AddsReplacesAndRemovesFiles) {
    const std::wstring source = m_folder.Write(L"new.txt", "new");
    constexpr SYSTEMTIME kTime = {2020, 1, 0, 2, 3, 4, 6, 0};
    m_folder.SetTime(L"new.txt", kTime);
    PackageChanges changes;
    changes.added = {{L"ReferanceFiles\\new.txt", source}, {L"DOC.txt", source}};
    changes.removed = {L"nc\\1.NC"};
    RecordingProgress progress;
    ASSERT_TRUE(ChangePackage(Package(), Package(), changes, &progress).ok);
    progress.ExpectToTheEnd();
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"mxinfo.ini", L"DOC.txt", L"ReferanceFiles\\new.txt"}));
    EXPECT_EQ(Read(L"doc.TXT"), "new");
    EXPECT_EQ(m_work.EntryCount(), 1);
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(Package(), entries).ok);
    FILETIME time = {};
    ASSERT_TRUE(SystemTimeToFileTime(&kTime, &time));
    EXPECT_EQ(CompareFileTime(&entries.back().modified, &time), 0);
}

TEST_F(ChangePackageTest, MakesTheInformationWhereThereIsNone) {
    PackageChanges removal;
    removal.removed = {L"mxinfo.ini"};
    ASSERT_TRUE(ChangePackage(Package(), Package(), removal).ok);
    PackageChanges changes;
    changes.information = {{L"FILEINFO", L"GCode", L"NC\\1.nc"}};
    ASSERT_TRUE(ChangePackage(Package(), Package(), changes).ok);
    const std::u16string text = u"\xFEFF[FILEINFO]\r\nGCode=NC\\1.nc\r\n";
    EXPECT_EQ(Read(L"mxinfo.ini"), std::string(reinterpret_cast<const char*>(text.data()), 2 * text.size()));
}

TEST_F(ChangePackageTest, TheInformationKeepsItsAttributes) {
    ASSERT_TRUE(SetFileAttributesW((m_folder / L"mxinfo.ini").c_str(), FILE_ATTRIBUTE_READONLY));
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    PackageChanges changes;
    changes.information = {{L"NEW", L"Key", L"value"}};
    ASSERT_TRUE(ChangePackage(Package(), Package(), changes).ok);
    const std::vector<ZipEntry> entries = ReadZipDirectory(DiskSource(Package()));
    EXPECT_EQ(entries.at(0).name, "mxinfo.ini");
    EXPECT_NE(entries.at(0).attributes & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST_F(ChangePackageTest, ChangesTheInformationAndKeepsTheRest) {
    PackageChanges changes;
    changes.information = {{L"FILEINFO", L"CADFileDescription", L"\u56F3"}, {L"NEW", L"Key", L"value"}};
    changes.operation = L"Changed";
    changes.remarks = L"a remark";
    ASSERT_TRUE(ChangePackage(Package(), m_work / L"q.mxov", changes).ok);
    Information information;
    ASSERT_TRUE(ReadInformation(m_work / L"q.mxov", information).ok);
    const SectionList sections = ListOf(information);
    ASSERT_EQ(sections.size(), 3u);
    EXPECT_EQ(sections[0].values, (std::vector<std::pair<std::wstring, std::wstring>>{
                                      {L"GCode", L"NC\\1.nc"}, {L"CADFileDescription", L"\u56F3"}}));
    EXPECT_EQ(sections[2].name, L"FILE_HISTORY_1");
    EXPECT_EQ(sections[2].values[0].second, L"Changed");
    EXPECT_EQ(sections[2].values[3].second, L"a remark");
    ASSERT_TRUE(UnpackPackage(m_work / L"q.mxov", m_work / L"out").ok);
    EXPECT_EQ(m_work.Read(L"out\\NC\\1.nc"), std::string(300'000, 'g'));
}

TEST_F(ChangePackageTest, RefusesWhatCannotBe) {
    const std::wstring source = m_folder.Write(L"new.txt", "new");
    const auto adding = [](const wchar_t* name, const std::wstring& path) {
        PackageChanges changes;
        changes.added = {{name, path}};
        return changes;
    };
    ExpectRefused(adding(L"..\\new.txt", source), L"\"../new.txt\"");
    ExpectRefused(adding(L"NUL", source), L"device");
    ExpectRefused(adding(L"doc.txt\\new.txt", source), L"doc.txt");
    ExpectRefused(adding(L"new.txt", m_folder / L"gone.txt"), L"gone.txt");
    ExpectRefused(adding(L"new.txt", m_folder.Path()), L"it is a folder");
    PackageChanges removing;
    removing.removed = {L"gone.txt"};
    ExpectRefused(removing, L"does not contain it");
    PackageChanges setting;
    setting.information = {{L"FILEINFO", L"a=b", L"c"}};
    ExpectRefused(setting, L": the information file cannot hold the value of \"");
}

TEST_F(ChangePackageTest, IsCancelledWithoutATrace) {
    class Canceller : public PackageProgress {
    public:
        bool OnProgress(const std::wstring&, std::uint64_t, std::uint64_t) override { return false; }
    } canceller;
    const std::string before = m_work.Read(L"p.mxov");
    PackageChanges changes;
    changes.operation = L"Changed";
    EXPECT_TRUE(ChangePackage(Package(), Package(), changes, &canceller).cancelled);
    EXPECT_TRUE(m_work.Read(L"p.mxov") == before);
    EXPECT_EQ(m_work.EntryCount(), 1);
}

TEST_F(ChangePackageTest, RefusesToOverwriteAChangeOfAnotherProgram) {
    // Writes to the package while it is being read.
    class Writer : public PackageProgress {
    public:
        explicit Writer(const TempFolder& folder) : m_folder(folder) {}
        bool OnProgress(const std::wstring&, std::uint64_t, std::uint64_t) override {
            m_folder.SetTime(L"p.mxov", {2001, 2, 0, 3, 4, 5, 6, 0});
            return true;
        }

    private:
        const TempFolder& m_folder;
    } writer(m_work);
    const std::string before = m_work.Read(L"p.mxov");
    PackageChanges changes;
    changes.operation = L"mine";
    const PackageResult result = ChangePackage(Package(), Package(), changes, &writer);
    EXPECT_FALSE(result.ok);
    EXPECT_NE(result.message.find(L"another program changed it"), std::wstring::npos) << result.message;
    EXPECT_TRUE(m_work.Read(L"p.mxov") == before);
    EXPECT_EQ(m_work.EntryCount(), 1);
    EXPECT_TRUE(ChangePackage(Package(), m_work / L"q.mxov", changes, &writer).ok);
}

TEST_F(ChangePackageTest, ReadsNoFileBeyondTheLimit) {
    std::string bytes;
    EXPECT_TRUE(TryRead(L"doc.txt", 10, bytes).ok);
    EXPECT_EQ(bytes, "a document");
    EXPECT_FALSE(TryRead(L"doc.txt", 9, bytes).ok);
    EXPECT_FALSE(TryRead(L"gone.txt", 9, bytes).ok);
}

} // namespace
