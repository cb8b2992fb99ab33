#include "package/AddedDocument.h"

#include "package/CopyName.h"
#include "package/Paths.h"
#include "TempFolder.h"

#include <mxovshare.h>

#include <gtest/gtest.h>

using namespace viewer;

namespace {

using State = AddedDocument::State;

constexpr wchar_t kAdded[] = L"REFERANCE_FILE_5";
constexpr SYSTEMTIME kAddedTime = {2024, 5, 3, 15, 6, 30, 8, 0};

// An unpacked package with one copied document, to which the control adds another.
class AddedDocumentTest : public testing::Test {
protected:
    AddedDocumentTest() {
        m_folder.Write(L"package\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\n"
                                               "[REFERANCE_FILE_4]\r\nIsReferencedFile=NO\r\n"
                                               "Timestamp=2024-01-01 00:00:00\r\n"
                                               "FilePath=ReferanceFiles\\plan.pdf\r\n");
        m_folder.Write(L"package\\ReferanceFiles\\plan.pdf", "first");
    }

    // What the control's button does with a file of this name.
    void Add(const std::string& name, const std::string& content, bool copied = true) const {
        const std::wstring path = L"ReferanceFiles\\" + std::wstring(name.begin(), name.end());
        if (copied) {
            m_folder.Write(L"package\\" + path, content);
            m_folder.SetTime(L"package\\" + path, kAddedTime);
        }
        Set(L"IsReferencedFile", L"NO");
        Set(L"Timestamp", L"2024-05-15 06:30:08");
        Set(L"FilePath", path);
    }
    void Set(const wchar_t* key, const std::wstring& value) const {
        mxovshare::INIFile::AddRecordToINI(kAdded, key, value, Package() + L"mxinfo.ini");
    }
    [[nodiscard]] std::wstring Package() const { return m_folder / L"package\\"; }
    [[nodiscard]] std::wstring Value(const wchar_t* section, const wchar_t* key) const {
        return mxovshare::INIFile::GetKeyValueFromINI(section, key, Package() + L"mxinfo.ini");
    }
    [[nodiscard]] std::string Copy(const std::wstring& name) const {
        return m_folder.Read(L"package\\ReferanceFiles\\" + name);
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(AddedDocumentTest, NothingIsAddedWhenTheUserCancels) {
    EXPECT_FALSE(AddedDocumentRepair(Package()).Find());
}

TEST_F(AddedDocumentTest, ALinkAndACopyOfItsOwnNameAreSound) {
    const AddedDocumentRepair repair(Package());
    Add("tools.txt", "tools");
    const auto copy = repair.Find();
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->section, kAdded);
    EXPECT_EQ(copy->name, L"tools.txt");
    EXPECT_EQ(copy->state, State::Sound);
    Set(L"IsReferencedFile", L"YES");
    Set(L"FilePath", L"C:\\gone\\plan.pdf");
    EXPECT_EQ(repair.Find()->state, State::Sound);
}

TEST_F(AddedDocumentTest, BothAreKept) {
    const AddedDocumentRepair repair(Package());
    Add("PLAN.pdf", "second");
    const auto document = repair.Find();
    ASSERT_TRUE(document);
    ASSERT_EQ(document->state, State::Shared);
    EXPECT_EQ(repair.KeepBoth(*document), L"");
    EXPECT_EQ(Copy(L"plan.pdf"), "first");
    EXPECT_EQ(Copy(L"PLAN (2).pdf"), "second");
    EXPECT_EQ(Value(kAdded, L"FilePath"), L"ReferanceFiles\\PLAN (2).pdf");
    EXPECT_EQ(Value(L"REFERANCE_FILE_4", L"FilePath"), L"ReferanceFiles\\plan.pdf");
}

TEST_F(AddedDocumentTest, TheNewOneReplacesTheOther) {
    const AddedDocumentRepair repair(Package());
    Add("plan.pdf", "second");
    repair.Replace(*repair.Find());
    EXPECT_EQ(Copy(L"plan.pdf"), "second");
    EXPECT_EQ(Value(L"REFERANCE_FILE_4", L"Timestamp"), L"2024-05-15 06:30:08");
    EXPECT_FALSE(repair.Find());
}

TEST_F(AddedDocumentTest, AnUndoneAdditionLeavesThePackageAsItWas) {
    const AddedDocumentRepair repair(Package());
    Add("plan.pdf", "second");
    EXPECT_EQ(repair.Undo(*repair.Find()), L"");
    EXPECT_EQ(Copy(L"plan.pdf"), "first");
    EXPECT_EQ(Value(L"REFERANCE_FILE_4", L"Timestamp"), L"2024-01-01 00:00:00");
    EXPECT_FALSE(repair.Find());
}

TEST_F(AddedDocumentTest, WhatCouldNotBeCopiedIsReported) {
    const AddedDocumentRepair repair(Package());
    Add("gone.pdf", "", false);
    EXPECT_EQ(repair.Find()->state, State::NotCopied);
    Add("plan.pdf", "", false); // the copy of the other document was locked
    EXPECT_EQ(repair.Find()->state, State::NotCopied);
    EXPECT_EQ(repair.Undo(*repair.Find()), L"");
    EXPECT_EQ(Copy(L"plan.pdf"), "first");
}

TEST_F(AddedDocumentTest, TheFolderOfCopiesIsThereWhileADocumentIsAdded) {
    RemoveFolder(Package() + L"ReferanceFiles");
    {
        const AddedDocumentRepair repair(Package());
        EXPECT_TRUE(FolderExists(Package() + L"ReferanceFiles"));
    }
    EXPECT_FALSE(FolderExists(Package() + L"ReferanceFiles"));
}

TEST_F(AddedDocumentTest, AFreeNameIsFound) {
    const std::wstring copies = Package() + L"ReferanceFiles\\";
    EXPECT_EQ(FreeCopyName(copies, L"plan.pdf"), L"plan (2).pdf");
    m_folder.Write(L"package\\ReferanceFiles\\plan (2).pdf", "");
    EXPECT_EQ(FreeCopyName(copies, L"plan.pdf"), L"plan (3).pdf");
    EXPECT_EQ(FreeCopyName(copies, L"README"), L"README (2)");
}
