#include "package/NewInformation.h"

#include "common/Handles.h"
#include "common/Utf8.h"
#include "files/FileFailure.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

TEST(NewInformation, NamesAFileThatIsKnownAndCannotBeRead) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"mxinfo.ini", "[s]\nk=v\n");
    Sleep(2200); // from then on its time proves that what was read is current
    ASSERT_EQ(IniStore::Instance().Value(L"s", L"k", path), L"v");
    const common::UniqueHandle lock =
        common::OwnFile(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(lock);
    try {
        const NewInformation information(folder.Path(), L"Edited", L"");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const FileFailure& failure) {
        EXPECT_TRUE(common::FromUtf8(failure.what()).starts_with(L"cannot read \"" + path + L"\": "))
            << failure.what();
    }
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(NewInformation, AnEntryThatIsWrittenLaterReplacesNoOtherOfItsNumber) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"mxinfo.ini", "[FILEINFO]\nk=v\n");
    NewInformation information(folder.Path(), L"Edited", L"mine");
    {
        const common::UniqueHandle lock = common::OwnFile(CreateFileW(
            path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(lock);
        const std::string bytes = "[FILEINFO]\nk=v\n[FILE_HISTORY_1]\nRemarks=theirs\n";
        DWORD written = 0;
        ASSERT_TRUE(WriteFile(lock.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
        information.Commit(); // cannot replace the file yet
    }
    IniStore& store = IniStore::Instance();
    EXPECT_TRUE(store.SaveKept());
    EXPECT_EQ(store.Value(L"FILE_HISTORY_1", L"Remarks", path), L"theirs");
    EXPECT_EQ(store.Value(L"FILE_HISTORY_2", L"Remarks", path), L"mine");
    EXPECT_EQ(store.Value(L"FILE_HISTORY_2", L"Operation", path), L"Edited");
}

} // namespace
